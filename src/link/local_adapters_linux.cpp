#include "link/local_adapters_linux.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <netdb.h>
#include <netinet/in.h>
#include <unistd.h>

#include <algorithm>

#include "link/local_adapters.h"

namespace sontaro {

namespace {

namespace fs = std::filesystem;

std::string AddressText(const sockaddr* address) {
    char text[INET_ADDRSTRLEN] = "";
    const auto* native = reinterpret_cast<const sockaddr_in*>(address);
    inet_ntop(AF_INET, &native->sin_addr, text, sizeof text);
    return text;
}

SystemAdapter& AdapterNamed(std::vector<SystemAdapter>& adapters, const std::string& name) {
    const auto known = std::ranges::find(adapters, name, &SystemAdapter::name);
    if (known != adapters.end()) return *known;
    const std::string bus = BusOfDevice(fs::path("/sys/class/net") / name / "device");
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

std::vector<LocalAdapter> LocalAdapterList() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) return {};
    std::vector<SystemAdapter> adapters;
    for (const ifaddrs* entry = first; entry; entry = entry->ifa_next)
        if (entry->ifa_addr && entry->ifa_addr->sa_family == AF_INET)
            AdapterNamed(adapters, entry->ifa_name).addresses.push_back(AddressText(entry->ifa_addr));
    freeifaddrs(first);
    return PhysicalAddresses(adapters);
}

std::vector<std::string> HostAddressList() {
    char host[100] = "";
    if (gethostname(host, sizeof host - 1) != 0) return {};
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_PASSIVE;
    addrinfo* first = nullptr;
    if (getaddrinfo(host, nullptr, &hints, &first) != 0) return {};
    std::vector<std::string> addresses;
    for (const addrinfo* entry = first; entry; entry = entry->ai_next)
        addresses.push_back(AddressText(entry->ai_addr));
    freeaddrinfo(first);
    return addresses;
}

}  // namespace sontaro
