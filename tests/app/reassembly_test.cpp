#include "app/reassembly.h"

#include <gmock/gmock.h>
#include <malloc.h>

#include "support/literals.h"

namespace sontaro::test {
namespace {

struct Reassembling : testing::Test {
    struct Received {
        PacketHeader header;
        Bytes payload;
        Target sender;
    };

    void Chunk(ByteView bytes, const std::string& ip = "127.0.0.2") {
        reassembly.Handle({ip, 9000, 5, LinkCode::kReceived, 0, bytes});
    }
    void Event(int code) {
        reassembly.Handle(
            {"127.0.0.2", 9000, 5, LinkCode{static_cast<std::uint16_t>(code)}, 0, {}});
    }
    static Bytes Packet(std::uint8_t command, std::size_t size, std::uint32_t announced) {
        DevicePacket packet{{}, Pattern(size)};
        packet.header.command = command;
        packet.header.payloadLength = announced;
        return packet.Serialize();
    }
    static Bytes Packet(std::uint8_t command, std::size_t size) {
        return Packet(command, size, static_cast<std::uint32_t>(size));
    }
    /// The commands of the packets received so far, which are then forgotten.
    std::vector<int> Commands() {
        std::vector<int> commands;
        for (const Received& packet : std::exchange(received, {}))
            commands.push_back(packet.header.command);
        return commands;
    }

    std::vector<Received> received;
    std::function<void()> whileHandled = [] {};
    Reassembly reassembly{[this](const Reply& reply) {
        whileHandled();
        received.push_back(
            {reply.header, {reply.payload.begin(), reply.payload.end()}, reply.sender});
    }};
};
using testing::ElementsAre;

TEST_F(Reassembling, TakesAPacketCutAnywhereBehindItsHeaderAndLosesOthersAlone) {
    const Bytes packet = Packet(0x9A, 24);
    const ByteView whole = packet;
    for (std::size_t first = 1; first < packet.size(); ++first)
        for (std::size_t second = first; second < packet.size(); ++second) {
            Chunk(whole.first(first));
            if (second > first) Chunk(whole.subspan(first, second - first));
            Chunk(whole.subspan(second));
            const bool complete = first >= kHeaderSize;
            if (complete) {
                ASSERT_EQ(received.size(), 1U) << first << " " << second;
                ASSERT_EQ(received[0].payload, Pattern(24)) << first << " " << second;
            }
            Chunk(Packet(0x9B, 3));
            ASSERT_EQ(Commands(),
                      complete ? std::vector<int>({0x9A, 0x9B}) : std::vector<int>({0x9B}))
                << first << " " << second;
        }
}

TEST_F(Reassembling, HeaderWithoutPayloadCompletesAtOnceWithItsSender) {
    Chunk(Packet(0x9A, 0), "127.0.0.7");
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].sender, (Target{"127.0.0.7", 9000, 5}));
    EXPECT_EQ(received[0].header.payloadLength, 0U);
}

TEST_F(Reassembling, ShortHeaderChunkIsIgnoredAndTheNextIsAHeaderWithoutACheck) {
    Chunk(ByteView(Packet(0x9A, 4)).first(10));
    Chunk(Hex("00 11"));
    EXPECT_THAT(Commands(), ElementsAre());
    Chunk(Hex("01020304 8B 00 0000 0000 0000 02000000 AABB"));
    EXPECT_THAT(Commands(), ElementsAre(0x8B));
}

TEST_F(Reassembling, OvershootingChunkIsDroppedWithTheNextOne) {
    const ByteView more = AsBytes("more");
    for (const std::size_t before : {0U, 2U}) {
        Chunk(Packet(0x9A, before + (before == 0 ? 5 : 0), 4));
        if (before != 0) Chunk(more);
        Chunk(more);
        Chunk(more);
        EXPECT_THAT(Commands(), ElementsAre());
        Chunk(Packet(0x9B, 4));
        EXPECT_THAT(Commands(), ElementsAre(0x9B));
    }
    Chunk(Packet(0x9A, 5, 4));
    Chunk(Packet(0x9B, 4));
    EXPECT_THAT(Commands(), ElementsAre(0x9B)) << "a packet's own beginning is never dropped";
}

