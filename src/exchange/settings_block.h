// What is to be said of each block of a player's settings.
#pragma once

#include "link/window_message.h"

namespace sontaro {

/// How the settings of one block travel in command 3.
struct SettingsBlockFacts {
    SettingsBlock block{};
    MessageId reply{};                ///< the message that brings the block's replies
    std::uint16_t writeArgument = 1;  ///< of the request that writes
    /// How a write is confirmed: by argument 1 (a document has 0), by the document as it is now,
    /// which may be empty, or by no document.
    enum class Confirmation : std::uint8_t { kArgument, kAnyDocument, kNoDocument };
    Confirmation confirmation = Confirmation::kArgument;
};

/// The facts of a block that has them: of every block in `SettingsBlock` but the two of the screen
/// split, which are one read and one write.
[[nodiscard]] const SettingsBlockFacts& FactsOf(SettingsBlock block);

}  // namespace sontaro
