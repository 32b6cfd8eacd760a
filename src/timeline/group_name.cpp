#include "timeline/group_name.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "base/encoding.h"
#include "timeline/timeline_json.h"

namespace sontaro {

namespace {

struct FirstCode {
    unsigned code;
    char letter;
};

/// The first characters of each letter in GB2312's first level, which has none for I, U and V.
constexpr FirstCode kLetters[] = {
    {0xB0A1, 'a'}, {0xB0C5, 'b'}, {0xB2C1, 'c'}, {0xB4EE, 'd'}, {0xB6EA, 'e'}, {0xB7A2, 'f'},
    {0xB8C1, 'g'}, {0xB9FE, 'h'}, {0xBBF7, 'j'}, {0xBFA6, 'k'}, {0xC0AC, 'l'}, {0xC2E8, 'm'},
    {0xC4C3, 'n'}, {0xC5B6, 'o'}, {0xC5BE, 'p'}, {0xC6DA, 'q'}, {0xC8BB, 'r'}, {0xC8F6, 's'},
    {0xCBFA, 't'}, {0xCDDA, 'w'}, {0xCEF4, 'x'}, {0xD1B9, 'y'}, {0xD4D1, 'z'},
};
constexpr unsigned kLastCode = 0xD7F9;
constexpr unsigned kFirstLowByte = 0xA1;

std::uint8_t ByteOf(char character) { return static_cast<std::uint8_t>(character); }

bool BeginsCharacter(char byte) { return (ByteOf(byte) & 0xC0) != 0x80; }

std::string_view FirstCharacter(std::string_view text) {
    const auto* end = std::find_if(text.begin() + 1, text.end(), BeginsCharacter);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

int LetterOfCode(unsigned code) {
    const bool isFirstLevel =
        code >= std::begin(kLetters)->code && code <= kLastCode && (code & 0xFF) >= kFirstLowByte;
    if (!isFirstLevel) return kNoSortLetter;
    const auto* next = std::ranges::upper_bound(kLetters, code, {}, &FirstCode::code);
    return std::prev(next)->letter;
}

}  // namespace

int SortLetter(std::string_view name) {
    if (name.empty()) return 0;
    const std::string_view first = FirstCharacter(name);
    const std::string legacy = first.size() == 1 ? std::string(first) : EncodeLegacy(first);
    if (first.size() > 1 && legacy == "?") return kNoSortLetter;
    if (legacy.size() == 1) return static_cast<std::int8_t>(legacy.front());
    return LetterOfCode(unsigned{ByteOf(legacy[0])} << 8 | ByteOf(legacy[1]));
}

std::size_t Utf16Length(std::string_view text) {
    constexpr std::uint8_t kLeadOfFour = 0xF0;
    std::size_t length = 0;
    for (const char byte : text)
        if (BeginsCharacter(byte)) length += ByteOf(byte) >= kLeadOfFour ? 2U : 1U;
    return length;
}

SharedName NameTable::Find(std::string_view text) {
    if (const auto known = names_.find(text); known != names_.end()) return known->second;
    auto name = std::make_shared<const GroupName>(
        GroupName{std::string(text), Utf16Length(text), SortLetter(text), JsonBytes(text)});
    return names_.emplace(name->text, name).first->second;
}

}  // namespace sontaro
