// Names of categories and videos, with what they are sorted by.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace sontaro {

/// The sort letter of what the legacy code page has no reading for.
inline constexpr int kNoSortLetter = 32767;

/// What stands for the first letter of a name's reading: of a character of GB2312's first level the
/// Latin letter, of one byte that byte as a signed number, of an empty name 0. Those of the first
/// level are in the order of their readings; any other character is `kNoSortLetter`.
[[nodiscard]] int SortLetter(std::string_view name);

/// UTF-16 units of a valid UTF-8 text.
[[nodiscard]] std::size_t Utf16Length(std::string_view text);

/// A name; what is costly to find out about it is found out once.
struct GroupName {
    std::string text;
    std::size_t length = 0;     ///< UTF-16 units
    int letter = 0;             ///< `SortLetter`
    std::size_t jsonBytes = 0;  ///< that it takes in a document, quotes included
};

using SharedName = std::shared_ptr<const GroupName>;

/// Gives equal names one place in memory, so that they are compared by it.
class NameTable {
   public:
    [[nodiscard]] SharedName Find(std::string_view text);

   private:
    std::unordered_map<std::string_view, SharedName> names_;  // the keys are theirs
};

}  // namespace sontaro
