// Octet sequences as they travel on the wire.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace sontaro {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

/// The octets of `text`, without a terminator. The view lives as long as the text.
inline ByteView AsBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// The octets read as characters. The view lives as long as the octets.
inline std::string_view AsText(ByteView bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace sontaro
