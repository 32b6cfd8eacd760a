// The steps of a procedure for settings that may be others than the plain ones.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "exchange/conversation.h"

namespace sontaro {

/// What goes to the player on OK.
struct OutgoingSettings {
    std::string text;
    bool restarts = false;  ///< the player starts again with it: nothing can be done afterwards
};

/// Asks the player something, which may take its time: the user is told.
using AskCall = std::function<void(Request, Conversation::EndedCall)>;

/// Where a procedure differs from the plain one, which asks for the block and sends the document.
struct SettingsSteps {
    /// Asks the player, and passes on how the question for the document ended.
    std::function<void(AskCall, Conversation::EndedCall)> read;
    /// Makes `text` ready to go; none when the user has thought better of it.
    std::function<std::optional<OutgoingSettings>(std::string text)> prepare;
    /// Sees what nobody asked for.
    std::function<void(WindowMessage&)> unasked = [](WindowMessage&) {};
};

}  // namespace sontaro
