#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "devices/device_remarks.h"
#include "devices/device_rules.h"
#include "devices/scan_run.h"
#include "simulator/discovery_reply.h"
#include "support/literals.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

const Bytes kReply =
    Hex("5A5A5AA5 81 00 0000 0000 0100 1E000000 C0A8010E 020A7F00FE02 2823 3012 0C00 2900"
        "4B5456 2D30303700 000000 00");

TEST(DiscoveryReply, GivesADeviceRecord) {
    // clang-format off
    const DeviceRecord expected{"192.168.1.14", "02:0A:7F:00:FE:02", 9000, "KTV-007",
        "Player ver:1.2.3 FPGA ver:12.0 Channel:(1 Input 4 Output)", 12, 41, 0x1230, "", 0, 0, false};
    // clang-format on
    EXPECT_EQ(ParseDiscoveryReply(kReply), expected);
}

TEST(DiscoveryReply, CountsFromFortyBytesOnAndNothingBehindItMatters) {
    for (std::size_t size = 0; size < 40; ++size)
        EXPECT_FALSE(ParseDiscoveryReply(ByteView(kReply).first(size))) << size;
    for (std::size_t size = 40; size <= 46; ++size)
        EXPECT_EQ(ParseDiscoveryReply(ByteView(kReply).first(size))->id,
                  std::string("KTV-007").substr(0, size - 34));
    Bytes longer = kReply;
    longer.resize(2000, 'x');
    EXPECT_EQ(ParseDiscoveryReply(longer), ParseDiscoveryReply(kReply));
}

TEST(DiscoveryReply, IsTestedForCommandArgumentAndLengthAlone) {
    const auto accepts = [](std::size_t offset, std::uint8_t value) {
        Bytes reply = kReply;
        reply[offset] = value;
        return ParseDiscoveryReply(reply).has_value();
    };
    EXPECT_TRUE(accepts(4, 0x01) && accepts(4, 0xC1) && !accepts(4, 0x83));
    EXPECT_TRUE(accepts(10, 7) && !accepts(10, 0) && !accepts(10, 2) && !accepts(11, 1));
    EXPECT_TRUE(accepts(0, 0) && accepts(15, 0xFF) && !accepts(12, 29));
}

TEST(DiscoveryReply, IdTakesEveryByteAsACharacterAndASuffixWithQualifierOne) {
    Bytes reply = kReply;
    std::ranges::copy(Hex("41 00 C4 DC 00000000 00000000"), reply.begin() + 34);
    std::ranges::copy(Hex("BC0A"), reply.begin() + 8);
    const std::string text("A\0\u00C4\u00DC", 6);
    for (reply[5] = 0; reply[5] < 3; ++reply[5])
        EXPECT_EQ(ParseDiscoveryReply(reply)->id, text + (reply[5] == 1 ? "0abc" : ""));
}

TEST(DeviceVersion, NamesItsChannelsOrSaysThatThePlayerIsUnknown) {
    EXPECT_EQ(VersionText(0xF0AF, 0, 1), "Player ver:15.0.10 Channel:(No Input 1 Output)");
    for (const std::uint16_t unknown : std::initializer_list<std::uint16_t>{0, 10, 12, 92, 101})
        EXPECT_EQ(VersionText(0x1230, 5, unknown), "Unknown Player") << unknown;
}

struct Remarks : testing::Test {
    DeviceRecord Apply() {
        DeviceRecord device;
        device.mac = "02:00";
        DeviceRemarks(path).ApplyTo(device);
        return device;
    }

    TemporaryFolder folder;
    std::filesystem::path path = folder / "remarks.json";
};

TEST_F(Remarks, AreReadByMacAndBrokenOnesLeaveTheirField) {
    folder.Write("remarks.json",
                 R"({"02:00": {"Remarks": "大厅", "authInputNum": 2, "authOutputNum": "x"}})");
    EXPECT_EQ(Apply().remarks, "大厅");
    EXPECT_EQ(Apply().authorisedInputs * 10 + Apply().authorisedOutputs, 20);
    folder.Write("remarks.json", R"({"02:00": 7})");
    EXPECT_EQ(Apply().remarks, "");
}

