// Commands that are typed as text, and their checksums.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/local_text.h"

namespace sontaro {

/// The bytes of a typed text: its characters in UTF-8; \r, \n, \t and \\ for those bytes, \xNN for
/// any byte. None when a backslash is followed by anything else.
[[nodiscard]] std::optional<Bytes> BytesOfTypedText(std::string_view text);

/// A text that is typed for these bytes: visible ASCII characters as they are.
[[nodiscard]] std::string TypedTextOf(ByteView bytes);

/// What many devices expect at the end of a command.
enum class Checksum { kNone, kSum, kXor, kCrc16Modbus };

inline constexpr std::array<LocalText, 4> kChecksumNames = {{
    {"无", "None"},
    {"累加和", "Sum"},
    {"异或", "XOR"},
    {"CRC-16/MODBUS", "CRC-16/MODBUS"},
}};

/// `bytes` and their checksum: the low byte of their sum, their exclusive or, or the CRC with its
/// low byte first.
[[nodiscard]] Bytes WithChecksum(Bytes bytes, Checksum checksum);

}  // namespace sontaro
