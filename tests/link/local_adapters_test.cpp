#include "link/local_adapters.h"

#include <gmock/gmock.h>

#include "link/local_adapters_linux.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

namespace fs = std::filesystem;
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

TEST(LocalAdapters, StandOnTheNearestBusAboveTheDevice) {
    const TemporaryFolder root;
    const auto addDevice = [&](const std::string& device, const std::string& bus) {
        fs::create_directories(root / device);
        fs::create_directories(root / ("bus/" + bus));
        fs::create_directory_symlink(root / ("bus/" + bus), root / (device + "/subsystem"));
    };
    addDevice("pci0/card", "pci");
    addDevice("pci0/card/virtio0", "virtio");
    addDevice("pci0/card/usb1/stick", "usb");
    addDevice("virtual/bridge", "net");
    fs::create_directory_symlink(root / "pci0/card/usb1/stick", root / "device");

    EXPECT_EQ(BusOfDevice(root / "pci0/card/virtio0"), "PCI");
    EXPECT_EQ(BusOfDevice(root / "device"), "USB");
    EXPECT_EQ(BusOfDevice(root / "virtual/bridge"), "");
    EXPECT_EQ(BusOfDevice(root / "missing"), "");
}

}  // namespace
}  // namespace sontaro::test