TEST_F(Remarks, AreWrittenBesideWhatIsNotKnown) {
    folder.Write("remarks.json", R"({"02:00": {"authInputNum": 4, "shelf": "B"}, "99": [1]})");
    ASSERT_TRUE(DeviceRemarks(path).SetRemarks("02:00", "left"));
    EXPECT_EQ(JsonFile(path).Root()["02:00"]["shelf"].asString(), "B");
    EXPECT_EQ(JsonFile(path).Root()["99"][0].asInt(), 1);
    EXPECT_EQ(Apply().remarks, "left");
    EXPECT_EQ(Apply().authorisedInputs, 4);
    EXPECT_FALSE(DeviceRemarks(path / "inside").SetRemarks("02:00", "right"));
}

TEST_F(Remarks, OfTwoInstallationsStandBesideEachOther) {
    const auto remark = [&](const std::string& prefix) {
        DeviceRemarks remarks(path);
        for (int number = 0; number < 50; ++number)
            EXPECT_TRUE(remarks.SetRemarks(prefix + std::to_string(number), prefix));
    };
    std::jthread other(remark, "02:");
    remark("04:");
    other.join();
    EXPECT_EQ(JsonFile(path).Root().size(), 100U);
}

TEST(LocalAddress, IsTheRememberedOneUnlessThatIsTheMachinesOwnName) {
    const std::vector<LocalAdapter> offered = {{"eth0", "192.168.1.5"}, {"eth1", "10.0.0.5"}};
    EXPECT_EQ(ChooseLocalAddress(offered, "10.0.0.5"), "10.0.0.5");
    EXPECT_EQ(ChooseLocalAddress(offered, "203.0.113.9"), "203.0.113.9");
    for (const char* none : {"", "127.0.0.1", "127.0.1.1"}) {
        EXPECT_EQ(ChooseLocalAddress(offered, none), "192.168.1.5") << none;
        EXPECT_EQ(ChooseLocalAddress({}, none), "") << none;
    }
}

TEST(DeviceNetwork, IsJudgedByTheClassOfTheLocalAddress) {
    // clang-format off
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"1.0.0.1", "1.200.0.9", true}, {"128.7.0.1", "128.7.9.9", true}, {"192.168.1.2", "192.168.1.9", true},
        {"224.1.1.1", "10.0.0.1", true}, {"0.0.0.0", "10.0.0.1", true}, {"127.0.0.1", "126.0.0.1", false},
        {"191.7.0.1", "191.8.0.1", false}, {"223.1.1.2", "223.1.2.2", false}};
    // clang-format on
    for (const auto& [own, other, same] : cases) EXPECT_EQ(IsSameNetwork(own, other), same) << own;
}

TEST(DeviceWall, TakesOneToEightPlayersThatCanBeSentTo) {
    DeviceRecord player;
    player.ip = "10.0.0.5", player.tcpPort = 1025;
    const auto refusal = [&](int count, int addresses = 9) {
        std::vector<DeviceRecord> players(static_cast<std::size_t>(count), player);
        for (int i = 0; i < count && !player.ip.empty(); ++i)
            players[static_cast<std::size_t>(i)].ip += std::to_string(i % addresses);
        const auto text = RefusalOfWall(players);
        return std::string(text ? text->english : "");
    };
    EXPECT_EQ(refusal(1) + refusal(8), "");
    EXPECT_EQ(refusal(3, 2),
              "Several of the ticked players have one IP address: give each its own.");
    player.tcpPort = 1024;
    EXPECT_EQ(refusal(1), "Please tick the devices!");
    player.tcpPort = 9000, player.ip = "";
    EXPECT_EQ(refusal(2), "Please tick the devices!");
}

TEST(DeviceNumbers, AreFilledUpByTheSystemsVersion) {
    constexpr NumberWidths kWide{10, 20};
    EXPECT_EQ(SortableWidths({6, 1, 7601, true}), (NumberWidths{5, 10}));
    for (const SystemVersion& other :
         {SystemVersion{6, 1, 0, false}, {6, 2, 0, true}, {10, 1, 0, true}, {0, 0, 0, true}})
        EXPECT_EQ(SortableWidths(other), kWide) << other.major << other.minor;
    DeviceRecord player;
    player.tcpPort = 9000;
    EXPECT_EQ(DeviceCell(player, 9, DeviceColumn::kNumber, kWide), "        10");
    EXPECT_EQ(DeviceCell(player, 9, DeviceColumn::kTcpPort, kWide), "                9000");
    EXPECT_EQ(DeviceCell(player, 9, DeviceColumn::kTcpPort), "9000");
}

