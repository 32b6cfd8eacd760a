// sontaro-cli without its process.
#pragma once

#include <string>
#include <vector>

#include "cli/surroundings.h"

namespace sontaro::cli {

/// What the process gives the program.
struct ProgramWays {
    TextSink& results;
    TextSink& remarks;
    bool showsProgress = false;
    bool showsChinese = true;
    std::stop_token stop = {};
    std::function<std::optional<bool>(const std::string&)> confirm = [](const std::string&) {
        return std::optional<bool>();
    };
    std::filesystem::path config = {};  ///< empty: the user's
    std::function<Result<std::vector<DeviceRecord>>(const FindPlan&)> find = FindPlayers;
};

/// Does what the arguments behind the program's name (UTF-8) ask for. How the process is to end
/// (cli/exit_code.h). Sets the language of the process.
[[nodiscard]] int RunProgram(const std::vector<std::string>& arguments, const ProgramWays& ways);

}  // namespace sontaro::cli
