#include "timeline/command_text.h"

#include <fmt/format.h>

#include <functional>
#include <numeric>

#include "base/hex_command.h"
#include "link/crc16.h"

namespace sontaro {

namespace {

/// Letters behind a backslash, and the bytes that they stand for.
constexpr std::string_view kEscapes = "rnt\\";
constexpr std::string_view kEscaped = "\r\n\t\\";

/// Takes what follows a backslash from the front of `rest`.
bool TakeEscape(std::string_view& rest, Bytes& bytes) {
    if (rest.starts_with('x')) {
        const auto byte = BytesOfHexCommand(rest.substr(1, 2));
        if (!byte || byte->empty()) return false;
        bytes.push_back(byte->front());
        rest.remove_prefix(3);
        return true;
    }
    const std::size_t place = rest.empty() ? std::string_view::npos : kEscapes.find(rest.front());
    if (place == std::string_view::npos) return false;
    bytes.push_back(static_cast<std::uint8_t>(kEscaped[place]));
    rest.remove_prefix(1);
    return true;
}

}  // namespace

std::optional<Bytes> BytesOfTypedText(std::string_view text) {
    Bytes bytes;
    while (!text.empty()) {
        const char character = text.front();
        text.remove_prefix(1);
        if (character != '\\')
            bytes.push_back(static_cast<std::uint8_t>(character));
        else if (!TakeEscape(text, bytes))
            return std::nullopt;
    }
    return bytes;
}

std::string TypedTextOf(ByteView bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        const auto character = static_cast<char>(byte);
        if (const std::size_t place = kEscaped.find(character); place != std::string_view::npos)
            text += {'\\', kEscapes[place]};
        else if (byte >= ' ' && byte <= '~')
            text += character;
        else
            text += fmt::format("\\x{:02X}", byte);
    }
    return text;
}

Bytes WithChecksum(Bytes bytes, Checksum checksum) {
    const auto byteOf = [](unsigned number) { return static_cast<std::uint8_t>(number & 0xFF); };
    switch (checksum) {
        case Checksum::kNone: break;
        case Checksum::kSum:
            bytes.push_back(byteOf(std::accumulate(bytes.begin(), bytes.end(), 0U)));
            break;
        case Checksum::kXor:
            bytes.push_back(
                byteOf(std::accumulate(bytes.begin(), bytes.end(), 0U, std::bit_xor())));
            break;
        case Checksum::kCrc16Modbus: {
            const unsigned crc = Crc16Modbus(bytes);
            bytes.insert(bytes.end(), {byteOf(crc), byteOf(crc >> 8)});
            break;
        }
    }
    return bytes;
}

}  // namespace sontaro
