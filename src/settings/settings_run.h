// The way of settings from a player into a dialog and back, without the dialog.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/prompts.h"
#include "link/packet.h"
#include "link/window_message.h"
#include "settings/settings_document.h"

namespace sontaro {

/// How the settings of one block travel.
struct SettingsExchange {
    SettingsBlock block{};
    MessageId reply{};               ///< the message that brings the block's replies
    std::uint16_t saveArgument = 0;  ///< of the packet that saves
    /// Whether a reply's `wParam` tells a document (0) from the notice that a save is done (1),
    /// which is then announced. Otherwise every reply with a payload is a document; one that
    /// cannot be used, or that is empty, changes no row.
    bool announcesSaves = false;
};

/// What the procedure asks of its window.
class SettingsView {
   public:
    virtual ~SettingsView() = default;
    /// Hands a packet to the player's link; false when there is none.
    [[nodiscard]] virtual bool Send(const DevicePacket& packet) = 0;
    /// The document's rows have changed: shows them anew.
    virtual void ShowRows() = 0;
    /// The player holds what the rows show.
    virtual void MarkSaved() = 0;
    /// `SettingsRun::CurrentState` has changed.
    virtual void StateChanged() = 0;
};

/// Reads the settings from a player, takes edits, and sends the whole document back. Nothing is
/// sent before the player's own settings have been seen. User-interface thread.
class SettingsRun {
   public:
    /// From `kRead` on there are settings of the player's.
    enum class State {
        kWaiting,      ///< for the player's settings
        kUnreachable,  ///< the player could not be asked
        kUnreadable,   ///< the player's settings cannot be used
        kRead,         ///< as the player has sent them
        kChanged,      ///< something has not been sent yet
        kNotSent,      ///< the player could not be reached when it was to be sent
        kSent,         ///< all of it, but the player has not answered yet
        kSaved,        ///< the player has answered
    };

    /// Listens to the player at `playerIp` alone: a link to another one may still be open.
    /// `document`, `view` and `prompts` outlive the run.
    SettingsRun(const SettingsExchange& exchange, SettingsDocument& document, SettingsView& view,
                Prompts& prompts, std::string playerIp)
        : exchange_(exchange),
          document_(document),
          view_(view),
          prompts_(prompts),
          playerIp_(std::move(playerIp)) {}

    /// The window has opened: asks the player for its settings.
    void Opened();
    /// Takes a reply that the main window forwards.
    void Handle(const WindowMessage& message);
    /// The user has edited a row.
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit);
    /// The user has pressed OK; does nothing unless `IsUsable`.
    void Save();

    /// Takes the settings of a file, to be sent later, or says why not and changes nothing.
    void OpenFile(const std::filesystem::path& path);
    /// Writes the settings to a file and says whether that worked.
    void SaveFile(const std::filesystem::path& path);

    [[nodiscard]] State CurrentState() const { return state_; }
    /// Whether there are settings of the player's to edit, save and send.
    [[nodiscard]] bool IsUsable() const { return state_ >= State::kRead; }

   private:
    void TakeDocument(std::string_view text);
    void TakeAnswer(std::string_view text);
    void Confirm();
    void Enter(State state);

    const SettingsExchange exchange_;
    SettingsDocument& document_;
    SettingsView& view_;
    Prompts& prompts_;
    const std::string playerIp_;
    State state_ = State::kWaiting;
    bool awaitsAnswer_ = false;        // to a save
    std::vector<SettingsEdit> newer_;  // edits since the last save
};

}  // namespace sontaro
