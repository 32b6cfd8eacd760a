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

/// Each byte as the character of the same number (ISO 8859-1), in UTF-8.
[[nodiscard]] std::string DecodeByteByByte(std::string_view bytes);

}  // namespace sontaro
