#include "link/discovery.h"

#include <chrono>
#include <thread>

#include "link/packet.h"

namespace sontaro {

Bytes DiscoveryRequest(const Ipv4Address& destination) {
    constexpr std::size_t kZeroBytes = 30;
    DevicePacket request;
    request.header.command = kCommandDiscovery;
    request.header.argument = 1;
    request.header.payloadLength = destination == kBroadcastAddress ? 0 : 1;
    request.payload.resize(kZeroBytes);
    return request.Serialize();
}

Bytes ShortDiscoveryRequest() {
    Bytes request = DiscoveryRequest(kBroadcastAddress);
    request.resize(kHeaderSize);
    return request;
}

bool SendDiscovery(CUDPServer& socket, const Ipv4Address& destination, const Bytes& request) {
    constexpr std::chrono::milliseconds kBetweenPorts{20};
    const bool first = socket.Send({destination, kDiscoveryPorts[0]}, request);
    std::this_thread::sleep_for(kBetweenPorts);
    return socket.Send({destination, kDiscoveryPorts[1]}, request) && first;
}

}  // namespace sontaro