TEST_F(Reassembling, JoinedPacketsAreLostTogether) {
    Bytes joined = Packet(0x9A, 4);
    const Bytes second = Packet(0x9B, 4);
    joined.insert(joined.end(), second.begin(), second.end());
    Chunk(joined);
    EXPECT_THAT(Commands(), ElementsAre());
}

TEST_F(Reassembling, BeginningOfAPacketInTheMiddleStartsOver) {
    Chunk(ByteView(Packet(0x9A, 100)).first(60));
    Chunk(Packet(0x9B, 4));
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload, Pattern(4));
    EXPECT_THAT(Commands(), ElementsAre(0x9B));
}

TEST_F(Reassembling, MagicWithoutACommandIsPayload) {
    Chunk(Packet(0x9A, 0, 5));
    Chunk(Hex("5A5A5AA5 00"));
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload, Hex("5A5A5AA5 00"));
}

TEST_F(Reassembling, ForeignBytesBetweenPacketsAreDropped) {
    for (const char* foreign : {"garbage that is longer than a header", "x", ""})
        Chunk(AsBytes(foreign));
    Chunk(Hex("5A5A5AA5 00 00 0000 0000 0000 00000000"));
    EXPECT_THAT(Commands(), ElementsAre());
    Chunk(Packet(0x9B, 4));
    EXPECT_THAT(Commands(), ElementsAre(0x9B));
}

TEST_F(Reassembling, EndsAndFailuresDiscardAndUnknownCodesDoNot) {
    for (const int code : {0, 1, 2, 3, 4, 6, 7, 8, 9, 255, 65535}) {
        const bool discards = code >= 1 && code <= 8;
        Chunk(Packet(0x9A, 0, 4));
        Event(code);
        Chunk(AsBytes("rest"));
        EXPECT_EQ(Commands().size(), discards ? 0U : 1U) << code;
    }
}

TEST_F(Reassembling, IsSharedByAllLinksAndTheLastChunkNamesTheSender) {
    Chunk(Packet(0x9A, 2, 4), "127.0.0.2");
    Chunk(AsBytes("yz"), "127.0.0.3");
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].sender.ip, "127.0.0.3");
}

TEST_F(Reassembling, AnnouncedLengthAllocatesNothing) {
    const auto inUse = [] {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    const std::size_t before = inUse();
    Chunk(Packet(0x9A, 8, 0xFFFFFFFF));
    Chunk(AsBytes("more"));
    EXPECT_LT(inUse(), before + (1U << 20));
    Chunk(Packet(0x9B, 4));
    EXPECT_THAT(Commands(), ElementsAre(0x9B));
}

TEST_F(Reassembling, PayloadBeyondTheLimitIsFollowedToItsEndAndNotDelivered) {
    const Bytes block(1U << 20, 'x');
    Chunk(Packet(0x9A, 0, 65U << 20));
    for (int i = 0; i < 65; ++i) Chunk(block);
    Chunk(AsBytes("foreign"));
    EXPECT_THAT(Commands(), ElementsAre());
    Chunk(Packet(0x9B, 4));
    EXPECT_THAT(Commands(), ElementsAre(0x9B));
}

TEST_F(Reassembling, HandlerMayLetOtherPacketsIn) {
    whileHandled = [this, nested = false]() mutable {
        if (std::exchange(nested, true)) return;
        Chunk(Packet(0x9B, 2, 4));
        Chunk(AsBytes("yz"));
        Chunk(ByteView(Packet(0x9C, 40)).first(30));
    };
    Chunk(Packet(0x9A, 100));
    EXPECT_EQ(received.back().payload, Pattern(100));
    EXPECT_THAT(Commands(), ElementsAre(0x9B, 0x9A));
    Chunk(Packet(0x9D, 4));
    EXPECT_THAT(Commands(), ElementsAre(0x9D));
}

}  // namespace
}  // namespace sontaro::test
