// What a program without a window was started with.
#pragma once

#include <string>
#include <vector>

namespace sontaro {

/// The arguments behind the program's name, in UTF-8. `count` and `values` are those of main(); on
/// Windows, where they lack what the code page lacks, the system is asked instead, and a console
/// is told to show UTF-8. Called once, at the start.
[[nodiscard]] std::vector<std::string> ProgramArguments(int count, char** values);

}  // namespace sontaro
