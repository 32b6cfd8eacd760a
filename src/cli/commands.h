// The commands of sontaro-cli. Each takes the options and arguments of its call, tells what there
// is to be told, and returns how the program is to end (cli/exit_code.h).
#pragma once

#include "cli/surroundings.h"

namespace sontaro::cli {

/// The command of the call.
[[nodiscard]] int RunCommand(const Surroundings& surroundings);

[[nodiscard]] int RunFind(const Surroundings& surroundings);
[[nodiscard]] int RunShow(const Surroundings& surroundings);
[[nodiscard]] int RunVideos(const Surroundings& surroundings);
[[nodiscard]] int RunGet(const Surroundings& surroundings);
[[nodiscard]] int RunSet(const Surroundings& surroundings);
[[nodiscard]] int RunApply(const Surroundings& surroundings);
[[nodiscard]] int RunControl(const Surroundings& surroundings);
[[nodiscard]] int RunSend(const Surroundings& surroundings);
[[nodiscard]] int RunUpload(const Surroundings& surroundings);
[[nodiscard]] int RunBackup(const Surroundings& surroundings);
[[nodiscard]] int RunCompare(const Surroundings& surroundings);
[[nodiscard]] int RunRestore(const Surroundings& surroundings);
[[nodiscard]] int RunCheck(const Surroundings& surroundings);
[[nodiscard]] int RunWatch(const Surroundings& surroundings);

}  // namespace sontaro::cli
