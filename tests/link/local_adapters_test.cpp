#include "link/local_adapters.h"

#include <gmock/gmock.h>

#include <map>

#include "link/network_connections.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Values = std::map<std::string, RegistryValue>;

/// The adapter "{guid}" whose connection has `values`, as it is listed.
std::vector<LocalAdapter> Listed(const Values& values, std::vector<std::string> addresses) {
    const auto read = [&](const std::string& path, const std::string& name) -> RegistryValue {
        EXPECT_EQ(path, R"(SYSTEM\CurrentControlSet\Control\Network\)"
                        R"({4D36E972-E325-11CE-BFC1-08002BE10318}\{guid}\Connection)");
        return values.contains(name) ? values.at(name) : RegistryValue();
    };
    return PhysicalAddresses({DescribeConnection("{guid}", std::move(addresses), read)});
}

TEST(LocalAdapters, AreTheAssignedAddressesOfPciAndUsbDevices) {
    // clang-format off
    const std::pair<Values, LocalAdapter> listed[] = {
        {{{"Name", "本地"}, {"PnpInstanceID", R"(PCI\VEN)"}}, {"本地", "10.0.0.9", 0}},
        {{{"Name", "WLAN"}, {"PnpInstanceID", "USB"}, {"MediaSubType", 2U}}, {"WLAN", "10.0.0.9", 2}},
        {{{"Name", 7U}, {"PnpInstanceID", "PCIP"}, {"MediaSubType", "2"}}, {"", "10.0.0.9", 0}}};
    // clang-format on
    for (const auto& [values, adapter] : listed) {
        EXPECT_THAT(Listed(values, {"0.0.0.0", "10.0.0.9", "127.0.0.1"}), ElementsAre(adapter));
        EXPECT_THAT(Listed(values, {"10.0.0.9", "10.0.0.8"}), SizeIs(2));
        EXPECT_THAT(Listed(values, {}), IsEmpty());
    }
    for (const RegistryValue& bus : {RegistryValue(R"(ROOT\PCI)"), {R"(pci\VEN)"}, {1U}, {}})
        EXPECT_THAT(Listed({{"Name", "other"}, {"PnpInstanceID", bus}}, {"10.0.0.9"}), IsEmpty());
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
