// Which players may be chosen, and in what order they are handed on.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/local_text.h"
#include "base/system_version.h"
#include "devices/device_record.h"
#include "link/local_adapters.h"

namespace sontaro {

/// Most players that can be chosen at a time.
inline constexpr std::size_t kMostDevices = 8;

enum class ChoiceMode { kSingle, kMultiple };

/// Why this number of chosen players cannot be confirmed; none when it can.
[[nodiscard]] std::optional<LocalText> RefusalOfChoice(ChoiceMode mode, std::size_t chosen);

/// Why these players cannot be chosen to be sent to one after another: there has to be one at
/// least, each with an address of its own and a port beyond those of the system. None when they
/// can.
[[nodiscard]] std::optional<LocalText> RefusalOfUpload(const std::vector<DeviceRecord>& chosen);

/// Why these players cannot be chosen together as those of a wall, which has at most
/// `kMostDevices` of them besides. None when they can.
[[nodiscard]] std::optional<LocalText> RefusalOfWall(const std::vector<DeviceRecord>& chosen);

/// The question to ask when a player is in another network than the local address.
extern const LocalText kOtherNetworkQuestion;

/// Whether both dotted addresses belong to one network by the class of the local address: the
/// first octet counts for 1 to 127, two octets for 128 to 191, three for 192 to 223. Any other
/// local address is in the same network as every player. The test knows no netmask: the players'
/// users rely on it as it is.
[[nodiscard]] bool IsSameNetwork(const std::string& localIp, const std::string& deviceIp);

/// The columns of a device list.
enum class DeviceColumn { kNumber, kIp, kMac, kTcpPort, kId, kVersion, kRemarks };

/// Sorts by a column, numbers and addresses by value; rows that are alike keep their order.
void SortDevices(std::vector<DeviceRecord>& devices, DeviceColumn column, bool ascending);

/// Characters to which the numbers of a device list are filled up with blanks at their left.
struct NumberWidths {
    int number = 0;
    int tcpPort = 0;

    bool operator==(const NumberWidths&) const = default;
};

/// The widths that have numbers in their order when they are sorted as texts. On one system,
/// Windows 6.1, they have always been half as wide as on all others.
[[nodiscard]] NumberWidths SortableWidths(const SystemVersion& system);

/// What stands in a column of a device list; `row` counts from 0.
[[nodiscard]] std::string DeviceCell(const DeviceRecord& device, std::size_t row,
                                     DeviceColumn column, const NumberWidths& widths = {});

/// A player as headings name it: its address, its ID and the user's note about it.
[[nodiscard]] std::string PlayerText(const DeviceRecord& device);

/// Where the preferences have the local address that has served last.
inline constexpr const char* kLocalAddressKey = "localAddress";

/// The local address to show at first: the remembered one even when it is no longer on offer, as
/// silently scanning from another network would look like dead players; else the first on offer;
/// empty when there is none at all. An address that stands for the machine's own name is not
/// remembered.
[[nodiscard]] std::string ChooseLocalAddress(const std::vector<LocalAdapter>& offered,
                                             const std::string& remembered);

}  // namespace sontaro
