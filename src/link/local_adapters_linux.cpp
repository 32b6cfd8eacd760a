#include "link/local_adapters_linux.h"

#include <ifaddrs.h>

#include <algorithm>

#include "link/local_adapters.h"
#include "link/socket_native.h"

namespace sontaro {

namespace {

namespace fs = std::filesystem;

std::string AddressText(const sockaddr* address) {
    return FormatIpv4(native::ToEndpoint(*reinterpret_cast<const sockaddr_in*>(address)).address);
}

SystemAdapter& AdapterNamed(std::vector<SystemAdapter>& adapters, const std::string& name) {
    const auto known = std::ranges::find(adapters, name, &SystemAdapter::name);
    if (known != adapters.end()) return *known;
    const std::string device = name.substr(0, name.find(':'));  // "eth0:1" is a second address
    const std::string bus = BusOfDevice(fs::path("/sys/class/net") / device / "device");
    return adapters.emplace_back(SystemAdapter{name, bus, 0, {}});
}

}  // namespace

std::string BusOfDevice(const fs::path& device) {
    std::error_code error;
    fs::path folder = fs::canonical(device, error);
    if (error) return "";
    for (; folder.has_relative_path(); folder = folder.parent_path()) {
        const std::string bus = fs::read_symlink(folder / "subsystem", error).filename();
        if (bus == "pci") return "PCI";
        if (bus == "usb") return "USB";
    }
    return "";
}

std::vector<SystemAdapter> SystemAdapters() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) return {};
    std::vector<SystemAdapter> adapters;
    for (const ifaddrs* entry = first; entry; entry = entry->ifa_next)
        if (entry->ifa_addr && entry->ifa_addr->sa_family == AF_INET)
            AdapterNamed(adapters, entry->ifa_name)
                .addresses.push_back(AddressText(entry->ifa_addr));
    freeifaddrs(first);
    return adapters;
}

}  // namespace sontaro
