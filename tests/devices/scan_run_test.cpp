#include "devices/scan_run.h"

#include <gmock/gmock.h>

#include "link/discovery.h"
#include "simulator/player_group.h"
#include "support/link_surroundings.h"
#include "support/literals.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct Scan : testing::Test, ScanActions {
    bool SendRequest() override { return ++requests, network; }
    void StartTimer() override { timer = true; }
    void StopTimer() override { timer = false; }
    void Refresh() override {}

    void Reply(std::uint8_t lastOctet, const std::string& id = "") {
        simulator::PlayerIdentity identity;
        identity.id = id;
        scan.Receive(simulator::DiscoveryReply(identity, {{{10, 0, 0, lastOctet}}, 9000}));
    }
    std::string Ids() const {
        std::string ids;
        for (const DeviceRecord& device : scan.Devices())
            ids += device.id + (device.ticked ? "* " : " ");
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
    const LocalText texts[] = {{"停止查找", "Stop"},       {"停止查找(4)", "Stop(4)"},
                               {"停止查找(3)", "Stop(3)"}, {"停止查找(2)", "Stop(2)"},
                               {"停止查找(1)", "Stop(1)"}, {"查找设备", "Scan"}};
    scan.PressScan();
    for (int tick = 0; tick <= 5; ++tick) {
        for (const Language language : {Language::kChinese, Language::kEnglish}) {
            const InLanguage spoken(language);
            EXPECT_EQ(scan.ButtonText(), Localized(texts[tick]));
        }
        EXPECT_EQ(requests, std::min(tick, 4));
        EXPECT_EQ(timer, tick < 5);
        if (tick < 5) scan.Tick();
    }
}

TEST_F(Scan, OpeningClearsTheListAndAsksOnce) {
    Reply(2, "a");
    scan.Opened();
    EXPECT_TRUE(timer);
    scan.Tick();
    EXPECT_EQ(requests, 1);
    EXPECT_FALSE(timer);
    EXPECT_EQ(Ids(), "");
}

TEST_F(Scan, IsStoppedByItsButtonAndByALostNetwork) {
    scan.PressScan();
    scan.Tick();
    scan.PressScan();
    EXPECT_FALSE(scan.IsScanning() || timer);
    network = false;
    scan.PressScan();
    EXPECT_TRUE(scan.IsScanning() && timer);
    scan.Tick();
    EXPECT_FALSE(scan.IsScanning() || timer);
}

TEST_F(Scan, ListsEachPlayerOnceAndUpdatesItInPlace) {
    Reply(10, "ten");
    Reply(9, "nine");
    Reply(10, "TEN");
    scan.Receive(AsBytes("no reply"));
    EXPECT_EQ(Ids(), "nine TEN ");
    scan.SortBy(DeviceColumn::kId, false);
    Reply(1, "zero");
    EXPECT_EQ(Ids(), "zero nine TEN ");
}

TEST_F(Scan, KeepsTicksOfPlayersThatAnswerAgain) {
    Reply(1, "a");
    Reply(2, "b");
    scan.SetTicked(1, true);
    Reply(2, "b");
    EXPECT_EQ(Ids(), "a b* ");
    scan.PressScan();
    EXPECT_EQ(Ids(), "");
    Reply(2, "b");
    Reply(1, "a");
    EXPECT_EQ(Ids(), "a b* ");
    scan.SetTicked(1, false);
    for (int press = 0; press < 2; ++press) scan.PressScan();
    Reply(2, "b");
    EXPECT_EQ(Ids(), "b ");
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
    const FakeWindow window(surroundings.directory, "scan",
                            [this](auto& m) { scan.Receive(std::get<UdpEvent>(m.record).bytes); });
    CUDPServer socket("scan", surroundings.Services());
    ASSERT_TRUE(socket.Open(FormatIpv4(surroundings.network.Local())));
    ASSERT_TRUE(SendDiscovery(socket, kBroadcastAddress));
    EXPECT_TRUE(surroundings.ui.PumpUntil([this] { return scan.Devices().size() == 3; }));
    EXPECT_EQ(Ids(), "SIMPLAYER1 SIMPLAYER2 SIMPLAYER3 ");
    EXPECT_EQ(scan.Devices()[2].ip, FormatIpv4(surroundings.network.Player(2)));
    EXPECT_EQ(scan.Devices()[2].tcpPort, players.Player(2).Address().port);
}

}  // namespace
}  // namespace sontaro::test
