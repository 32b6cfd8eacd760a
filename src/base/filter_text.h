// How a filter compares texts.
#pragma once

#include <string>
#include <string_view>

namespace sontaro {

/// `text` with small letters for A to Z; other characters stay.
[[nodiscard]] std::string LowerCase(std::string text);

/// The form in which a filter's text is looked for: letters in lower case, no blanks at the ends,
/// among them the one that is as wide as a Chinese letter.
[[nodiscard]] std::string FilterForm(std::string_view text);

}  // namespace sontaro
