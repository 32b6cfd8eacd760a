// The command line of the program sontaro-player.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "simulator/player_group.h"

namespace sontaro::simulator {

struct PlayerArguments {
    LineUpOptions lineUp;
    std::filesystem::path log;  ///< empty: no log is written
    bool help = false;
};

/// What to say to `--help`.
[[nodiscard]] std::string PlayerHelp();

/// Reads the arguments behind the program's name. Fails, with a reason for the user, on unknown
/// options and on missing or impossible values.
[[nodiscard]] Result<PlayerArguments> ParsePlayerArguments(
    const std::vector<std::string_view>& arguments);

}  // namespace sontaro::simulator
