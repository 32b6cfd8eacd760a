// What the user has done to settings.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "base/undo_history.h"
#include "settings/settings_document.h"

namespace sontaro {

/// Edits and opened files, each of them one step that can be undone; a text that is refused is
/// none. What the player has confirmed can be undone, too: that is a change which it has not
/// confirmed. When it sends other settings than are shown, the steps that led to those are
/// forgotten, but what it has not confirmed is done again to what came, and can be undone there.
/// User-interface thread.
class SettingsHistory {
   public:
    /// A moment between two changes.
    using Mark = std::uint64_t;

    /// `document` outlives the history. The user changes it through here alone.
    explicit SettingsHistory(SettingsDocument& document);

    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit);
    [[nodiscard]] Status TakeFile(std::string text);
    /// The document has taken what the player has sent: does every change again that is not
    /// confirmed. An edit whose row is no longer there is passed over.
    void Repeat();

    [[nodiscard]] bool CanUndo() const { return steps_.CanUndo(); }
    [[nodiscard]] bool CanRedo() const { return steps_.CanRedo(); }
    /// Undoes a step; returns the key of the row where it is seen, empty when no row is left.
    std::string Undo() { return Walk(true); }
    std::string Redo() { return Walk(false); }

    // What the player has not confirmed.

    [[nodiscard]] bool IsConfirmed() const { return log_.empty(); }
    /// Whether an opened file is among it.
    [[nodiscard]] bool HasFile() const;
    /// This moment: every change so far is before it, and stays there. What is undone of them
    /// later is one more change.
    [[nodiscard]] Mark Seal() { return sealed_ = Now(); }
    [[nodiscard]] bool HasSince(Mark mark) const { return Now() > mark; }
    /// The player holds what was changed before `mark`.
    void ConfirmBefore(Mark mark);

   private:
    using Kept = std::shared_ptr<const SettingsDocument>;
    using Change = std::variant<std::vector<SettingsEdit>, std::string>;  // or the text of a file
    using StepNumber = std::uint64_t;

    struct Step {
        StepNumber number = 0;
        Change change;
        Kept before, after;
        std::size_t textBytes = 0;

        [[nodiscard]] std::size_t Bytes() const { return textBytes; }
        [[nodiscard]] static bool Absorb(const Step&) { return false; }
    };
    struct Entry {
        StepNumber step = 0;  // 0: none
        bool isUndone = false;
        Change change;
    };

    [[nodiscard]] Mark Now() const { return confirmed_ + log_.size(); }
    void Add(Change change);
    [[nodiscard]] Step StepTo(Kept after, Change change);
    [[nodiscard]] bool Do(const Change& change);
    [[nodiscard]] bool ShowsTheSame(const SettingsDocument& other) const;
    std::string Walk(bool back);
    void Log(const Step& step, bool back);
    [[nodiscard]] static Change Reversal(const Step& step);

    static constexpr std::size_t kMostTextBytes = std::size_t{32} << 20;

    SettingsDocument& document_;
    Kept now_;  // what the document holds
    UndoHistory<Step> steps_{kMostTextBytes};
    std::size_t textBytes_ = 0;  // of about every step
    StepNumber lastStep_ = 0;
    std::deque<Entry> log_;  // what the player has not confirmed
    Mark confirmed_ = 0;     // changes that are no longer in it
    Mark sealed_ = 0;
};

}  // namespace sontaro
