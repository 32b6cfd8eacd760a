#include "devices/device_rules.h"

#include <fmt/printf.h>

#include <algorithm>
#include <set>
#include <tuple>

#include "link/socket.h"

namespace sontaro {

namespace {

constexpr LocalText kTickFirst = {"没有选择IP吧！", "Please tick the devices!"};
constexpr LocalText kTooMany = {"选择的设备太多了！", "Too many devices selected!"};
constexpr LocalText kOneAddress = {"打勾的播放器中有相同的IP地址，请更改其中的地址。",
                                   "Several of the ticked players have one IP address: give each "
                                   "its own."};
constexpr LocalText kChooseFirst = {"先选择一台设备，再连接！", "Please choose a device first!"};
constexpr LocalText kSharedAddress = {"【IP冲突】", "[IP conflict] "};
constexpr LocalText kSilent = {"【未应答】", "[no answer] "};

/// What systems have their own names stand for. No player is found from there, and earlier versions
/// remembered it where there was no network.
constexpr const char* kOwnNames[] = {"127.0.0.1", "127.0.1.1"};

/// How many leading octets name the network of an address.
std::size_t NetworkOctets(const Ipv4Address& address) {
    const int first = address.octets[0];
    if (first >= 1 && first <= 127) return 1;
    if (first >= 128 && first <= 191) return 2;
    if (first >= 192 && first <= 223) return 3;
    return 0;
}

bool IsLess(const DeviceRecord& a, const DeviceRecord& b, DeviceColumn column) {
    switch (column) {
        case DeviceColumn::kNumber:
        case DeviceColumn::kIp: return ParseIpv4(a.ip) < ParseIpv4(b.ip);
        case DeviceColumn::kMac: return a.mac < b.mac;
        case DeviceColumn::kTcpPort: return a.tcpPort < b.tcpPort;
        case DeviceColumn::kId: return a.id < b.id;
        case DeviceColumn::kVersion:
            return std::tie(a.versionWord, a.fpgaVersion, a.versionText) <
                   std::tie(b.versionWord, b.fpgaVersion, b.versionText);
        case DeviceColumn::kRemarks: return a.remarks < b.remarks;
    }
    return false;
}

}  // namespace

const LocalText kOtherNetworkQuestion = {
    "本机IP与设备IP不属于同一网段，是否继续？",
    "The local IP and device IP do not belong to the same network segment. "
    "Do you want to continue?"};

std::optional<LocalText> RefusalOfChoice(ChoiceMode mode, std::size_t chosen) {
    if (chosen == 0) return mode == ChoiceMode::kMultiple ? kTickFirst : kChooseFirst;
    if (chosen > kMostDevices) return kTooMany;
    return std::nullopt;
}

std::optional<LocalText> RefusalOfUpload(const std::vector<DeviceRecord>& chosen) {
    constexpr std::uint16_t kLeastPort = 1025;
    const auto cannotBeSentTo = [](const DeviceRecord& device) {
        return device.ip.empty() || device.tcpPort < kLeastPort;
    };
    if (chosen.empty() || std::ranges::any_of(chosen, cannotBeSentTo)) return kTickFirst;
    std::set<std::string> addresses;
    for (const DeviceRecord& device : chosen) addresses.insert(device.ip);
    return addresses.size() < chosen.size() ? std::optional(kOneAddress) : std::nullopt;
}

std::optional<LocalText> RefusalOfWall(const std::vector<DeviceRecord>& chosen) {
    return chosen.size() > kMostDevices ? kTooMany : RefusalOfUpload(chosen);
}

bool IsSameNetwork(const std::string& localIp, const std::string& deviceIp) {
    const auto local = ParseIpv4(localIp);
    const auto device = ParseIpv4(deviceIp);
    if (!local || !device) return true;
    const auto count = static_cast<std::ptrdiff_t>(NetworkOctets(*local));
    return std::equal(local->octets.begin(), local->octets.begin() + count, device->octets.begin());
}

void SortDevices(std::vector<DeviceRecord>& devices, DeviceColumn column, bool ascending) {
    std::ranges::stable_sort(devices, [=](const DeviceRecord& a, const DeviceRecord& b) {
        return ascending ? IsLess(a, b, column) : IsLess(b, a, column);
    });
}

NumberWidths SortableWidths(const SystemVersion& system) {
    const bool isNarrow = system.isWindows && system.major == 6 && system.minor == 1;
    return isNarrow ? NumberWidths{5, 10} : NumberWidths{10, 20};
}

std::string DeviceCell(const DeviceRecord& device, std::size_t row, DeviceColumn column,
                       const NumberWidths& widths) {
    switch (column) {
        case DeviceColumn::kNumber: return fmt::sprintf("%*d", widths.number, row + 1);
        case DeviceColumn::kIp: return device.ip;
        case DeviceColumn::kMac: return device.mac;
        case DeviceColumn::kTcpPort: return fmt::sprintf("%*d", widths.tcpPort, device.tcpPort);
        case DeviceColumn::kId: return device.id;
        case DeviceColumn::kVersion: return device.versionText;
        case DeviceColumn::kRemarks:
            return (device.sharesAddress ? Localized(kSharedAddress) : "") +
                   (device.silent ? Localized(kSilent) : "") + device.remarks;
    }
    return "";
}

std::string PlayerText(const DeviceRecord& device) {
    return device.ip + "   " + device.id + (device.remarks.empty() ? "" : "   ") + device.remarks;
}

std::string ChooseLocalAddress(const std::vector<LocalAdapter>& offered,
                               const std::string& remembered) {
    if (!remembered.empty() && std::ranges::find(kOwnNames, remembered) == std::end(kOwnNames))
        return remembered;
    return offered.empty() ? "" : offered.front().ip;
}

}  // namespace sontaro
