// The way of the control protocol from a player into a dialog and back, without the dialog.
#pragma once

#include <filesystem>
#include <string>
#include <variant>
#include <vector>

#include "base/prompts.h"
#include "controlprotocol/control_protocol_view.h"
#include "link/window_message.h"

namespace sontaro {

/// Who opens the editor decides how it asks for the names that a player has.
enum class ProtocolVariant : std::uint16_t { kCurrent = 0, kOlder = 1 };

/// Asks a player for its data, its names and its control protocol, takes edits and commands from
/// its serial line, and uploads the document. What the user has edited or opened before the
/// player's own document arrives is done to that one again. User-interface thread.
class ControlProtocolRun {
   public:
    /// From `kRefused` on the player's answer has come; only then there is an upload.
    enum class State {
        kAskingData,
        kAskingSecondPart,
        kAskingNames,
        kAskingProtocol,
        kUnreachable,  ///< the player could not be asked
        kRefused,      ///< the player has answered that something is wrong: `LastResult`
        kUnreadable,   ///< the player's document is none
        kRead,         ///< as the player has sent it
        kChanged,      ///< something has not been sent yet
        kNotSent,      ///< the player could not be reached when it was to be sent
        kSent,         ///< all of it, but the player has not answered yet
        kUnconfirmed,  ///< all of it, but the link has ended without an answer
        kSaved,        ///< the player has answered
        kRestarting,   ///< the player has answered and starts again with what was sent
    };

    /// Listens to the player at `playerIp` alone; serial bytes do not say whose they are.
    /// `workingCopy` is the file that is uploaded; `view` and `prompts` outlive the run.
    ControlProtocolRun(ControlProtocolView& view, Prompts& prompts, std::string playerIp,
                       std::filesystem::path workingCopy,
                       ProtocolVariant variant = ProtocolVariant::kCurrent)
        : view_(view),
          prompts_(prompts),
          playerIp_(std::move(playerIp)),
          workingCopy_(std::move(workingCopy)),
          variant_(variant) {}

    /// The window has opened: begins to ask.
    void Opened();
    /// The window is about to close.
    void Closing() { view_.KeepAliveEvery2Seconds(false); }
    /// Takes what the main window forwards.
    void Handle(const WindowMessage& message);
    /// Two seconds have passed.
    void KeepAlive();

    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit);
    /// The user has pressed OK: writes the working copy, asks whether to restart, and uploads it.
    void Upload();
    /// Takes the document of a file, to be sent later, or says why not and changes nothing.
    void OpenFile(const std::filesystem::path& path);
    void SaveFile(const std::filesystem::path& path);

    [[nodiscard]] ControlProtocolGrids Rows() { return ControlProtocolRows(model_); }
    [[nodiscard]] State CurrentState() const { return state_; }
    [[nodiscard]] const SerialLineState& SerialLine() const { return serialLine_; }
    [[nodiscard]] bool MayUpload() const { return answered_ && !restartWanted_; }
    /// The player's last answer; 1: all is well.
    [[nodiscard]] std::uint16_t LastResult() const { return result_; }
    /// Whether files may be opened and saved.
    [[nodiscard]] bool MayUseFiles() const { return !restartWanted_; }
    /// The names that the player has sent; kept for later use, as are its two blocks of data.
    [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }
    [[nodiscard]] const std::array<Bytes, 2>& PlayerData() const { return playerData_; }

   private:
    /// An edit, or the text of a file that was opened.
    using Change = std::variant<SettingsEdit, std::string>;

    void Ask(std::uint32_t command, std::uint32_t selector, State next);
    void TakePart(std::uint16_t part, const ReplyRecord& reply);
    void TakeNames(std::string_view text);
    void TakeProtocol(std::uint16_t argument, const ReplyRecord& reply);
    void TakeDocument(std::string_view text);
    void Repeat(const Change& change);
    void TakeAcknowledgement();
    void Listen();
    void EnterChanged();
    void TakeSerialBytes(const SerialData& serial);
    void LinkEnded();
    [[nodiscard]] Result<std::string> WriteWorkingCopy() const;
    [[nodiscard]] bool AskToRestart();
    void SendDocument(std::string_view text, bool restart);
    void Enter(State state);
    void Tell(SerialLineState line);

    ControlProtocolView& view_;
    Prompts& prompts_;
    const std::string playerIp_;
    const std::filesystem::path workingCopy_;
    const ProtocolVariant variant_;
    ControlProtocolModel model_;
    State state_ = State::kAskingData;
    SerialLineState serialLine_;
    std::uint16_t result_ = 1;
    bool answered_ = false;        // the player, with its protocol or an acknowledgement
    bool asksToRestart_ = false;   // a question is open: what is sent has been written already
    bool restartWanted_ = false;   // once it is, nothing more is sent
    bool awaitsAnswer_ = false;    // to an upload
    std::vector<Change> changes_;  // since the last upload
    std::array<Bytes, 2> playerData_;
    std::vector<std::string> names_;
};

}  // namespace sontaro
