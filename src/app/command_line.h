// The options that Sontaro is started with.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/local_text.h"
#include "base/result.h"

namespace sontaro {

struct CommandLine {
    /// --demo[=N]: simulated players inside the process, 1 to 200.
    std::optional<int> demoPlayers;
    /// --local-address A: an address to offer and select for scanning; empty when not given.
    std::string localAddress;
    /// --language zh|en: for this run.
    std::optional<Language> language;
    /// --tour DIR: walk through the program, leave pictures in DIR, exit. Only with --demo.
    std::filesystem::path tour;
    /// --help: print the options and exit.
    bool help = false;
};

/// The options in `arguments` (program name not among them, UTF-8), or what is wrong with them.
[[nodiscard]] Result<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments);

/// What `--help` prints.
[[nodiscard]] std::string CommandLineHelp();

}  // namespace sontaro
