// The request that makes players announce themselves.
#pragma once

#include <array>

#include "link/udp_server.h"

namespace sontaro {

/// The UDP ports that players listen on, in the order they are asked.
inline constexpr std::array<std::uint16_t, 2> kDiscoveryPorts = {6000, 7656};

/// The 46 bytes of the request for `destination`: the broadcast address or one player's.
[[nodiscard]] Bytes DiscoveryRequest(const Ipv4Address& destination);

/// The shorter form of the broadcast, a header alone. Players answer it as they do the other.
[[nodiscard]] Bytes ShortDiscoveryRequest();

/// Sends a request to `destination` on both ports, 20 ms apart. User-interface thread.
/// False when the socket is not open.
bool SendDiscovery(CUDPServer& socket, const Ipv4Address& destination, const Bytes& request);

}  // namespace sontaro
