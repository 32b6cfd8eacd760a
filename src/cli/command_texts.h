// What is written down of the table of commands.
#pragma once

#include <string>

#include "cli/command_table.h"

namespace sontaro::cli {

/// What `--help` prints, in the language of the process: of the program, or of a command.
[[nodiscard]] std::string ProgramHelp();
[[nodiscard]] std::string CommandHelp(const CommandRow& command);

/// How a command is called: "get BLOCK -p P [-o PATH]".
[[nodiscard]] std::string Usage(const CommandRow& command);

// In English, whatever the language of the process.

/// The manual page, as groff reads it. `version` and `date` stand in its heading.
[[nodiscard]] std::string ManualPage(const std::string& version, const std::string& date);
/// The completion for bash.
[[nodiscard]] std::string BashCompletion();
/// The commands as a table for the README.
[[nodiscard]] std::string CommandList();

}  // namespace sontaro::cli
