// How a simulated player announces itself.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "base/bytes.h"
#include "link/socket.h"

namespace sontaro::simulator {

/// What a player says of itself.
struct PlayerIdentity {
    std::string id = "SIMPLAYER1";          ///< up to 12 characters
    std::optional<std::uint16_t> idSuffix;  ///< shown behind the ID as four hexadecimal digits
    std::optional<std::array<std::uint8_t, 6>> mac;  ///< none: made from the address
    std::uint16_t versionWord = 0x1230;  ///< from the top a digit each: major, minor, patch
    std::uint16_t fpgaVersion = 0;       ///< 0: none
    std::uint16_t channelCode = 1;       ///< 1 to 9 outputs; 11, 21 ... 91 with an input as well
};

inline constexpr std::size_t kLongestId = 12;

/// Whether `datagram` asks players to announce themselves; bytes behind its header do not matter.
[[nodiscard]] bool IsDiscoveryRequest(ByteView datagram);

/// Whether a player at `player` hears a request from `sender`: only its own /24 network within
/// 127.0.0.0/8, so that the players of programs in different networks are out of each other's way.
[[nodiscard]] bool IsWithinEarshot(const Ipv4Address& player, const Ipv4Address& sender);

/// The 46 bytes with which a player that listens at `listening` answers.
[[nodiscard]] Bytes DiscoveryReply(const PlayerIdentity& identity, const Endpoint& listening);

}  // namespace sontaro::simulator
