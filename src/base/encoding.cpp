#include "base/encoding.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace sontaro {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr const char* kLegacyReplacement = "?";

/// Continuation bytes that a lead byte announces: 0 for 7-bit characters, 1 to 5, -1 for none.
int ContinuationCount(std::uint8_t lead) {
    if (lead < 0x80) return 0;
    const int ones = std::countl_one(lead);
    return ones >= 2 && ones <= 6 ? ones - 1 : -1;
}

bool IsContinuation(char byte) { return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80; }

/// Length of the sequence at the start of `bytes` when it is complete, else 0.
std::size_t SequenceLength(std::string_view bytes) {
    const int count = ContinuationCount(static_cast<std::uint8_t>(bytes.front()));
    if (count < 0 || bytes.size() <= static_cast<std::size_t>(count)) return 0;
    for (int i = 1; i <= count; ++i)
        if (!IsContinuation(bytes[static_cast<std::size_t>(i)])) return 0;
    return static_cast<std::size_t>(count) + 1;
}

/// The number that a complete sequence of two to four bytes stands for.
std::uint32_t ValueOf(std::string_view sequence) {
    std::uint32_t value = static_cast<std::uint8_t>(sequence.front()) & (0x7FU >> sequence.size());
    for (char byte : sequence.substr(1))
        value = value << 6 | (static_cast<std::uint8_t>(byte) & 0x3F);
    return value;
}

/// Whether a complete sequence of one to six bytes encodes a Unicode scalar value in its
/// shortest form.
bool IsScalarValue(std::string_view sequence) {
    constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (sequence.size() == 1) return true;
    if (sequence.size() > 4) return false;
    const std::uint32_t value = ValueOf(sequence);
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    return value >= kSmallest[sequence.size()] && value <= 0x10FFFF && !surrogate;
}

bool IsPrivateUse(std::string_view character) {
    const std::uint32_t value = ValueOf(character);
    return value >= 0xE000 && value <= 0xF8FF;
}

/// One character as code page 936 has it. The systems' tables agree but for private use.
std::string LegacyForm(std::string_view character) {
    if (character.size() == 1) return std::string(character);
    if (character.size() > 3 || IsPrivateUse(character)) return kLegacyReplacement;
    const std::string form = LegacyCharacter(character);
    return form.empty() ? kLegacyReplacement : form;
}

}  // namespace

bool IsWellFormedUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = SequenceLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string DecodeUtf8(std::string_view bytes) {
    const auto isAscii = [](char byte) { return static_cast<std::uint8_t>(byte) < 0x80; };
    if (std::ranges::all_of(bytes, isAscii)) return std::string(bytes);
    std::string text;
    text.reserve(bytes.size());
    std::size_t begin = 0;  // of what is well-formed and not copied yet
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = SequenceLength(bytes.substr(at));
        const std::size_t next = at + std::max<std::size_t>(length, 1);
        if (length == 0 || !IsScalarValue(bytes.substr(at, length))) {
            text += bytes.substr(begin, at - begin);
            text += kReplacement;
            begin = next;
        }
        at = next;
    }
    text += bytes.substr(begin);
    return text;
}

std::string EncodeLegacy(std::string_view utf8) {
    const std::string text = DecodeUtf8(utf8);
    std::string encoded;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view character = rest.substr(0, SequenceLength(rest));
        encoded += LegacyForm(character);
        rest.remove_prefix(character.size());
    }
    return encoded;
}

std::string CutToLegacyLength(std::string_view utf8, std::size_t bytes) {
    const std::string text = DecodeUtf8(utf8);
    std::string cut;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view character = rest.substr(0, SequenceLength(rest));
        const std::size_t length = LegacyForm(character).size();
        if (length > bytes) break;
        bytes -= length;
        cut += character;
        rest.remove_prefix(character.size());
    }
    return cut;
}

std::string DecodeByteByByte(std::string_view bytes) {
    std::string text;
    for (char byte : bytes) {
        const auto code = static_cast<std::uint8_t>(byte);
        if (code < 0x80) {
            text += byte;
        } else {
            text += static_cast<char>(0xC0 | code >> 6);
            text += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return text;
}

}  // namespace sontaro
