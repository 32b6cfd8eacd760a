#include "session/session_links.h"

#include <gmock/gmock.h>

#include "batchsend/batch_run.h"
#include "batchsend/fake_source.h"
#include "exchange/player_requests.h"
#include "simulator/player_group.h"
#include "support/test_network.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// Links to two players, and a procedure that was written for those of the main window.
struct Links : testing::Test, BatchView {
    Links() {
        simulator::LineUpOptions options;
        options.count = 2;
        options.baseAddress = network.Player(0);
        players.emplace(*simulator::LineUp(options));
        EXPECT_TRUE(players->Start());
        source.sizes = {{"video", kVideoChunkSize + 5}};
        links.CloseOnNotSupported();
    }
    [[nodiscard]] Target TargetAt(std::size_t player) {
        const Endpoint address = players->Player(player).Address();
        return {FormatIpv4(address.address), address.port, 0};
    }
    /// How a video has come to each player.
    std::vector<UploadStatus> Upload() {
        run.SetPlayers(
            {{TargetAt(0), {{"video", "video", 3}}}, {TargetAt(1), {{"video", "video", 3}}}});
        run.Start();
        EXPECT_TRUE(loop.RunUntil([&] { return !run.IsRunning(); }, 25s));
        return {run.Rows()[0].status, run.Rows()[1].status};
    }
    void RowChanged(std::size_t) override {}
    void StateChanged() override {}
    void Heard(const UploadEvent&) override {}
    void Pause(std::chrono::milliseconds) override {}

    TestNetwork network;
    std::optional<simulator::PlayerGroup> players;
    FakeSource source;
    PlainLoop loop;
    ExchangeHub hub;
    SessionLinks links{loop, hub, [this](WindowMessage& message) { run.Handle(message); }};
    BatchRun run{source, *this, {links, hub, loop}, "none.json"};
};

TEST_F(Links, AnUploadGoesOverThemToOnePlayerAfterAnother) {
    EXPECT_THAT(Upload(), ElementsAre(UploadStatus::kDone, UploadStatus::kDone));
    EXPECT_THAT(players->Player(1).State().uploadTroubles, IsEmpty());
    EXPECT_TRUE(players->Player(0).WaitForConnectionCount(0, 5s));
}

TEST_F(Links, WhatIsNotSupportedOrBreaksEndsAPlayersTurnAtOnce) {
    players->Player(0).SetFaults(*simulator::ParseFaultScript("not-supported"));
    players->Player(1).SetFaults(*simulator::ParseFaultScript("lose-chunk=1"));
    EXPECT_THAT(Upload(),
                ElementsAre(UploadStatus::kNetworkFailure, UploadStatus::kNetworkFailure));
}

TEST_F(Links, WhatIsQueuedGoesOutBeforeTheyAreAllClosed) {
    const SharedPacket packet =
        ReadyPacket(kCommandSettings, kBlockCave, std::string(1U << 20, ' '));
    const Sending first = links.Send(TargetAt(0), packet, Boxes::kMuted);
    ASSERT_TRUE(first);
    links.Send({}, std::make_shared<const Bytes>(), Boxes::kMuted);
    const auto isPacket = [&](const DevicePacket& request) {
        return request.payload.size() == packet->size() - kHeaderSize;
    };
    EXPECT_TRUE(players->Player(0).WaitForPacket(isPacket, 10s));
    const Sending next = links.Send(TargetAt(0), packet, Boxes::kMuted);
    EXPECT_GT(next.Connection(), first.Connection());
}

}  // namespace
}  // namespace sontaro::test
