// The list of file names that players send.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sontaro {

/// The names in a player's list: each ends with "?", and of each the last four characters (a file
/// extension such as ".mp4") are dropped. What follows the last "?" is no name; a name that is
/// empty without its extension is left out. The text is UTF-8; what is not valid in it becomes
/// U+FFFD.
[[nodiscard]] std::vector<std::string> ParseNameList(std::string_view text);

}  // namespace sontaro
