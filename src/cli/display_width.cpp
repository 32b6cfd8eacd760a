#include "cli/display_width.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "base/encoding.h"

namespace sontaro::cli {

namespace {

struct CharacterRange {
    char32_t first, last;
};

/// Marks that stand over or between other characters. Source: the Unicode character database,
/// categories Mn, Me and Cf, as far as names of videos have them.
constexpr CharacterRange kWithoutWidth[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD},   {0x0610, 0x061A}, {0x064B, 0x065F},
    {0x0E31, 0x0E31}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E},   {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},
    {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x2064},   {0x20D0, 0x20FF}, {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF},
};

/// Characters of two columns. Source: East Asian Width of the same, W and F.
constexpr CharacterRange kWide[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x23E9, 0x23EC},   {0x2E80, 0x303E},
    {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},
    {0xA960, 0xA97F},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
    {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF},
    {0x1F900, 0x1F9FF}, {0x20000, 0x2FFFD}, {0x30000, 0x3FFFD},
};

constexpr std::string_view kClosingMarks = "，。、；：）？”";

template <std::size_t kCount>
bool IsAmong(const CharacterRange (&ranges)[kCount], char32_t character) {
    const auto* range = std::ranges::lower_bound(ranges, character, {}, &CharacterRange::last);
    return range != std::end(ranges) && range->first <= character;
}

std::size_t WidthOf(char32_t character) {
    if (IsAmong(kWithoutWidth, character)) return 0;
    return IsAmong(kWide, character) ? 2 : 1;
}

/// Takes the next character off a valid text, which is not empty.
std::string_view TakeCharacter(std::string_view& text) {
    std::size_t length = 1;
    while (length < text.size() && (static_cast<std::uint8_t>(text[length]) & 0xC0) == 0x80)
        ++length;
    const std::string_view character = text.substr(0, length);
    text.remove_prefix(length);
    return character;
}

char32_t CodeOf(std::string_view character) {
    const auto at = [&](std::size_t place) { return static_cast<std::uint8_t>(character[place]); };
    constexpr std::uint8_t kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t code = at(0) & kLeadBits[std::min<std::size_t>(character.size(), 4)];
    for (std::size_t i = 1; i < character.size(); ++i) code = code << 6 | (at(i) & 0x3F);
    return code;
}

bool IsControl(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

}  // namespace

std::size_t DisplayWidth(std::string_view text) {
    const std::string valid = DecodeUtf8(text);
    std::size_t width = 0;
    for (std::string_view rest = valid; !rest.empty();)
        width += WidthOf(CodeOf(TakeCharacter(rest)));
    return width;
}

std::string Harmless(std::string_view text) {
    constexpr const char* kReplacement = "\xEF\xBF\xBD";
    const std::string valid = DecodeUtf8(text);
    std::string harmless;
    harmless.reserve(valid.size());
    for (std::string_view rest = valid; !rest.empty();) {
        const std::string_view character = TakeCharacter(rest);
        harmless += IsControl(CodeOf(character)) ? kReplacement : character;
    }
    return harmless;
}

std::string FilledUp(std::string_view text, std::size_t columns) {
    const std::size_t width = DisplayWidth(text);
    return std::string(text) + std::string(columns > width ? columns - width : 0, ' ');
}

std::vector<std::string> Wrapped(std::string_view text, std::size_t columns) {
    const std::string valid = DecodeUtf8(text);
    std::vector<std::string> lines(1);
    std::string word;
    const auto endWord = [&] {
        if (!lines.back().empty() && DisplayWidth(lines.back()) + DisplayWidth(word) > columns) {
            lines.back().erase(lines.back().find_last_not_of(' ') + 1);
            lines.emplace_back();
        }
        if (!lines.back().empty() || word != " ") lines.back() += word;
        word.clear();
    };
    bool wasWide = false;
    for (std::string_view rest = valid; !rest.empty();) {
        const std::string_view character = TakeCharacter(rest);
        const bool isWide = WidthOf(CodeOf(character)) == 2;
        // A mark at the end of a clause stays with what it ends.
        const bool isMark = kClosingMarks.find(character) != std::string_view::npos;
        if (character == " " || ((isWide || wasWide) && !isMark)) endWord();
        word += character;
        if (character == " ") endWord();
        wasWide = isWide;
    }
    endWord();
    return lines;
}

}  // namespace sontaro::cli
