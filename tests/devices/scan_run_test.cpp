#include "devices/scan_run.h"

#include <gtest/gtest.h>

#include "simulator/discovery_reply.h"
#include "support/literals.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

struct Scan : testing::Test, ScanActions {
    bool SendRequest() override { return ++requests, sendable; }
    void StartTimer() override { timer = true; }
    void StopTimer() override { timer = false; }
    void DevicesChanged() override {}

    void Reply(std::uint8_t lastOctet, const std::string& id, std::uint8_t mac = 0) {
        simulator::PlayerIdentity identity;
        identity.id = id;
        if (mac != 0) identity.mac = {2, 0, 0, 0, 0, mac};
        scan.Receive(simulator::DiscoveryReply(identity, {{{10, 0, 0, lastOctet}}, 9000}));
    }
    std::string Ids() const {
        std::string ids;
        for (const DeviceRecord& device : scan.Devices())
            ids += device.id + (device.ticked ? "*" : "") + (device.sharesAddress ? "! " : " ");
        return ids;
    }

    TemporaryFolder folder;
    DeviceRemarks remarks{folder / "remarks.json"};
    ScanRun scan{*this, remarks};
    int requests = 0;
    bool timer = false;
    bool sendable = true;
};

TEST_F(Scan, AsksAtTicksOneToFourAndStopsAtFive) {
    const char* const rest[] = {"", "(4)", "(3)", "(2)", "(1)"};
    scan.PressScan();
    for (int tick = 0; tick < 5; ++tick, scan.Tick()) {
        EXPECT_EQ(scan.ButtonText(), std::string("Stop") + rest[tick]);
        const InLanguage chinese(Language::kChinese);
        EXPECT_EQ(scan.ButtonText(), std::string("停止查找") + rest[tick]);
        EXPECT_EQ(requests, tick);
        EXPECT_TRUE(timer);
    }
    EXPECT_EQ(scan.ButtonText(), "Scan");
    EXPECT_EQ(requests, 4);
    EXPECT_FALSE(timer);
}

TEST_F(Scan, OpeningClearsTheListAndAsksOnce) {
    scan.Opened();
    EXPECT_TRUE(timer);
    Reply(2, "early");
    scan.Tick();
    EXPECT_EQ(Ids(), "");
    scan.Tick();
    EXPECT_TRUE(requests == 1 && !timer);
}

TEST_F(Scan, IsStoppedByItsButtonAndByALostNetwork) {
    scan.PressScan();
    scan.Tick();
    scan.PressScan();
    EXPECT_FALSE(scan.IsScanning() || timer);
    sendable = false;
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

TEST_F(Scan, GivesTheRowOfAnAddressToThePlayerThatHasTakenItsPlace) {
    scan.Opened();
    scan.Tick();
    Reply(5, "old", 1);
    scan.ChooseOnly(0);
    scan.Tick();
    Reply(5, "new", 2);
    EXPECT_EQ(Ids(), "new ");
    scan.Tick();
    Reply(5, "old", 1);  // is back where it was chosen
    EXPECT_EQ(Ids(), "old* ");
}

TEST_F(Scan, MarksPlayersThatAnswerAtOneAddressToTheSameRequest) {
    scan.PressScan();
    for (int request = 0; request < 3; ++request) {
        scan.Tick();
        Reply(4, "alone");
        Reply(5, "one", 1);
        Reply(5, "two", 2);
        EXPECT_EQ(Ids(), "alone one! two! ");
    }
    EXPECT_EQ(DeviceCell(scan.Devices()[1], 1, DeviceColumn::kRemarks), "[IP conflict] ");
    scan.Tick();
    Reply(5, "two", 2);
    EXPECT_EQ(Ids(), "alone one! two! ");
    scan.PressScan();
    scan.PressScan();
    scan.Tick();
    Reply(5, "two", 2);
    EXPECT_EQ(Ids(), "two ");
}

TEST_F(Scan, ChoosesTheCurrentPlayerUnlessTheUserHasChosenAnother) {
    DeviceRecord current;
    current.ip = "10.0.0.5", current.mac = "02:00:0A:00:00:05";
    scan.Opened(current);
    scan.Tick();
    Reply(5, "impostor", 1);
    Reply(4, "other");
    EXPECT_EQ(Ids(), "other impostor ");
    scan.Tick();
    Reply(5, "current");
    EXPECT_EQ(Ids(), "other current* ");
    scan.PressScan();
    Reply(4, "other");
    scan.ChooseOnly(0);
    Reply(5, "current");
    EXPECT_EQ(Ids(), "other* current ");
    scan.ChooseNone();
    for (int press = 0; press < 2; ++press) scan.PressScan();
    Reply(4, "other");
    EXPECT_EQ(Ids(), "other ");
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
    for (int press = 0; press < 2; ++press) scan.PressScan();
    Reply(1, "a");
    scan.ChooseOnly(0);
    Reply(2, "b");
    EXPECT_EQ(Ids(), "a* b ");
}

}  // namespace
}  // namespace sontaro::test