struct Scan : testing::Test, ScanActions {
    explicit Scan(bool clearsEveryRound = false)
        : scan(*this, remarks,
               {InBoth("Scan"), InBoth("Stop"), InBoth("Stop(%d)"), clearsEveryRound}) {}

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
    ScanRun scan;
    int requests = 0;
    bool timer = false;
    bool sendable = true;
};

TEST_F(Scan, AsksAtTicksOneToFourAndStopsAtFive) {
    std::string shown;
    scan.PressScan();
    for (int tick = 0; tick < 5; ++tick, scan.Tick()) {
        shown += scan.ButtonText() + " ";
        EXPECT_TRUE(requests == tick && timer);
    }
    EXPECT_EQ(shown + scan.ButtonText(), "Stop Stop(4) Stop(3) Stop(2) Stop(1) Scan");
    EXPECT_TRUE(requests == 4 && !timer);
}

TEST_F(Scan, IsStoppedByItsButtonAndByALostNetwork) {
    for (const bool isLost : {false, true}) {
        sendable = true;
        scan.PressScan();
        EXPECT_TRUE(scan.IsScanning() && timer);
        sendable = !isLost;
        isLost ? scan.Tick() : scan.PressScan();
        EXPECT_FALSE(scan.IsScanning() || timer);
    }
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
}

/// A scan whose every round begins with an empty list.
struct WallScan : Scan {
    WallScan() : Scan(true) {}
    std::string Tick() {
        scan.Tick();
        return Ids();
    }
    std::string Chosen() const {
        std::string ids;
        for (const DeviceRecord& device : scan.Chosen()) ids += device.id + " ";
        return ids;
    }
};

TEST_F(WallScan, KeepsTheListUntilItsFirstRequestAndClearsItWithEach) {
    Reply(1, "a");
    scan.PressScan();
    EXPECT_EQ(Ids(), "a ");
    for (int round = 1; round < 5; ++round) {
        EXPECT_EQ(Tick(), "");
        EXPECT_TRUE(requests == round && timer);
        Reply(1, "a");
    }
    EXPECT_EQ(Tick(), "a ");
    EXPECT_TRUE(requests == 4 && !timer);
}

TEST_F(WallScan, TicksStayWithTheirAddressAndListTheSilentAtTheEnd) {
    Reply(10, "ten", 10);
    Reply(9, "nine", 9);
    Reply(8, "eight", 8);
    scan.ChooseAll();
    scan.SetTicked(0, false);
    scan.PressScan();
    Tick();
    EXPECT_EQ(Chosen(), "nine ten ") << "nobody has answered again";
    Reply(9, "NINE", 7);
    EXPECT_EQ(Reply(8, "eight", 8), "eight NINE* ");
    EXPECT_EQ(Chosen(), "NINE ten ") << "as heard last";
    scan.PressScan();
    EXPECT_EQ(Ids(), "eight NINE* ten* ");
    EXPECT_EQ(DeviceCell(scan.Devices()[2], 2, DeviceColumn::kRemarks), "[no answer] ");
    scan.SetTicked(2, false);
    scan.PressScan();
    Tick();
    EXPECT_EQ(Reply(10, "ten", 10), "ten ");
    EXPECT_EQ(DeviceCell(scan.Devices()[0], 0, DeviceColumn::kRemarks), "");
    scan.ChooseNone();
    EXPECT_EQ(Chosen(), "");
}

TEST_F(WallScan, TwoPlayersAtOneAddressKeepTheirOwnTicks) {
    Reply(5, "one", 1);
    Reply(5, "two", 2);
    scan.ChooseAll();
    scan.PressScan();
    Tick();
    Reply(5, "two", 2);
    EXPECT_EQ(Reply(5, "one", 1), "two*! one*! ");
    scan.SetTicked(0, false);
    Tick();
    scan.PressScan();
    EXPECT_EQ(Ids(), "one* ") << "silent, and alone there";
}

TEST_F(WallScan, RemarksOfTickedPlayersThatHaveNotAnsweredAgainAreTheNewOnes) {
    Reply(5, "a", 1);
    scan.ChooseAll();
    scan.PressScan();
    Tick();
    EXPECT_TRUE(remarks.SetRemarks("02:00:00:00:00:01", "left"));
    scan.RemarksChanged();
    EXPECT_EQ(scan.Chosen().at(0).remarks, "left");
}

}  // namespace
}  // namespace sontaro::test
