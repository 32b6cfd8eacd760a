#include "simulator/packet_parser.h"

namespace sontaro::simulator {

Result<std::optional<DevicePacket>> PacketParser::Next() {
    if (pending_.size() < kHeaderSize) return std::optional<DevicePacket>();
    DevicePacket packet{DecodeHeader(pending_), {}};
    if (packet.header.magic != kPacketMagic) return Error{"wrong magic number"};
    if (packet.header.payloadLength > kLargestPayload) return Error{"absurd payload length"};
    const std::size_t size = kHeaderSize + packet.header.payloadLength;
    if (pending_.size() < size) return std::optional<DevicePacket>();
    const auto end = pending_.begin() + static_cast<std::ptrdiff_t>(size);
    packet.payload.assign(pending_.begin() + kHeaderSize, end);
    pending_.erase(pending_.begin(), end);
    return std::optional(std::move(packet));
}

}  // namespace sontaro::simulator
