// What was probably meant.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace sontaro::cli {

/// The one of `words` that is typed most like `typed`, when that is no more than a slip of the
/// fingers: characters left out, added, replaced, or swapped with the next one. Empty: none is.
[[nodiscard]] std::string NearestWord(std::string_view typed, std::span<const std::string> words);

}  // namespace sontaro::cli
