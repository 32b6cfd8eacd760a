// A run over real links to simulated players, with videos on a disk.
#include <gmock/gmock.h>

#include "base/file.h"
#include "batchsend/uploader.h"
#include "simulator/player_group.h"
#include "support/literals.h"
#include "support/temporary_folder.h"
#include "support/test_network.h"

namespace sontaro::test {
namespace {

using testing::IsEmpty;

/// Two players that keep what they are sent, and three videos.
struct BatchUpload : testing::Test {
    BatchUpload() {
        for (const std::size_t size : {0UL, 8'192'000UL, 17'000'000UL}) {
            const std::string name = "视频" + std::to_string(videos.size()) + ".mp4";
            const auto path = folder.Write(name, std::string(AsText(Pattern(size))));
            videos.push_back({path, name, 7});
        }
        EXPECT_TRUE(players.Start());
    }

    void SetUp() override {
        if (kOnWindows) GTEST_SKIP() << "Wine has no room for a chunk, and gives it up after 5 ms";
    }
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
    [[nodiscard]] std::vector<UploadPlayer> Failed() const {
        return FailedIn(*LatestJournalIn(folder / "runs").journal);
    }
    void ExpectWhole(std::size_t player) {
        const Ipv4Address address = players.Player(player).Address().address;
        for (const UploadVideo& video : videos)
            EXPECT_TRUE(*ReadFile(folder / "store" / FormatIpv4(address) / "7" /
                                  PathOfText(video.name)) == *ReadFile(video.path))
                << video.name;
        EXPECT_THAT(players.Player(player).State().uploadTroubles, IsEmpty());
    }

    TestNetwork network;
    TemporaryFolder folder;
    std::vector<UploadVideo> videos;
    simulator::PlayerGroup players{{PlayerAt(network.Player(0), folder / "store"),
                                    PlayerAt(network.Player(1), folder / "store")}};
    Uploader uploader{folder / "runs"};
};

TEST_F(BatchUpload, BringsEveryByteAndSendsAgainExactlyWhatFailed) {
    players.Player(0).SetFaults(*simulator::ParseFaultScript("not-supported"));
    EXPECT_TRUE(uploader.Send(AllToAll()));
    EXPECT_EQ(StatusText(uploader.run.Rows()[0]), "net failure");
    EXPECT_EQ(uploader.run.Rows()[0].note.kind, UploadNote::Kind::kNotSupported);
    EXPECT_EQ(StatusText(uploader.run.Rows()[1]), "OK");
    EXPECT_THAT(uploader.prompts.boxes, IsEmpty());
    players.Player(0).SetFaults(*simulator::ParseFaultScript("lose-chunk=2"));
    EXPECT_TRUE(uploader.Send(AllToAll()));
    EXPECT_EQ(StatusText(uploader.run.Rows()[0]), "net failure");
    players.Player(0).SetFaults({});
    const auto failed = Failed();
    ASSERT_EQ(failed.size(), 1U);
    EXPECT_THAT(failed[0].videos, testing::ElementsAre(videos[2]));
    EXPECT_TRUE(uploader.Send(failed));
    ExpectWhole(0), ExpectWhole(1);
    EXPECT_THAT(Failed(), IsEmpty());
}

}  // namespace
}  // namespace sontaro::test
