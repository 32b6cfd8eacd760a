// Commands that are learned from a player's serial line.
#pragma once

#include <optional>
#include <string>

#include "link/window_message.h"

namespace sontaro {

/// What is to be told of the player's serial line.
struct SerialLineState {
    enum class Kind {
        kNothing,
        kListening,    ///< the player passes on what it hears
        kLearned,      ///< `command` is now the switch command of `category`
        kReplaced,     ///< so it is, in place of `replaced`
        kNobodys,      ///< `command` was heard while no video category was chosen
        kEditing,      ///< `command` was heard while a cell was being edited
        kNotLearning,  ///< `command` was heard while nothing is to be learned
        kTooLate,      ///< `command` was heard while the document was being sent, or after
    };
    Kind kind = Kind::kNothing;
    std::string command = {};
    int category = 0;  ///< from 0
    std::string replaced = {};
};

/// Whether something may be learned at the moment, and for whom.
struct LearningChance {
    bool tooLate = false;         ///< the document has been written to be sent
    bool editing = false;         ///< a cell is being edited
    std::optional<int> category;  ///< the video category, from 0, whose row is chosen
};

/// Decides what becomes of bytes that the player's serial line has received.
class SerialLearner {
   public:
    /// Whether the user wants commands to be learned.
    void Enable(bool enabled) { enabled_ = enabled; }

    /// What became of the bytes; with `kLearned` the command is still to be entered.
    [[nodiscard]] SerialLineState Hear(const SerialData& serial,
                                       const LearningChance& chance) const;

   private:
    bool enabled_ = true;
};

}  // namespace sontaro
