#include "link/local_adapters.h"

#include <gmock/gmock.h>

namespace sontaro::test {
namespace {

using testing::ElementsAre;

TEST(LocalAdapters, AreTheAssignedAddressesOfPciAndUsbDevices) {
    const std::vector<SystemAdapter> adapters = {
        {"wired", "PCI\\VEN_8086", 0, {"0.0.0.0", "192.168.1.7", "127.0.0.1", "10.0.0.7"}},
        {"bridge", "ROOT\\VMS", 0, {"172.17.0.1"}},
        {"none", "", 0, {"10.9.9.9"}},
        {"stick", "USB\\VID_0BDA", 2, {"192.168.2.7"}}};
    EXPECT_THAT(PhysicalAddresses(adapters), ElementsAre(LocalAdapter{"wired", "192.168.1.7", 0},
                                                         LocalAdapter{"wired", "10.0.0.7", 0},
                                                         LocalAdapter{"stick", "192.168.2.7", 2}));
}

}  // namespace
}  // namespace sontaro::test
