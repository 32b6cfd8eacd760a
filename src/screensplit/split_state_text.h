// What a video wall's procedure tells the user, in a line.
#pragma once

#include <string>

namespace sontaro {

class SplitRun;

/// How far the task is; else what is the case with the wall that is shown, behind the reason why
/// the task has stopped, and at which player, if it has.
[[nodiscard]] std::string StateTextOf(const SplitRun& run);

/// What is the case with the wall that is shown, whatever the procedure does; empty before there is
/// one.
[[nodiscard]] std::string StatusTextOf(const SplitRun& run);

}  // namespace sontaro
