#include "exchange/reassembly.h"

#include <gmock/gmock.h>

#include "support/literals.h"
#include "support/platform.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct Reassembling : testing::Test {
    void Chunk(ByteView bytes, const std::string& ip = "127.0.0.2") {
        reassembly.Handle({ip, 9000, 5, LinkCode::kReceived, 0, bytes, 1});
    }
    static Bytes Packet(std::uint8_t command, std::size_t size, std::uint32_t announced) {
        DevicePacket packet = DevicePacket::Request(command, 0, AsText(Pattern(size)));
        packet.header.payloadLength = announced;
        return packet.Serialize();
    }
    /// A packet of 4 payload bytes, which is received whatever has come before.
    void ExpectSoundPacket() {
        Forget();
        Chunk(Packet(0xBF, 4, 4));
        EXPECT_THAT(commands, ElementsAre(0xBF));
        EXPECT_EQ(payload, Pattern(4));
        Forget();
    }
    void Forget() { commands.clear(), payload.clear(); }

    const Bytes more = ToBytes("more");
    std::vector<int> commands;  // of the packets received so far
    Bytes payload;              // of the last one
    Target sender;              // likewise
    std::function<void()> whileHandled = [] {};
    Reassembly reassembly{[this](const Reply& reply) {
        whileHandled();
        commands.push_back(reply.header.command);
        payload.assign(reply.payload.begin(), reply.payload.end());
        sender = reply.sender;
    }};
};

TEST_F(Reassembling, TakesAPacketCutAnywhereBehindItsHeaderAndLosesOthersAlone) {
    const Bytes packet = Packet(0x9A, 24, 24);
    const ByteView whole = packet;
    for (std::size_t first = 1; first < packet.size(); ++first)
        for (std::size_t second = first; second < packet.size(); ++second) {
            SCOPED_TRACE(testing::Message() << "cut at " << first << " and " << second);
            Chunk(whole.first(first));
            if (second > first) Chunk(whole.subspan(first, second - first));
            Chunk(whole.subspan(second));
            ASSERT_EQ(payload, first < kHeaderSize ? Bytes() : Pattern(24));
            ASSERT_EQ(commands.size(), first < kHeaderSize ? 0U : 1U);
            ExpectSoundPacket();
        }
}

TEST_F(Reassembling, TakesChunksAsTheyComeAndThenASoundPacket) {
    // clang-format off
    const std::tuple<const char*, std::vector<Bytes>, std::vector<int>> cases[] = {
        {"a chunk behind a piece of a header is one, unchecked",
         {Hex("5A5A5AA5 9A 00"), Hex("00 11"), Hex("01020304 8B 00 0000 0000 0000 02000000 AABB")}, {0x8B}},
        {"one too many with the header", {Packet(0x9A, 5, 4), more, more}, {}},
        {"two too many later", {Packet(0x9A, 2, 4), more, more, more}, {}},
        {"the start of a packet is never what follows too many", {Packet(0x9A, 5, 4)}, {}},
        {"a packet starts over in the middle", {Packet(0x9A, 50, 100)}, {}},
        {"but not with command 0", {Packet(0x9A, 0, 5), Hex("5A5A5AA5 00")}, {0x9A}},
        {"foreign bytes", {ToBytes("longer than a header of 16 bytes"), ToBytes("x"), {}}, {}},
        {"a foreign header", {Hex("5A5A5AA5 00 00 0000 0000 0000 00000000")}, {}}};
    // clang-format on
    for (const auto& [name, chunks, received] : cases) {
        SCOPED_TRACE(name);
        for (const Bytes& chunk : chunks) Chunk(chunk);
        EXPECT_EQ(commands, received);
        ExpectSoundPacket();
    }
}

TEST_F(Reassembling, EndsAndFailuresDiscardAndUnknownCodesDoNot) {
    for (const int code : {0, 1, 2, 3, 4, 6, 7, 8, 9, 255, 65535}) {
        Forget();
        Chunk(Packet(0x9A, 0, 4));
        reassembly.Handle({"127.0.0.2", 9000, 5, static_cast<LinkCode>(code), 0, {}, 1});
        Chunk(AsBytes("rest"));
        EXPECT_EQ(commands.empty(), code >= 1 && code <= 8) << code;
    }
}

TEST_F(Reassembling, IsSharedByAllLinksAndTheLastChunkNamesTheSender) {
    Chunk(Packet(0x9A, 2, 4), "127.0.0.2");
    Chunk(AsBytes("yz"), "127.0.0.3");
    EXPECT_EQ(sender, (Target{"127.0.0.3", 9000, 5}));
    Chunk(Packet(0x9B, 0, 0), "127.0.0.7");  // complete without a payload
    EXPECT_EQ(sender.ip, "127.0.0.7");
}

TEST_F(Reassembling, AnnouncedLengthAllocatesNothingAndBeyondTheLimitNothingIsDelivered) {
    const std::size_t before = BytesInUse();
    Chunk(Packet(0x9A, 8, 0xFFFFFFFF));
    Chunk(more);
    EXPECT_LT(BytesInUse(), before + (1U << 20));
    Chunk(Packet(0x9A, 0, 65U << 20));
    for (int i = 0; i < 65; ++i) Chunk(Bytes(1U << 20, 'x'));
    Chunk(AsBytes("foreign"));
    EXPECT_THAT(commands, ElementsAre());
    ExpectSoundPacket();
}

TEST_F(Reassembling, WhileAPacketIsHandledAPieceThatStartsNoneIsDropped) {
    for (const std::uint32_t size : {0U, 4U}) {  // without a payload it would be handled again
        Forget();
        whileHandled = [this, nested = false]() mutable {
            if (std::exchange(nested, true)) return;
            for (const char* piece : {"x", "foreign bytes as long as a header"})
                Chunk(AsBytes(piece), "127.0.0.3");
            EXPECT_THAT(commands, ElementsAre());
        };
        Chunk(Packet(0x9A, size, size));
        EXPECT_THAT(commands, ElementsAre(0x9A));
        EXPECT_EQ(sender.ip, "127.0.0.2");
        ExpectSoundPacket();
    }
}

TEST_F(Reassembling, HandlerMayLetOtherPacketsIn) {
    whileHandled = [this, nested = false]() mutable {
        if (std::exchange(nested, true)) return;
        Chunk(Packet(0x9B, 2, 4));
        Chunk(AsBytes("yz"));
        Chunk(Packet(0x9C, 30, 40));
    };
    Chunk(Packet(0x9A, 100, 100));
    EXPECT_THAT(commands, ElementsAre(0x9B, 0x9A));
    EXPECT_EQ(payload, Pattern(100));
    ExpectSoundPacket();
}

}  // namespace
}  // namespace sontaro::test
