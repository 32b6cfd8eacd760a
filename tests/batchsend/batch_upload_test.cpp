// A run over real links to simulated players, with videos on a disk.
#include <gmock/gmock.h>

#include "base/file.h"
#include "base/window_titles.h"
#include "batchsend/batch_run.h"
#include "batchsend/chunk_reader.h"
#include "batchsend/journal_writer.h"
#include "exchange/plain_loop.h"
#include "exchange/switchboard.h"
#include "simulator/player_group.h"
#include "support/literals.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"
#include "support/test_network.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

constexpr const char* kMainWindow = "Upload";

/// Two players that keep what they are sent, and three videos.
struct BatchUpload : testing::Test, BatchView {
    BatchUpload() {
        for (const std::size_t size : {0UL, 8'192'000UL, 9'000'000UL}) {
            const std::string name = "视频" + std::to_string(videos.size()) + ".mp4";
            const Bytes bytes = Pattern(size);
            const auto path = folder.Write(name, std::string(AsText(bytes)));
            videos.push_back({path, name, 7});
        }
        EXPECT_TRUE(players.Start());
    }
    ~BatchUpload() override { directory.ShutDown(); }
    void RowChanged(std::size_t) override {}
    void StateChanged() override {}
    void Heard(const UploadEvent& event) override {
        if (journal) journal->Add(event);
    }
    void Pause(std::chrono::milliseconds) override {}

    static simulator::PlayerOptions PlayerAt(const Ipv4Address& address,
                                             const std::filesystem::path& store) {
        simulator::PlayerOptions options;
        options.address = address;
        options.videoFolder = store / FormatIpv4(address);
        return options;
    }
    [[nodiscard]] std::vector<UploadPlayer> AllToAll() {
        std::vector<UploadPlayer> all;
        for (std::size_t i = 0; i < 2; ++i) {
            const Endpoint at = players.Player(i).Address();
            all.push_back({{FormatIpv4(at.address), at.port, 0}, videos});
        }
        return all;
    }
    void Send(std::vector<UploadPlayer> what) {
        journal.emplace(folder / "runs", what, std::chrono::system_clock::now);
        run.SetPlayers(std::move(what));
        run.Start();
        EXPECT_TRUE(loop.RunUntil([&] { return !run.IsRunning(); }, 30s));
    }
    void ExpectWhole(std::size_t player) {
        const Ipv4Address address = players.Player(player).Address().address;
        for (const UploadVideo& video : videos)
            EXPECT_TRUE(*ReadFile(folder / "store" / FormatIpv4(address) / "7" /
                                  PathOfText(video.name)) == *ReadFile(video.path))
                << video.name;
        EXPECT_THAT(players.Player(player).State().uploadTroubles, IsEmpty());
    }

    PlainLoop loop;
    WindowDirectory directory{loop};
    RecordingPrompts prompts;
    ThreadGroup threads;
    TestNetwork network;
    TemporaryFolder folder;
    std::vector<UploadVideo> videos;
    simulator::PlayerGroup players{{PlayerAt(network.Player(0), folder / "store"),
                                    PlayerAt(network.Player(1), folder / "store")}};
    ExchangeHub hub;
    Switchboard switchboard{kMainWindow, {directory, threads, prompts}, hub};
    WindowDirectory::Registration mainWindow =
        directory.Register(kMainWindow, [this](auto& message) { switchboard.Handle(message); });
    MainWindowChannel channel{directory, kMainWindow};
    ExchangeServices exchange{channel, hub, loop};
    ChunkReader source{loop, threads};
    std::optional<JournalWriter> journal;
    BatchRun run{source, *this, exchange, folder / "none.json"};
    WindowDirectory::Registration page = directory.Register(
        TitleOf(Window::kBatchSend), [this](auto& message) { run.Handle(message); });
};

TEST_F(BatchUpload, BringsEveryByteToEveryPlayer) {
    Send(AllToAll());
    for (const std::size_t player : {0U, 1U}) {
        EXPECT_EQ(StatusText(run.Rows()[player]), "OK");
        ExpectWhole(player);
    }
    EXPECT_THAT(FailedIn(*LastJournal(folder / "runs")), IsEmpty());
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

TEST_F(BatchUpload, SendsAgainExactlyWhatFailed) {
    players.Player(0).SetFaults(*simulator::ParseFaultScript("lose-chunk=2"));
    Send(AllToAll());
    EXPECT_EQ(StatusText(run.Rows()[0]), "net failure");
    EXPECT_EQ(StatusText(run.Rows()[1]), "OK");
    players.Player(0).SetFaults({});
    const auto failed = FailedIn(*LastJournal(folder / "runs"));
    ASSERT_EQ(failed.size(), 1U);
    EXPECT_THAT(failed[0].videos, testing::ElementsAre(videos[2]));
    Send(failed);
    ExpectWhole(0), ExpectWhole(1);
}

TEST_F(BatchUpload, GoesOnAfterAPlayerThatDoesNotSupportIt) {
    players.Player(0).SetFaults(*simulator::ParseFaultScript("not-supported"));
    Send(AllToAll());
    EXPECT_EQ(StatusText(run.Rows()[0]), "net failure");
    EXPECT_EQ(run.Rows()[0].note.kind, UploadNote::Kind::kNotSupported);
    ExpectWhole(1);
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

}  // namespace
}  // namespace sontaro::test
