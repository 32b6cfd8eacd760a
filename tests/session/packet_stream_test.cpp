#include "session/packet_stream.h"

#include <gmock/gmock.h>

#include "support/literals.h"
#include "support/platform.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Bytes Packet(std::uint8_t command, std::size_t size) {
    return DevicePacket::Request(command, 0, AsText(Pattern(size))).Serialize();
}

Bytes Joined(const std::vector<Bytes>& parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

/// A packet of 4 payload bytes that announces something else.
Bytes Announcing(std::uint32_t size) {
    DevicePacket packet = DevicePacket::Request(0xBF, 0, "more");
    packet.header.payloadLength = size;
    return packet.Serialize();
}

struct Stream : testing::Test {
    LinkTrouble Take(ByteView piece) { return stream.Take(piece, packets); }
    /// The commands and payload sizes of what has come since.
    std::vector<std::pair<int, std::size_t>> Taken() {
        std::vector<std::pair<int, std::size_t>> taken;
        for (const DevicePacket& packet : std::exchange(packets, {})) {
            EXPECT_EQ(packet.payload, Pattern(packet.payload.size()));
            taken.emplace_back(packet.header.command, packet.payload.size());
        }
        return taken;
    }
    std::vector<DevicePacket> packets;
    PacketStream stream;
};

TEST_F(Stream, TakesPacketsInPiecesOfAnySizeAndAllThatOnePieceHas) {
    const Bytes all = Joined({Packet(0x83, 5), Packet(0xBB, 0), Packet(0x8A, 40), Packet(0x93, 1)});
    for (std::size_t size = 1; size <= all.size(); ++size) {
        for (ByteView rest = all; !rest.empty(); rest = rest.subspan(std::min(size, rest.size())))
            ASSERT_EQ(Take(rest.first(std::min(size, rest.size()))), LinkTrouble::kNone) << size;
        EXPECT_FALSE(stream.IsWithinPacket());
        ASSERT_THAT(Taken(), ElementsAre(std::pair(0x83, 5), std::pair(0xBB, 0),
                                         std::pair(0x8A, 40), std::pair(0x93, 1)))
            << size;
    }
}

TEST_F(Stream, IsWithinAPacketUntilItsLastByte) {
    const Bytes packet = Packet(0x83, 2);
    for (const std::uint8_t byte : packet) {
        EXPECT_THAT(packets, IsEmpty());
        EXPECT_EQ(Take({&byte, 1}), LinkTrouble::kNone);
        EXPECT_EQ(stream.IsWithinPacket(), packets.empty());
    }
    EXPECT_EQ(packets.size(), 1U);
}

TEST_F(Stream, EndsForGoodWhereNoPacketBeginsAndPassesOnWhatCameBefore) {
    const Bytes sound = Packet(0x83, 3);
    const Bytes wrong[] = {Hex("00"), Hex("5A5A5AA4"), Hex("5A5A5AA5 00"),
                           ToBytes("longer than a header of 16 bytes")};
    for (const Bytes& bytes : wrong) {
        stream = {};
        EXPECT_EQ(Take(Joined({sound, bytes, sound})), LinkTrouble::kGarbage);
        EXPECT_EQ(Take(sound), LinkTrouble::kGarbage);
        EXPECT_THAT(Taken(), ElementsAre(std::pair(0x83, 3)));
    }
}

TEST_F(Stream, RefusesWhatIsTooLongAndTakesNoMoreMemoryThanHasCome) {
    const std::size_t before = BytesInUse();
    EXPECT_EQ(Take(Announcing(kLongestPayload)), LinkTrouble::kNone);
    EXPECT_LT(BytesInUse(), before + (1U << 20));
    for (const std::uint32_t size : {std::uint32_t{kLongestPayload + 1}, 0xFFFFFFFFU}) {
        stream = {};
        EXPECT_EQ(Take(Announcing(size)), LinkTrouble::kTooLong);
    }
    EXPECT_THAT(packets, IsEmpty());
}

}  // namespace
}  // namespace sontaro::test
