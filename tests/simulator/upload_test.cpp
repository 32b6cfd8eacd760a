#include <gmock/gmock.h>

#include "batchsend/upload_packets.h"
#include "simulator/simulated_player.h"
#include "simulator/upload_commands.h"
#include "support/link_surroundings.h"
#include "support/temporary_folder.h"
#include "videolist/video_list.h"

namespace sontaro::simulator {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kAnnounce = kCommandUpload, kChunk = 0x114, kLast = 0x214;

DevicePacket Announcement(const std::string& name, std::uint64_t size) {
    std::string payload(8, '\0');
    for (std::size_t i = 0; i < payload.size(); ++i) payload[i] = static_cast<char>(size >> 8 * i);
    return DevicePacket::Request(kAnnounce, 7U << 16, payload + name);
}

struct Upload : testing::Test {
    Upload() { state.videoFolder = folder / "player"; }
    Answer Ask(const DevicePacket& request) {
        if (const auto faulty = uploadFaults.AnswerTo(request, faults, state)) return *faulty;
        Answer answer = HandleRequest(state, request);
        uploadFaults.Spoil(request, faults, state, answer);
        return answer;
    }
    Answer Ask(std::uint32_t commandWord, std::uint32_t selectorWord,
               std::string_view payload = {}) {
        return Ask(DevicePacket::Request(commandWord, selectorWord, payload));
    }
    bool Announce(const std::string& name, std::uint64_t size) {
        return !Ask(Announcement(name, size)).silent;
    }
    bool Send(std::uint32_t commandWord, std::uint16_t number, std::string_view bytes,
              std::uint16_t code = 7) {
        return !Ask(commandWord, number | std::uint32_t{code} << 16, bytes).silent;
    }

    test::TemporaryFolder folder;
    PlayerState state = FactoryState();
    FaultScript faults;
    UploadFaults uploadFaults;
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

TEST_F(Upload, FillsTheDiskAllAtOnceForGood) {
    faults = *ParseFaultScript("disk-full=1");
    ASSERT_TRUE(Announce("a", 3) && Send(kLast, 1, "abc") && Announce("b", kVideoChunkSize));
    EXPECT_GT(FreeMebibytes(state), 0U);
    EXPECT_FALSE(Send(kChunk, 1, std::string(kVideoChunkSize, 'x')));
    EXPECT_EQ(FreeMebibytes(state), 0U);
    EXPECT_FALSE(Announce("c", 3) && Send(kLast, 1, "abc"));
    EXPECT_THAT(state.stored, ElementsAre(StoredVideo{7, "a", 3}));
}

TEST_F(Upload, StoresVideosShort) {
    faults = *ParseFaultScript("store-short");
    ASSERT_TRUE(Announce("a", 3) && Send(kLast, 1, "abc") && Announce("0", 0) &&
                Send(kLast, 1, ""));
    EXPECT_THAT(state.stored, ElementsAre(StoredVideo{7, "a", 2}, StoredVideo{7, "0", 0}));
    EXPECT_EQ(std::filesystem::file_size(folder / "player/7/a"), 2U);
}

/// A tool that sends videos over a link.
struct UploadLink : testing::Test {
    void Start(std::string_view script) {
        PlayerOptions options;
        options.address = network.Player(0);
        options.videoFolder = folder.Path();
        options.restartTime = 1ms;
        options.faults = *ParseFaultScript(script);
        player.emplace(options);
        ASSERT_TRUE(player->Start());
    }
    /// Whether a video of one chunk is acknowledged.
    bool Send(const std::string& name, const std::string& bytes = "abc") {
        constexpr std::size_t kBoth = 2 * kHeaderSize;
        tool = Socket::Tcp();
        if (!tool.Connect(player->Address(), 5s)) return false;
        tool.Send(Announcement(name, bytes.size()).Serialize());
        tool.Send(DevicePacket::Request(kLast, 1U | 7U << 16, bytes).Serialize());
        return test::ReceiveExactly(tool, kBoth).size() == kBoth;
    }

    test::TestNetwork network;
    test::TemporaryFolder folder;
    std::optional<SimulatedPlayer> player;
    Socket tool;
};

TEST_F(UploadLink, RestartsInTheMiddleOfAVideoOnce) {
    Start("restart-at=2");
    EXPECT_TRUE(Send("a"));
    EXPECT_FALSE(Send("b"));
    ASSERT_TRUE(player->WaitForConnectionCount(0, 5s));
    EXPECT_FALSE(player->State().incoming);
    EXPECT_THAT(player->State().stored, ElementsAre(StoredVideo{7, "a", 3}));
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (!Send("b")) ASSERT_LT(std::chrono::steady_clock::now(), deadline);
    EXPECT_THAT(player->State().stored,
                ElementsAre(StoredVideo{7, "a", 3}, StoredVideo{7, "b", 3}));
}

TEST_F(UploadLink, AcknowledgesLateAndReadsSlowly) {
    using Clock = std::chrono::steady_clock;
    for (const char* script : {"delay-ack=150ms", "slow=100000"}) {
        Start(script);
        const auto start = Clock::now();
        EXPECT_TRUE(Send("a", std::string(30'000, 'x')));
        EXPECT_GE(Clock::now() - start, 290ms) << script;
    }
}

}  // namespace
}  // namespace sontaro::simulator
