// Finding players without a window.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stop_token>
#include <string_view>
#include <vector>

#include "devices/device_record.h"
#include "devices/device_remarks.h"
#include "link/socket.h"

namespace sontaro {

/// Whom to ask, and when it is enough.
struct FindPlan {
    /// The addresses of this machine to ask from; empty: for a broadcast those that scans offer,
    /// for single addresses whatever leads there.
    std::vector<std::string> localAddresses = {};
    /// The players to ask; empty: all, by a broadcast.
    std::vector<Ipv4Address> asked = {};
    /// Whether those that have answered are all that are wanted, which ends the search. Where
    /// single addresses are asked it ends as well when each of them has answered.
    std::function<bool(const std::vector<DeviceRecord>&)> isEnough = [](const auto&) {
        return false;
    };
    /// How long a broadcast that has found enough listens on: players that share a name answer at
    /// about the same time.
    std::chrono::milliseconds timeForNamesakes{100};
    int rounds = 4;                             ///< whoever has not answered is asked again
    std::chrono::milliseconds roundTime{1000};  ///< of a round, in which answers come
    const DeviceRemarks* remarks = nullptr;     ///< the user's notes; absent: none
    std::stop_token stop = {};                  ///< ends the search at once
};

/// Asks and waits; who has answered, by address. Two players at one address are both there, and
/// marked. At most a hundred single addresses are asked in a second, however many there are. Fails,
/// with a reason for the user, when none of the local addresses can be asked from. Any thread,
/// which blocks.
[[nodiscard]] Result<std::vector<DeviceRecord>> FindPlayers(const FindPlan& plan);

/// The addresses in a range such as "192.168.1.0/24", without those of the network and the
/// broadcast where it has them, "192.168.1.10-20", or a single address. None for any other text,
/// and for more than 65,536 addresses.
[[nodiscard]] std::optional<std::vector<Ipv4Address>> AddressesIn(std::string_view range);

}  // namespace sontaro
