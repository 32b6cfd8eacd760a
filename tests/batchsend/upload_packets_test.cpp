#include "batchsend/upload_packets.h"

#include <gmock/gmock.h>

#include "support/fake_player_channel.h"

namespace sontaro::test {
namespace {

TEST(UploadPackets, HaveTheirBytes) {
    EXPECT_EQ(*VideoAnnouncement("a\xE9\xA3\x8E.mp4", 0x0123456789, 0x0203),
              Hex("5A5A5AA5 14 00 0000 0000 0302 10000000 8967452301000000 61 E9A38E 2E6D7034"));
    const auto buffer = std::make_shared<Bytes>(kHeaderSize + 2, 0xAA);
    EXPECT_EQ(*VideoChunk(buffer, 0x0102, 7, UploadStep::kChunk),
              Hex("5A5A5AA5 14 01 0000 0201 0700 02000000 AAAA"));
    EXPECT_EQ(*VideoChunk(buffer, 0xFFFF, 7, UploadStep::kLastChunk),
              Hex("5A5A5AA5 14 02 0000 FFFF 0700 02000000 AAAA"));
    EXPECT_EQ(*VideoTypePacket("{}"), Hex("5A5A5AA5 03 00 0000 0100 0000 02000000 7B7D"));
    EXPECT_EQ(*AskPlayerMode().packet, Hex("5A5A5AA5 24 00 0000 0000 0000 00000000"));
}

struct UploadAnswers : testing::Test, ExchangeBench {
    [[nodiscard]] WindowMessage Data(std::uint16_t part, std::size_t size = kPlayerDataSize) const {
        std::string data(size, '\xEE');
        data.replace(4, 4, {'\x01', '\x00', '\x30', '\x00'});
        return Message(MessageId::kPlayerState, kCommandPlayerData, std::uint32_t{part} << 16,
                       data);
    }
};

TEST_F(UploadAnswers, TellTheFreeSpaceInMebibytes) {
    EXPECT_EQ(FreeSpaceIn(Data(1), 1), 0x300001ULL << 20);
    EXPECT_EQ(FreeSpaceIn(Data(0), 1), std::nullopt);
    EXPECT_EQ(FreeSpaceIn(Data(1, kPlayerDataSize - 1), 1), std::nullopt);
    WindowMessage list = Data(1);
    list.origin.header.command = kCommandPlayerState;
    EXPECT_EQ(FreeSpaceIn(list, 1), std::nullopt);
}

TEST_F(UploadAnswers, TellTheModeAndWhetherTheCategoriesAreKept) {
    WindowMessage mode = Message(MessageId::kDeviceModes, kCommandDeviceModes, 0);
    EXPECT_EQ(ModeIn(mode), std::nullopt);
    mode.record = std::make_unique<DeviceModes>(DeviceModes{2});
    EXPECT_EQ(ModeIn(mode), PlayerMode::kSlave);
    const auto judge = [&](std::uint32_t argument, std::string_view text) {
        const std::uint32_t selector = kBlockControlProtocol | argument << 16;
        return JudgeVideoTypes(
                   Message(MessageId::kControlProtocol, kCommandSettings, selector, text))
            .kind;
    };
    EXPECT_EQ(judge(1, ""), Verdict::Kind::kReply);
    EXPECT_EQ(judge(1, "{}"), Verdict::Kind::kNotMine);
    EXPECT_EQ(judge(2, ""), Verdict::Kind::kRefused);
}

}  // namespace
}  // namespace sontaro::test
