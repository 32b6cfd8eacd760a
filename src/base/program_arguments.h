// What the program was started with.
#pragma once

#include <string>
#include <vector>

namespace sontaro {

/// The arguments behind the program's name, in UTF-8 (on Linux the bytes as they were given). The
/// system is asked for them: on Windows main() lacks what the code page lacks, and the toolkit
/// decodes them as the locale says. There a console is also told to show UTF-8. Called once, at the
/// start.
[[nodiscard]] std::vector<std::string> ProgramArguments();
/// The same for a program that has a main() of its own, whose `count` and `values` are taken where
/// they lack nothing: on Linux, which may have no /proc to ask, as in a chroot.
[[nodiscard]] std::vector<std::string> ProgramArguments(int count, char** values);

}  // namespace sontaro
