// Character encodings of texts that come from files and players.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sontaro {

/// Whether every lead byte 0xC0..0xFD is followed by the 1 to 5 continuation bytes it announces
/// and no other byte above 0x7F occurs. Wider than Unicode's own rule: five and six byte forms,
/// overlong forms and surrogates pass, as title files have always been tested.
[[nodiscard]] bool IsWellFormedUtf8(std::string_view bytes);

/// `bytes` as valid UTF-8: what does not decode to a Unicode scalar value becomes U+FFFD.
[[nodiscard]] std::string DecodeUtf8(std::string_view bytes);

/// The bytes of `character`, one character in UTF-8, in the system's legacy code page; none when
/// the code page lacks it. Source: on Windows the ANSI code page; elsewhere GBK.
[[nodiscard]] std::optional<std::size_t> LegacyCharacterLength(std::string_view character);

/// The bytes of `utf8` in that code page. What the code page lacks counts as it is sent: in UTF-8.
[[nodiscard]] std::size_t LegacyLength(std::string_view utf8);

/// Each byte as the character of the same number (ISO 8859-1), in UTF-8.
[[nodiscard]] std::string DecodeByteByByte(std::string_view bytes);

}  // namespace sontaro
