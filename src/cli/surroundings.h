// What a command of sontaro-cli stands on; tests replace it.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <vector>

#include "cli/invocation.h"
#include "cli/output.h"
#include "session/player_search.h"

namespace sontaro::cli {

/// All of it outlives the command.
struct Surroundings {
    const Invocation& call;
    Output& output;
    std::stop_token stop;          ///< the user wants the program to end
    std::filesystem::path data;    ///< documents, journals, venues
    std::filesystem::path config;  ///< the notes and preferences that the windows have, too
    /// Asks the user a question that is answered with yes or no; none: nobody is there to answer.
    std::function<std::optional<bool>(const std::string&)> confirm;
    /// Asks the network who is there.
    std::function<Result<std::vector<DeviceRecord>>(const FindPlan&)> find = FindPlayers;
};

}  // namespace sontaro::cli
