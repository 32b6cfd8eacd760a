// One command of a timeline.
#pragma once

#include <cstdint>
#include <string>

namespace sontaro {

/// Ways out of a player, in the order that documents number them.
enum TimelinePort : std::int32_t {
    kPortSerial0 = 0,
    kPortSerial3 = 3,
    kPortRs485 = 4,
    kPortTcp = 5,
    kPortUdp = 6,
    kPortDmx512 = 7,
    kTimelinePorts = 8,  ///< so many there are
};

/// Whether there is such a port; a document may hold any number.
[[nodiscard]] constexpr bool IsTimelinePort(std::int32_t port) {
    return port >= 0 && port < kTimelinePorts;
}
/// Whether it leads to a peer with an address.
[[nodiscard]] constexpr bool IsNetworkPort(std::int32_t port) {
    return port == kPortTcp || port == kPortUdp;
}
[[nodiscard]] constexpr bool IsSerialPort(std::int32_t port) {
    return port >= kPortSerial0 && port <= kPortSerial3;
}

/// Most of what the player's own fields take; what a document holds beyond is kept.
inline constexpr std::int64_t kLastPlayer = 65'535;
inline constexpr std::int32_t kLastPeerPort = 65'535;

/// A video of a player; what its commands belong to. Texts are UTF-8.
struct VideoKey {
    std::int64_t player = 0;  ///< from 0
    std::string typeName = {};
    std::string videoName = {};

    bool operator==(const VideoKey&) const = default;
};

/// A command that a player sends at a moment of a video. Texts are UTF-8.
struct TimeNode {
    std::int64_t player = 0;    ///< from 0
    std::string typeName = {};  ///< the category of the video
    std::string videoName = {};
    std::int64_t time = 0;  ///< milliseconds of the video
    std::int32_t port = 0;  ///< `TimelinePort`
    std::string ip = {};    ///< of the peer, dotted; may be empty
    std::int32_t peerPort = 0;
    std::string command = {};  ///< hexadecimal; see base/hex_command.h

    bool operator==(const TimeNode&) const = default;
};

}  // namespace sontaro
