// This machine's own IPv4 addresses.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sontaro {

/// One address of a physical network adapter.
struct LocalAdapter {
    std::string name;  ///< connection name as the system shows it, UTF-8
    std::string ip;    ///< dotted IPv4 address
    std::uint32_t mediaSubType = 0;

    bool operator==(const LocalAdapter&) const = default;
};

/// An adapter as the system reports it.
struct SystemAdapter {
    std::string name;
    std::string instanceId;  ///< plug-and-play instance; begins with the bus, as in "PCI\\VEN_8086"
    std::uint32_t mediaSubType = 0;
    std::vector<std::string> addresses;
};

/// One row per address of the adapters on the PCI or USB bus, addresses not yet assigned
/// ("0.0.0.0") and "127.0.0.1" left out. The order is kept.
[[nodiscard]] std::vector<LocalAdapter> PhysicalAddresses(
    const std::vector<SystemAdapter>& adapters);

/// One row per address that other machines can reach, whatever the adapter: loopback addresses and
/// those not yet assigned left out. The order is kept.
[[nodiscard]] std::vector<LocalAdapter> ReachableAddresses(
    const std::vector<SystemAdapter>& adapters);

/// This machine's adapters; empty when there are none or the system does not tell. Source: on
/// Windows IP Helper and the registry's network connections; on Linux getifaddrs and the device's
/// ancestors under /sys/class/net.
[[nodiscard]] std::vector<SystemAdapter> SystemAdapters();

/// The addresses of this machine's physical adapters.
[[nodiscard]] std::vector<LocalAdapter> LocalAdapterList();

/// The addresses to offer for a scan: the physical adapters'; where these have none, those of any
/// other adapter, such as a bridge; where the system does not tell, those of the host's name. Never
/// a loopback address.
[[nodiscard]] std::vector<LocalAdapter> ScanAddresses();

/// Whether sockets can be bound to `ip`, that is, whether it is one of this machine's at present.
[[nodiscard]] bool IsLocalAddress(const std::string& ip);

/// The IPv4 addresses that this machine's host name resolves to, dotted.
[[nodiscard]] std::vector<std::string> HostAddressList();

}  // namespace sontaro
