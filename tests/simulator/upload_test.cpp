#include <gmock/gmock.h>

#include "batchsend/upload_packets.h"
#include "batchsend/video_types.h"
#include "simulator/player_commands.h"
#include "simulator/upload_commands.h"
#include "support/literals.h"
#include "support/temporary_folder.h"
#include "videolist/video_list.h"

namespace sontaro::simulator {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::uint32_t kAnnounce = kCommandUpload, kChunk = 0x114, kLast = 0x214;

struct Upload : testing::Test {
    Upload() { state.videoFolder = folder / "player"; }
    Answer Ask(std::uint32_t commandWord, std::uint32_t selectorWord,
               std::string_view payload = {}) {
        return HandleRequest(state, DevicePacket::Request(commandWord, selectorWord, payload));
    }
    bool Announce(const std::string& name, std::uint8_t size) {
        std::string payload(8, '\0');
        payload[0] = static_cast<char>(size);
        return !Ask(kAnnounce, 7U << 16, payload + name).silent;
    }
    bool Send(std::uint32_t commandWord, std::uint16_t number, std::string_view bytes,
              std::uint16_t code = 7) {
        return !Ask(commandWord, number | std::uint32_t{code} << 16, bytes).silent;
    }

    test::TemporaryFolder folder;
    PlayerState state = FactoryState();
};

TEST_F(Upload, KeepsVideosThatComeWholeAndListsThem) {
    const std::uint32_t free = FreeMebibytes(state);
    ASSERT_TRUE(Announce("晚风.mp4", 3));
    const Answer acknowledged = Ask(kLast, 0x70001, "abc");
    EXPECT_EQ(acknowledged.reply.Serialize(), test::Hex("5A5A5AA5 94 02 0000 0000 0700 00000000"));
    EXPECT_EQ(folder.Read("player/7/晚风.mp4"), "abc");
    state = *ReadState(WriteState(state));
    EXPECT_THAT(state.stored, ElementsAre(StoredVideo{7, "晚风.mp4", 3}));
    EXPECT_EQ(FreeMebibytes(state), free - 1);
    ASSERT_FALSE(
        Ask(kCommandSettings, 1, R"({"VideoType": [{},{},{},{},{},{},{},{"TypeName": "上传的"}]})")
            .silent);
    EXPECT_EQ(ReadCategoryNames(state.controlProtocol)->at(7), "上传的");
    const auto list = ReadVideoList(AsText(Ask(kCommandPlayerState, 0).reply.payload));
    EXPECT_EQ(list->screens[0].back(), (ListedCategory{"上传的", {{"晚风.mp4", 3}}}));
}

TEST_F(Upload, SaysWhatIsWrong) {
    EXPECT_FALSE(Send(kLast, 1, "abc"));
    EXPECT_FALSE(Announce("../x", 3) || Announce("", 3));
    const auto wrong = [&](std::uint32_t word, std::uint16_t number, std::string_view bytes,
                           std::uint16_t code = 7) {
        return Announce("a", 3) && !Send(word, number, bytes, code) && !Send(kLast, 1, "abc");
    };
    EXPECT_TRUE(wrong(kLast, 2, "abc"));
    EXPECT_TRUE(wrong(kLast, 1, "ab"));
    EXPECT_TRUE(wrong(kLast, 1, "abcd"));
    EXPECT_TRUE(wrong(kChunk, 1, "abc"));
    EXPECT_TRUE(wrong(kLast, 1, "abc", 8));
    EXPECT_EQ(state.uploadTroubles.size(), 13U);
    EXPECT_THAT(state.uploadTroubles[5], HasSubstr("2 bytes where 3"));
    EXPECT_THAT(state.stored, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder / "player/7"));
}

}  // namespace
}  // namespace sontaro::simulator
