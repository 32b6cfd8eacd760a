#include "link/local_adapters_linux.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

namespace fs = std::filesystem;

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
