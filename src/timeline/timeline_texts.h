// What the timeline's table says.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "base/local_text.h"
#include "timeline/time_node.h"

namespace sontaro {

/// The table's columns in their order.
enum class TimelineColumn : std::size_t {
    kPlayer,
    kType,
    kVideo,
    kTime,
    kMode,
    kPort,
    kIp,
    kPeerPort,
    kCommand,
    kTest,
};
inline constexpr std::size_t kTimelineColumns = 10;

inline constexpr std::array<LocalText, kTimelineColumns> kTimelineHeaders = {{
    {"播放器", "Player"},
    {"类别", "Type"},
    {"视频", "Video"},
    {"时间(秒)", "Time(S)"},
    {"模式", "Mode"},
    {"端口", "Port"},
    {"IP地址", "IP"},
    {"网络端口", "Peer port"},
    {"命令", "Command"},
    {"测试", "test"},
}};

/// Of the ports, in the order of their numbers.
inline constexpr std::array<LocalText, kTimelinePorts> kTimelinePortNames = {{
    {"232串口0", "232:0"},
    {"232串口1", "232:1"},
    {"232串口2", "232:2"},
    {"232串口3", "232:3"},
    {"485串口", "485"},
    {"TCP", "TCP"},
    {"UDP", "UDP"},
    {"DMAX512", "DMAX512"},
}};

/// Of a timeline that is too long for a player.
inline constexpr LocalText kTooManyCommands = {"命令条数太多了,删除一些吧！",
                                               "There are too many commands, please delete some!"};

/// With how many.
inline constexpr LocalText kSomeHidden = {"其中 %d 条因筛选而未显示。",
                                          "The filter hides %d of the ticked commands."};

/// What stands for a port; one that there is not is shown as the first one.
[[nodiscard]] const LocalText& PortName(std::int32_t port);
/// The kind of that port.
[[nodiscard]] const LocalText& ModeName(std::int32_t port);
/// "Player%d", counted from 1.
[[nodiscard]] std::string PlayerName(std::int64_t player);
/// A video with its player and category.
[[nodiscard]] std::string VideoName(const VideoKey& video);

/// What a cell shows.
[[nodiscard]] std::string CellText(const TimeNode& node, TimelineColumn column);

/// What is odd about what a cell stands for, which is marked and kept; none when nothing is.
[[nodiscard]] std::optional<std::string> CellCaution(const TimeNode& node, TimelineColumn column);

}  // namespace sontaro
