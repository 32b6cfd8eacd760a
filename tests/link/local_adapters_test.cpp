#include "link/local_adapters.h"

#include <gmock/gmock.h>

#include <map>

#include "link/network_connections.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using Values = std::map<std::string, RegistryValue>;

/// What the registry of some machine says about its adapters.
const std::map<std::string, Values> kConnections = {
    {"{wired}", {{"Name", "本地连接"}, {"PnpInstanceID", "PCI\\VEN_8086"}}},
    {"{stick}", {{"Name", "WLAN"}, {"PnpInstanceID", "USB\\VID_0BDA"}, {"MediaSubType", 2U}}},
    {"{carrier}", {{"Name", "port"}, {"PnpInstanceID", "PCIP\\1"}, {"MediaSubType", "2"}}},
    {"{unnamed}", {{"Name", 7U}, {"PnpInstanceID", "USB"}}},
    {"{bridge}", {{"Name", "bridge"}, {"PnpInstanceID", "ROOT\\PCI"}}},
    {"{lower}", {{"Name", "lower"}, {"PnpInstanceID", "pci\\VEN_8086"}}},
    {"{number}", {{"Name", "number"}, {"PnpInstanceID", 1U}}},
    {"{software}", {{"Name", "software"}}}};

RegistryValue Recorded(const std::string& path, const std::string& name) {
    for (const auto& [guid, values] : kConnections)
        if (path ==
            "SYSTEM\\CurrentControlSet\\Control\\Network\\"
            "{4D36E972-E325-11CE-BFC1-08002BE10318}\\" +
                guid + "\\Connection")
            return values.contains(name) ? values.at(name) : RegistryValue();
    return {};
}

std::vector<LocalAdapter> Listed(const std::string& guid, std::vector<std::string> addresses) {
    return PhysicalAddresses({DescribeConnection(guid, std::move(addresses), Recorded)});
}

TEST(LocalAdapters, AreTheAssignedAddressesOfPciAndUsbDevices) {
    EXPECT_THAT(Listed("{wired}", {"0.0.0.0", "192.168.1.7", "127.0.0.1", "10.0.0.7"}),
                ElementsAre(LocalAdapter{"本地连接", "192.168.1.7", 0},
                            LocalAdapter{"本地连接", "10.0.0.7", 0}));
    EXPECT_THAT(Listed("{stick}", {"10.0.0.8"}), ElementsAre(LocalAdapter{"WLAN", "10.0.0.8", 2}));
    EXPECT_THAT(Listed("{carrier}", {"10.0.0.9"}),
                ElementsAre(LocalAdapter{"port", "10.0.0.9", 0}));
    EXPECT_THAT(Listed("{unnamed}", {"10.0.0.9"}), ElementsAre(LocalAdapter{"", "10.0.0.9", 0}));
    EXPECT_THAT(Listed("{wired}", {}), ElementsAre());
    for (const char* guid : {"{bridge}", "{lower}", "{number}", "{software}", "{not there}"})
        EXPECT_THAT(Listed(guid, {"10.0.0.9"}), ElementsAre()) << guid;
}

TEST(LocalAdapters, OfAnyKindAreOfferedWithoutLoopback) {
    EXPECT_THAT(ReachableAddresses({{"lo", "", 0, {"127.0.0.1", "127.0.1.1"}},
                                    {"br0", "", 0, {"0.0.0.0", "10.0.0.8"}}}),
                ElementsAre(LocalAdapter{"br0", "10.0.0.8", 0}));
    for (const LocalAdapter& adapter : ScanAddresses())
        EXPECT_FALSE(adapter.ip.starts_with("127.")) << adapter.ip;
}

}  // namespace
}  // namespace sontaro::test
