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

    /// Lets a player answer and tells what is listed then.
    std::string Reply(std::uint8_t lastOctet, const std::string& id, std::uint8_t mac = 0) {
        simulator::PlayerIdentity identity;
        identity.id = id;
        if (mac != 0) identity.mac = {2, 0, 0, 0, 0, mac};
        scan.Receive(simulator::DiscoveryReply(identity, {{{10, 0, 0, lastOctet}}, 9000}));
        return Ids();
    }
    /// Tells what is listed once another scan has begun.
    std::string ScanAnew() {
        if (scan.IsScanning()) scan.PressScan();
        scan.PressScan();
        return Ids();
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
    const std::pair<Language, const char*> languages[] = {
        {Language::kEnglish, "Stop Stop(4) Stop(3) Stop(2) Stop(1) Scan"},
        {Language::kChinese, "停止查找 停止查找(4) 停止查找(3) 停止查找(2) 停止查找(1) 查找设备"}};
    for (const auto& [language, texts] : languages) {
        const InLanguage spoken(language);
        std::string shown;
        scan.PressScan();
        for (int tick = requests = 0; tick < 5; ++tick, scan.Tick()) {
            shown += scan.ButtonText() + " ";
            EXPECT_TRUE(requests == tick && timer);
        }
        EXPECT_EQ(shown + scan.ButtonText(), texts);
        EXPECT_TRUE(requests == 4 && !timer);
    }
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
    scan.Receive(AsBytes("no reply"));
    EXPECT_EQ(Reply(10, "TEN"), "nine TEN ");
    scan.SortBy(DeviceColumn::kId, false);
    EXPECT_EQ(Reply(1, "zero"), "zero nine TEN ");
}

TEST_F(Scan, GivesTheRowOfAnAddressToThePlayerThatHasTakenItsPlace) {
    scan.Opened();
    scan.Tick();
    Reply(5, "old", 1);
    scan.ChooseOnly(0);
    scan.Tick();
    EXPECT_EQ(Reply(5, "new", 2), "new ");
    scan.Tick();
    EXPECT_EQ(Reply(5, "old", 1), "old* ") << "back where it was chosen";
}

TEST_F(Scan, MarksPlayersThatAnswerAtOneAddressToTheSameRequest) {
    scan.PressScan();
    for (int request = 0; request < 3; ++request) {
        scan.Tick();
        Reply(4, "alone");
        Reply(5, "one", 1);
        EXPECT_EQ(Reply(5, "two", 2), "alone one! two! ");
    }
    EXPECT_EQ(DeviceCell(scan.Devices()[1], 1, DeviceColumn::kRemarks), "[IP conflict] ");
    scan.Tick();
    EXPECT_EQ(Reply(5, "two", 2), "alone one! two! ");
    ScanAnew();
    scan.Tick();
    EXPECT_EQ(Reply(5, "two", 2), "two ");
}

TEST_F(Scan, ChoosesTheCurrentPlayerUnlessTheUserHasChosenAnother) {
    DeviceRecord current;
    current.ip = "10.0.0.5", current.mac = "02:00:0A:00:00:05";
    scan.Opened(current);
    scan.Tick();
    Reply(5, "impostor", 1);
    EXPECT_EQ(Reply(4, "other"), "other impostor ");
    scan.Tick();
    EXPECT_EQ(Reply(5, "current"), "other current* ");
    ScanAnew();
    Reply(4, "other");
    scan.ChooseOnly(0);
    EXPECT_EQ(Reply(5, "current"), "other* current ");
    scan.ChooseNone();
    ScanAnew();
    EXPECT_EQ(Reply(4, "other"), "other ");
}

TEST_F(Scan, KeepsTicksOfPlayersThatAnswerAgain) {
    Reply(1, "a");
    Reply(2, "b");
    scan.SetTicked(1, true);
    EXPECT_EQ(Reply(2, "b"), "a b* ");
    EXPECT_EQ(ScanAnew(), "");
    Reply(2, "b");
    EXPECT_EQ(Reply(1, "a"), "a b* ");
    ScanAnew();
    Reply(1, "a");
    scan.ChooseOnly(0);
    EXPECT_EQ(Reply(2, "b"), "a* b ");
}

}  // namespace
}  // namespace sontaro::test
