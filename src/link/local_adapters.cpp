#include "link/local_adapters.h"

#include "link/socket_native.h"

namespace sontaro {

std::vector<LocalAdapter> PhysicalAddresses(const std::vector<SystemAdapter>& adapters) {
    std::vector<LocalAdapter> rows;
    for (const SystemAdapter& adapter : adapters) {
        if (!adapter.instanceId.starts_with("PCI") && !adapter.instanceId.starts_with("USB"))
            continue;
        for (const std::string& ip : adapter.addresses)
            if (ip != "0.0.0.0" && ip != "127.0.0.1")
                rows.push_back({adapter.name, ip, adapter.mediaSubType});
    }
    return rows;
}

std::vector<LocalAdapter> ReachableAddresses(const std::vector<SystemAdapter>& adapters) {
    std::vector<LocalAdapter> rows;
    for (const SystemAdapter& adapter : adapters)
        for (const std::string& ip : adapter.addresses)
            if (ip != "0.0.0.0" && !ip.starts_with("127."))
                rows.push_back({adapter.name, ip, adapter.mediaSubType});
    return rows;
}

std::vector<LocalAdapter> LocalAdapterList() { return PhysicalAddresses(SystemAdapters()); }

std::vector<LocalAdapter> ScanAddresses() {
    if (std::vector<LocalAdapter> rows = LocalAdapterList(); !rows.empty()) return rows;
    std::vector<SystemAdapter> adapters = SystemAdapters();
    if (adapters.empty()) adapters.push_back({"", "", 0, HostAddressList()});
    return ReachableAddresses(adapters);
}

bool IsLocalAddress(const std::string& ip) {
    const std::optional<Ipv4Address> address = ParseIpv4(ip);
    Socket socket = Socket::Udp();
    return address && socket.IsOpen() && socket.Bind({*address, 0});
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
    for (const addrinfo* entry = first; entry; entry = entry->ai_next) {
        const auto* address = reinterpret_cast<const sockaddr_in*>(entry->ai_addr);
        addresses.push_back(FormatIpv4(native::ToEndpoint(*address).address));
    }
    freeaddrinfo(first);
    return addresses;
}

}  // namespace sontaro
