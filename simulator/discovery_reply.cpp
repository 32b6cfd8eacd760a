#include "simulator/discovery_reply.h"

#include <algorithm>

#include "link/packet.h"

namespace sontaro::simulator {

namespace {

constexpr std::uint8_t kLoopbackNetwork = 127;
constexpr std::size_t kReplyPayload = 30;

template <std::size_t kCount>
void Append(Bytes& bytes, const std::array<std::uint8_t, kCount>& octets) {
    bytes.insert(bytes.end(), octets.begin(), octets.end());
}

void AppendWord(Bytes& bytes, std::uint16_t word) {
    bytes.push_back(static_cast<std::uint8_t>(word));
    bytes.push_back(static_cast<std::uint8_t>(word >> 8));
}

/// An address that no manufacturer has: 02:00 and the octets of the IPv4 address.
std::array<std::uint8_t, 6> LocalMac(const Ipv4Address& address) {
    const auto& octets = address.octets;
    return {0x02, 0x00, octets[0], octets[1], octets[2], octets[3]};
}

}  // namespace

bool IsDiscoveryRequest(ByteView datagram) {
    if (datagram.size() < kHeaderSize) return false;
    const PacketHeader header = DecodeHeader(datagram);
    return header.magic == kPacketMagic && header.command == kCommandDiscovery &&
           header.argument == 1;
}

bool IsWithinEarshot(const Ipv4Address& player, const Ipv4Address& sender) {
    return player.octets[0] == kLoopbackNetwork &&
           std::equal(player.octets.begin(), player.octets.begin() + 3, sender.octets.begin());
}

Bytes DiscoveryReply(const PlayerIdentity& identity, const Endpoint& listening) {
    DevicePacket reply;
    reply.header.command = kCommandDiscovery | kReplyBit;
    reply.header.qualifier = identity.idSuffix ? 1 : 0;
    reply.header.subCommand = identity.idSuffix.value_or(0);
    reply.header.argument = 1;
    reply.header.payloadLength = kReplyPayload;
    Append(reply.payload, listening.address.octets);
    Append(reply.payload, identity.mac.value_or(LocalMac(listening.address)));
    AppendWord(reply.payload, listening.port);
    AppendWord(reply.payload, identity.versionWord);
    AppendWord(reply.payload, identity.fpgaVersion);
    AppendWord(reply.payload, identity.channelCode);
    const ByteView id = AsBytes(identity.id).first(std::min(identity.id.size(), kLongestId));
    reply.payload.insert(reply.payload.end(), id.begin(), id.end());
    reply.payload.resize(kReplyPayload);
    return reply.Serialize();
}

}  // namespace sontaro::simulator
