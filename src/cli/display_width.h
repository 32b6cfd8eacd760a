// Texts as terminals show them: Chinese characters are two columns wide.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace sontaro::cli {

/// Columns that a text takes. UTF-8; what does not decode counts as U+FFFD.
[[nodiscard]] std::size_t DisplayWidth(std::string_view text);

/// The text on one line that no terminal takes for orders: control characters, ends of lines among
/// them, become U+FFFD.
[[nodiscard]] std::string Harmless(std::string_view text);

/// The text filled up with blanks to so many columns.
[[nodiscard]] std::string FilledUp(std::string_view text, std::size_t columns);

/// The text in lines of at most so many columns: it is broken at blanks and around Chinese
/// characters. A word that is longer has a longer line.
[[nodiscard]] std::vector<std::string> Wrapped(std::string_view text, std::size_t columns);

}  // namespace sontaro::cli
