#include "link/packet.h"

#include <algorithm>

namespace sontaro {

namespace {

/// The byte layout, for both directions: calls `visit(offset, field)` for every field.
template <class Header, class Visitor>
void VisitFields(Header& header, Visitor visit) {
    visit(0, header.magic);
    visit(4, header.command);
    visit(5, header.qualifier);
    visit(6, header.reserved);
    visit(8, header.subCommand);
    visit(10, header.argument);
    visit(12, header.payloadLength);
}

}  // namespace

std::array<std::uint8_t, kHeaderSize> EncodeHeader(const PacketHeader& header) {
    std::array<std::uint8_t, kHeaderSize> bytes{};
    VisitFields(header, [&](std::size_t offset, const auto& field) {
        for (std::size_t i = 0; i < sizeof field; ++i)
            bytes[offset + i] = static_cast<std::uint8_t>(field >> 8 * i);
    });
    return bytes;
}

PacketHeader DecodeHeader(ByteView bytes) {
    PacketHeader header;
    VisitFields(header, [&]<class Field>(std::size_t offset, Field& field) {
        field = 0;
        for (std::size_t i = 0; i < sizeof field; ++i)
            field = static_cast<Field>(field | static_cast<Field>(bytes[offset + i]) << 8 * i);
    });
    return header;
}

DevicePacket DevicePacket::Request(std::uint32_t commandWord, std::uint32_t selectorWord,
                                   std::string_view payload) {
    DevicePacket packet;
    packet.header.command = static_cast<std::uint8_t>(commandWord);
    packet.header.qualifier = static_cast<std::uint8_t>(commandWord >> 8);
    packet.header.subCommand = static_cast<std::uint16_t>(selectorWord);
    packet.header.argument = static_cast<std::uint16_t>(selectorWord >> 16);
    packet.header.payloadLength = static_cast<std::uint32_t>(payload.size());
    const ByteView bytes = AsBytes(payload);
    packet.payload.assign(bytes.begin(), bytes.end());
    return packet;
}

Bytes DevicePacket::Serialize() const {
    Bytes bytes(kHeaderSize + payload.size());
    std::ranges::copy(EncodeHeader(header), bytes.begin());
    std::ranges::copy(payload, bytes.begin() + kHeaderSize);
    return bytes;
}

}  // namespace sontaro
