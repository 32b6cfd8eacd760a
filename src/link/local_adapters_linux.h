// The bus that a Linux network device stands on.
#pragma once

#include <filesystem>
#include <string>

namespace sontaro {

/// "PCI" or "USB" when the device or one of its ancestors is on that bus, the nearest one; else
/// empty. `device` is a folder such as /sys/class/net/eth0/device; it need not exist.
[[nodiscard]] std::string BusOfDevice(const std::filesystem::path& device);

}  // namespace sontaro
