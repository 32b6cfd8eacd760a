#include "devices/device_rules.h"

#include <gmock/gmock.h>

#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

std::string Refusal(ChoiceMode mode, std::size_t chosen) {
    const auto refusal = RefusalOfChoice(mode, chosen);
    return refusal ? Localized(*refusal) : "";
}

TEST(DeviceChoice, IsOneDeviceOrUpToEight) {
    EXPECT_EQ(Refusal(ChoiceMode::kSingle, 0), "Please choose a device first!");
    EXPECT_EQ(Refusal(ChoiceMode::kSingle, 1), "");
    EXPECT_EQ(Refusal(ChoiceMode::kMultiple, 0), "Please tick the devices!");
    EXPECT_EQ(Refusal(ChoiceMode::kMultiple, 8), "");
    EXPECT_EQ(Refusal(ChoiceMode::kMultiple, 9), "Too many devices selected!");
    const InLanguage chinese(Language::kChinese);
    EXPECT_EQ(Refusal(ChoiceMode::kSingle, 0), "先选择一台设备，再连接！");
    EXPECT_EQ(Refusal(ChoiceMode::kMultiple, 0), "没有选择IP吧！");
    EXPECT_EQ(Refusal(ChoiceMode::kMultiple, 9), "选择的设备太多了！");
}

TEST(DeviceNetwork, IsJudgedByTheClassOfTheLocalAddress) {
    const struct {
        const char* local;
        const char* device;
        bool same;
    } cases[] = {
        {"1.0.0.1", "1.200.0.9", true},       {"127.0.0.1", "126.0.0.1", false},
        {"128.7.0.1", "128.7.9.9", true},     {"191.7.0.1", "191.8.0.1", false},
        {"192.168.1.2", "192.168.1.9", true}, {"223.1.1.2", "223.1.2.2", false},
        {"224.1.1.1", "10.0.0.1", true},      {"0.0.0.0", "10.0.0.1", true},
        {"10.0.0.1", "192.168.1.1", false},   {"", "10.0.0.1", true},
    };
    for (const auto& [local, device, same] : cases)
        EXPECT_EQ(IsSameNetwork(local, device), same) << local << " " << device;
}

std::vector<std::string> Sorted(DeviceColumn column, bool ascending) {
    std::vector<DeviceRecord> devices(3);
    const char* ips[] = {"10.0.0.9", "10.0.0.10", "9.0.0.200"};
    const std::uint16_t ports[] = {900, 10000, 900};
    for (std::size_t i = 0; i < 3; ++i) {
        devices[i].ip = ips[i];
        devices[i].tcpPort = ports[i];
        devices[i].remarks = ips[2 - i];
    }
    SortDevices(devices, column, ascending);
    std::vector<std::string> order;
    for (const DeviceRecord& device : devices) order.push_back(device.ip);
    return order;
}

TEST(DeviceOrder, IsByValueAndEqualRowsStayInOrder) {
    EXPECT_THAT(Sorted(DeviceColumn::kIp, true), ElementsAre("9.0.0.200", "10.0.0.9", "10.0.0.10"));
    EXPECT_THAT(Sorted(DeviceColumn::kIp, false),
                ElementsAre("10.0.0.10", "10.0.0.9", "9.0.0.200"));
    EXPECT_THAT(Sorted(DeviceColumn::kTcpPort, true),
                ElementsAre("10.0.0.9", "9.0.0.200", "10.0.0.10"));
    EXPECT_THAT(Sorted(DeviceColumn::kTcpPort, false),
                ElementsAre("10.0.0.10", "10.0.0.9", "9.0.0.200"));
    EXPECT_THAT(Sorted(DeviceColumn::kRemarks, true),
                ElementsAre("10.0.0.10", "9.0.0.200", "10.0.0.9"));
}

TEST(LocalAddress, ThatIsRememberedIsKeptEvenWhenItHasVanished) {
    const std::vector<std::string> offered = {"10.0.0.1", "10.0.0.2"};
    EXPECT_EQ(ChooseLocalAddress(offered, ""), (LocalAddressChoice{"10.0.0.1", true}));
    EXPECT_EQ(ChooseLocalAddress(offered, "10.0.0.2"), (LocalAddressChoice{"10.0.0.2", true}));
    EXPECT_EQ(ChooseLocalAddress(offered, "10.0.0.3"), (LocalAddressChoice{"10.0.0.3", false}));
    EXPECT_EQ(ChooseLocalAddress({}, ""), (LocalAddressChoice{"", false}));
}

}  // namespace
}  // namespace sontaro::test
