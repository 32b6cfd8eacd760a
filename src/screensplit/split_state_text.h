// What a video wall's procedure tells the user, in a line.
#pragma once

#include <string>

namespace sontaro {

class SplitRun;

/// Why the task has stopped, and at which player; or how far it is; or what is the case with the
/// wall that is shown.
[[nodiscard]] std::string StateTextOf(const SplitRun& run);

/// What is the case with the wall that is shown, whatever the procedure does; empty before there is
/// one.
[[nodiscard]] std::string StatusTextOf(const SplitRun& run);

}  // namespace sontaro
