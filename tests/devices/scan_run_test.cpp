#include "devices/scan_run.h"

#include <gmock/gmock.h>

#include "link/discovery.h"
#include "simulator/player_group.h"
#include "support/fake_window.h"
#include "support/link_surroundings.h"
#include "support/literals.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct Scan : testing::Test, ScanActions {
    bool SendRequest() override {
        ++requests;
        return network;
    }
    void StartTimer() override { timer = true; }
    void StopTimer() override { timer = false; }
    void Refresh() override {}

    void Tick(int count = 1) {
        for (int i = 0; i < count; ++i) scan.Tick();
    }
    void Reply(std::uint8_t lastOctet, const std::string& id = "") {
        const simulator::PlayerIdentity identity{.id = id, .idSuffix = {}, .mac = {}};
        scan.Receive(simulator::DiscoveryReply(identity, {{{10, 0, 0, lastOctet}}, 9000}));
    }
    std::vector<std::string> Ids() const {
        std::vector<std::string> ids;
        for (const DeviceRecord& device : scan.Devices())
            ids.push_back(device.id + (device.ticked ? "*" : ""));
        return ids;
    }

    TemporaryFolder folder;
    DeviceRemarks remarks{folder / "remarks.json"};
    ScanRun scan{*this, remarks};
    int requests = 0;
    bool timer = false;
    bool network = true;
};

TEST_F(Scan, AsksAtTicksOneToFourAndStopsAtFive) {
    scan.PressScan();
    EXPECT_EQ(scan.ButtonText(), "Stop");
    for (int tick = 1; tick <= 4; ++tick) {
        Tick();
        EXPECT_EQ(requests, tick);
        EXPECT_EQ(scan.ButtonText(), "Stop(" + std::to_string(5 - tick) + ")");
    }
    const std::string chinese = [&] {
        const InLanguage language(Language::kChinese);
        return scan.ButtonText();
    }();
    EXPECT_EQ(chinese, "停止查找(1)");
    Tick();
    EXPECT_EQ(requests, 4);
    EXPECT_FALSE(scan.IsScanning());
    EXPECT_FALSE(timer);
    EXPECT_EQ(scan.ButtonText(), "Scan");
}

TEST_F(Scan, OpeningClearsTheListAndAsksOnce) {
    Reply(2);
    scan.Opened();
    EXPECT_TRUE(timer);
    Tick();
    EXPECT_EQ(requests, 1);
    EXPECT_FALSE(timer);
    EXPECT_THAT(Ids(), ElementsAre());
}

TEST_F(Scan, IsStoppedByItsButtonAndByALostNetwork) {
    scan.PressScan();
    Tick(2);
    scan.PressScan();
    EXPECT_FALSE(scan.IsScanning() || timer);
    network = false;
    scan.PressScan();
    EXPECT_TRUE(timer);
    Tick();
    EXPECT_FALSE(scan.IsScanning() || timer);
}

TEST_F(Scan, ListsEachPlayerOnceAndUpdatesItInPlace) {
    Reply(10, "ten");
    Reply(9, "nine");
    Reply(10, "TEN");
    EXPECT_THAT(Ids(), ElementsAre("nine", "TEN"));
    scan.Receive(AsBytes("no reply"));
    scan.SortBy(DeviceColumn::kId, false);
    Reply(1, "zero");
    EXPECT_THAT(Ids(), ElementsAre("zero", "nine", "TEN"));
}

TEST_F(Scan, KeepsTicksOfPlayersThatAnswerAgain) {
    Reply(1, "a");
    Reply(2, "b");
    scan.SetTicked(1, true);
    Reply(2, "b");
    EXPECT_THAT(Ids(), ElementsAre("a", "b*"));
    scan.PressScan();
    EXPECT_THAT(Ids(), ElementsAre());
    Reply(2, "b");
    Reply(1, "a");
    EXPECT_THAT(Ids(), ElementsAre("a", "b*"));
    scan.SetTicked(1, false);
    scan.PressScan();
    scan.PressScan();
    Reply(2, "b");
    EXPECT_THAT(Ids(), ElementsAre("b"));
}

TEST_F(Scan, ShowsRemarksAtOnceAndAtEveryLaterReply) {
    Reply(2);
    ASSERT_TRUE(remarks.SetRemarks(scan.Devices()[0].mac, "left wall"));
    scan.RemarksChanged();
    EXPECT_EQ(scan.Devices()[0].remarks, "left wall");
    scan.PressScan();
    Reply(2);
    EXPECT_EQ(scan.Devices()[0].remarks, "left wall");
}

TEST_F(Scan, FindsSimulatedPlayersByBroadcast) {
    LinkSurroundings surroundings;
    simulator::LineUpOptions options;
    options.count = 3;
    options.baseAddress = surroundings.network.Player(0);
    simulator::PlayerGroup players(*simulator::LineUp(options));
    ASSERT_TRUE(players.Start());
    const FakeWindow window(surroundings.directory, "scan", [this](WindowMessage& message) {
        scan.Receive(std::get<UdpEvent>(message.record).bytes);
    });
    CUDPServer socket("scan", surroundings.Services());
    ASSERT_TRUE(socket.Open(FormatIpv4(surroundings.network.Local())));
    ASSERT_TRUE(SendDiscovery(socket, kBroadcastAddress));
    EXPECT_TRUE(surroundings.ui.PumpUntil([this] { return scan.Devices().size() == 3; }));
    EXPECT_THAT(Ids(), ElementsAre("SIMPLAYER1", "SIMPLAYER2", "SIMPLAYER3"));
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(scan.Devices()[i].ip, FormatIpv4(surroundings.network.Player(i)));
        EXPECT_EQ(scan.Devices()[i].tcpPort, players.Player(i).Address().port);
    }
}

}  // namespace
}  // namespace sontaro::test
