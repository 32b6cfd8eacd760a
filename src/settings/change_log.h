// What the user has changed and the player has not confirmed.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <variant>

#include "settings/settings_document.h"

namespace sontaro {

/// Edits and opened files in their order, so that they can be done to another document again.
class ChangeLog {
   public:
    /// A moment between two changes.
    using Mark = std::uint64_t;

    void AddEdit(SettingsEdit edit) { changes_.emplace_back(std::move(edit)); }
    void AddFile(std::string text) { changes_.emplace_back(std::move(text)); }

    [[nodiscard]] bool IsEmpty() const { return changes_.empty(); }
    /// This moment: every change so far is before it.
    [[nodiscard]] Mark Now() const { return forgotten_ + changes_.size(); }
    [[nodiscard]] bool HasSince(Mark mark) const { return Now() > mark; }

    /// The player holds what was changed before `mark`.
    void ForgetBefore(Mark mark) {
        for (; forgotten_ < mark && !changes_.empty(); ++forgotten_) changes_.pop_front();
    }
    void Forget() { ForgetBefore(Now()); }

    /// Does every change again. An edit whose row is no longer there is passed over.
    void RepeatOn(SettingsDocument& document) const {
        for (const Change& change : changes_) {
            if (const auto* edit = std::get_if<SettingsEdit>(&change))
                static_cast<void>(document.Edit(*edit));
            else
                static_cast<void>(document.TakeFile(std::get<std::string>(change)));
        }
    }

   private:
    using Change = std::variant<SettingsEdit, std::string>;

    std::deque<Change> changes_;
    Mark forgotten_ = 0;
};

}  // namespace sontaro
