// By how much commands of a timeline are to be moved.
#pragma once

#include <cstdint>
#include <optional>

#include "base/prompts.h"

class wxWindow;

namespace sontaro {

/// Control number of the text that is typed.
inline constexpr int kShiftSeconds = 3101;

/// Asks for seconds, of either sign and with up to three decimals, for `count` commands, modally.
/// Milliseconds; none when the user leaves without OK.
[[nodiscard]] std::optional<std::int64_t> AskForShift(wxWindow* parent, std::size_t count,
                                                      Prompts& prompts);

}  // namespace sontaro
