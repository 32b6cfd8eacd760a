// The way of settings from a player into a dialog and back, without the dialog.
#pragma once

#include <filesystem>

#include "base/prompts.h"
#include "exchange/player_requests.h"
#include "settings/held_document.h"
#include "settings/sent_settings.h"
#include "settings/settings_steps.h"
#include "settings/settings_view.h"

namespace sontaro {

/// Reads the settings of one block from a player, takes edits and files, and sends the whole
/// document back. What the user has changed is done again to whatever the player sends later, until
/// it has confirmed it. Settings that are not the player's go out only when the user insists.
/// User-interface thread.
class SettingsRun {
   public:
    /// `document`, `view` and `prompts` outlive the run.
    SettingsRun(SettingsBlock block, SettingsDocument& document, SettingsView& view,
                Prompts& prompts, const ExchangeServices& exchange, Target player,
                SettingsSteps steps = {});

    /// Has `keep` called with what the player holds when that is about to be written over.
    void KeepBy(HeldDocument::Keep keep) { held_.KeepBy(std::move(keep)); }

    /// Asks the player for its settings; again, when they have been asked for before: what has not
    /// been sent is lost then, unless the user thinks better of it.
    void Read();
    /// Takes a message that the main window forwards.
    void Handle(WindowMessage& message) { talk_.Take(message); }

    /// The user has edited a row.
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit);
    /// The user undoes the latest edit or opened file that has not been undone, or does it again.
    void Undo();
    void Redo();
    [[nodiscard]] bool MayUndo() const { return !locked_ && history_.CanUndo(); }
    [[nodiscard]] bool MayRedo() const { return !locked_ && history_.CanRedo(); }
    /// The user has pressed OK; does nothing unless `MaySend`.
    void Save();
    /// Takes the settings of a file, to be sent later, or says why not and changes nothing.
    void OpenFile(const std::filesystem::path& path);
    /// The same for a document that the player held earlier.
    void OpenEarlier(const std::string& text);
    /// Writes the settings to a file and says whether that worked.
    void SaveFile(const std::filesystem::path& path);

    [[nodiscard]] SettingsBlock Block() const { return facts_.block; }
    /// What the player holds; none while that is not known.
    [[nodiscard]] const std::optional<std::string>& Held() const { return held_.Text(); }
    [[nodiscard]] SettingsState State() const { return state_; }
    [[nodiscard]] NotSent LastReason() const { return reason_; }
    [[nodiscard]] std::uint16_t LastCode() const { return code_; }
    /// Seconds that an answer is overdue, counted from the question; 0 while there is time.
    [[nodiscard]] int SecondsWithoutAnswer() const;
    [[nodiscard]] bool IsConnected() const { return talk_.Connection() != 0; }
    /// Whether the player has answered, whatever it was, and does not restart.
    [[nodiscard]] bool IsAnswered() const { return answered_ && !locked_; }
    /// Whether the player restarts: nothing can be done any more.
    [[nodiscard]] bool IsLocked() const { return locked_; }
    /// What the row with this key shows; empty without one.
    [[nodiscard]] std::string ValueOf(const std::string& key) const;
    /// Whether there is something that may be sent: the player has answered, or a file was opened.
    [[nodiscard]] bool MaySend() const;
    /// Whether a file may be opened; if the player's own settings come later, it is opened again.
    [[nodiscard]] bool MayOpen() const { return !locked_; }
    /// Whether there is something to keep in a file.
    [[nodiscard]] bool MayKeep() const { return !locked_ && document_.HasSettings(); }
    /// Whether the user has changed something that the player has not confirmed.
    [[nodiscard]] bool HasUnsentChanges() const { return !history_.IsConfirmed() && !locked_; }
    /// What the player has confirmed last, or sent.
    [[nodiscard]] const RowValues& Confirmed() const { return confirmed_; }
    /// The conversation, for what a procedure of one's own has to say.
    [[nodiscard]] Conversation& Talk() { return talk_; }

   private:
    [[nodiscard]] Request WaitOn(Request request);
    void ReadEnded(const Ended& ended);
    void TakeDocument(std::string_view text);
    void TakeUnasked(WindowMessage& message);
    [[nodiscard]] bool TakeFile(std::string_view text);
    void FileTaken();
    void TellOtherKeys();
    [[nodiscard]] bool Agrees();
    [[nodiscard]] bool IsPlayersOwn() const;
    void Send(SentSettings sent);
    void SendEnded(const SentSettings& sent, const Ended& ended);
    void Confirm(const SentSettings& sent, std::string_view answer);
    void ShowWalked(const std::string& row);
    [[nodiscard]] SettingsState AfterChange() const;
    [[nodiscard]] SettingsState Untouched() const;
    void Enter(SettingsState state);

    const SettingsBlockFacts& facts_;
    SettingsDocument& document_;
    SettingsView& view_;
    Prompts& prompts_;
    SettingsSteps steps_;
    Conversation talk_;
    SettingsState state_ = SettingsState::kWaiting;
    NotSent reason_{};
    std::uint16_t code_ = 0;
    std::chrono::milliseconds waited_{0};
    bool reading_ = false;
    bool answered_ = false;  // whatever it was
    bool opened_ = false;    // a file
    bool locked_ = false;    // the player restarts
    int awaited_ = 0;        // answers to what was sent
    HeldDocument held_;
    SettingsHistory history_;
    SettingsState untouched_{};  // what is to be told of the player's settings without changes
    SettingsHistory::Mark discarded_ = 0;  // what is older goes when the player's settings come
    std::optional<std::vector<std::string>> playersKeys_;  // none: its settings are not known
    RowValues confirmed_;
};

}  // namespace sontaro
