#include <gmock/gmock.h>

#include "batchsend/upload_packets.h"
#include "simulator/player_commands.h"
#include "simulator/upload_commands.h"
#include "support/temporary_folder.h"
#include "videolist/video_list.h"

namespace sontaro::simulator {
namespace {

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
    ASSERT_TRUE(Announce("晚风.mp4", 3) && Send(kLast, 1, "abc"));
    state = *ReadState(WriteState(state));
    EXPECT_EQ(FreeMebibytes(state), free - 1);
    Ask(kCommandSettings, 1, R"({"VideoType": [{},{},{},{},{},{},{},{"TypeName": "上传的"}]})");
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
    EXPECT_THAT(state.stored, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder / "player/7"));
}

}  // namespace
}  // namespace sontaro::simulator
