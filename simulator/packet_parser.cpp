#include "simulator/packet_parser.h"

#include <algorithm>
#include <utility>

namespace sontaro::simulator {

Result<const DevicePacket*> PacketParser::Take(ByteView& bytes) {
    if (std::exchange(isWhole_, false)) {
        headerBytes_ = 0;
        packet_.payload.clear();
    }
    if (headerBytes_ < kHeaderSize) {
        const ByteView part = Cut(bytes, kHeaderSize - headerBytes_);
        std::ranges::copy(part, header_.begin() + static_cast<std::ptrdiff_t>(headerBytes_));
        headerBytes_ += part.size();
        if (headerBytes_ < kHeaderSize) return nullptr;
        packet_.header = DecodeHeader(header_);
        if (packet_.header.magic != kPacketMagic) return Error{"wrong magic number"};
        if (packet_.header.payloadLength > kLargestPayload) return Error{"absurd payload length"};
    }
    const ByteView part = Cut(bytes, packet_.header.payloadLength - packet_.payload.size());
    packet_.payload.insert(packet_.payload.end(), part.begin(), part.end());
    isWhole_ = packet_.payload.size() == packet_.header.payloadLength;
    return isWhole_ ? &packet_ : nullptr;
}

ByteView PacketParser::Cut(ByteView& bytes, std::size_t count) {
    const ByteView part = bytes.first(std::min(count, bytes.size()));
    bytes = bytes.subspan(part.size());
    return part;
}

}  // namespace sontaro::simulator
