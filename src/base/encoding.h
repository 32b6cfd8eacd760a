// Character encodings of texts that come from files and players.
#pragma once

#include <string>
#include <string_view>

namespace sontaro {

/// Whether every lead byte 0xC0..0xFD is followed by the 1 to 5 continuation bytes it announces
/// and no other byte above 0x7F occurs. Wider than Unicode's own rule: five and six byte forms,
/// overlong forms and surrogates pass, as title files have always been tested.
[[nodiscard]] bool IsWellFormedUtf8(std::string_view bytes);

/// `bytes` as valid UTF-8: what does not decode to a Unicode scalar value becomes U+FFFD.
[[nodiscard]] std::string DecodeUtf8(std::string_view bytes);

/// `utf8` in the legacy code page, which is 936 (GBK) on every system, whatever its own is. Each
/// character that the code page lacks becomes one '?', and so does what is no character: those
/// beyond U+FFFF, for which Windows by itself gives two, and those of private use, which only
/// Windows has places for.
[[nodiscard]] std::string EncodeLegacy(std::string_view utf8);

/// The bytes of `utf8` in that code page.
[[nodiscard]] inline std::size_t LegacyLength(std::string_view utf8) {
    return EncodeLegacy(utf8).size();
}

/// The longest start of `utf8` that has at most `bytes` bytes in that code page and ends with a
/// whole character. What does not decode becomes U+FFFD.
[[nodiscard]] std::string CutToLegacyLength(std::string_view utf8, std::size_t bytes);

/// `character`, one of at most U+FFFF in UTF-8, as the system's code page 936 has it; empty when it
/// lacks the character.
[[nodiscard]] std::string LegacyCharacter(std::string_view character);

/// Each byte as the character of the same number (ISO 8859-1), in UTF-8.
[[nodiscard]] std::string DecodeByteByByte(std::string_view bytes);

}  // namespace sontaro
