#include "timeline/timeline_texts.h"

#include <fmt/printf.h>

#include "base/hex_command.h"
#include "timeline/time_text.h"

namespace sontaro {

namespace {

constexpr LocalText kPlayerName = {"播放器%d", "Player%d"};
constexpr LocalText kModes[] = {
    {"串口", "Serial"}, {"RS-485", "RS-485"}, {"网络", "Network"}, {"DMX512", "DMX512"}};

constexpr LocalText kOddPlayer = {"播放器编号 %d 超出范围 0 到 65535。",
                                  "The player's number %d is not between 0 and 65535."};
constexpr LocalText kOddTime = {"时间不能为负数。", "A time cannot be negative."};
constexpr LocalText kOddPort = {"没有编号为 %d 的端口，显示为第一个端口，原值保留。",
                                "There is no port %d. The first one is shown, the number is kept."};
constexpr LocalText kOddPeerPort = {"网络端口 %d 超出范围 0 到 65535。",
                                    "The peer port %d is not between 0 and 65535."};
constexpr LocalText kOddCommand = {"命令不是十六进制字节。",
                                   "The command is not hexadecimal bytes."};

std::optional<std::string> If(bool odd, const LocalText& text, std::int64_t number = 0) {
    if (!odd) return std::nullopt;
    return fmt::sprintf(Localized(text), number);
}

}  // namespace

const LocalText& PortName(std::int32_t port) {
    return kTimelinePortNames[IsTimelinePort(port) ? static_cast<std::size_t>(port) : 0];
}

const LocalText& ModeName(std::int32_t port) {
    if (IsNetworkPort(port)) return kModes[2];
    if (port == kPortRs485) return kModes[1];
    return port == kPortDmx512 ? kModes[3] : kModes[0];
}

std::string PlayerName(std::int64_t player) {
    const bool hasNext = player < INT64_MAX;
    return fmt::sprintf(Localized(kPlayerName), hasNext ? player + 1 : player);
}

std::string VideoName(const VideoKey& video) {
    return PlayerName(video.player) + " / " + video.typeName + " / " + video.videoName;
}

std::string CellText(const TimeNode& node, TimelineColumn column) {
    switch (column) {
        case TimelineColumn::kPlayer: return PlayerName(node.player);
        case TimelineColumn::kType: return node.typeName;
        case TimelineColumn::kVideo: return node.videoName;
        case TimelineColumn::kTime: return SecondsText(node.time);
        case TimelineColumn::kMode: return Localized(ModeName(node.port));
        case TimelineColumn::kPort: return Localized(PortName(node.port));
        case TimelineColumn::kIp: return node.ip;
        case TimelineColumn::kPeerPort: return std::to_string(node.peerPort);
        case TimelineColumn::kCommand: return node.command;
        case TimelineColumn::kTest:
            return Localized(kTimelineHeaders[static_cast<std::size_t>(column)]);
    }
    return "";
}

std::optional<std::string> CellCaution(const TimeNode& node, TimelineColumn column) {
    switch (column) {
        case TimelineColumn::kPlayer:
            return If(node.player < 0 || node.player > kLastPlayer, kOddPlayer, node.player);
        case TimelineColumn::kTime: return If(node.time < 0, kOddTime);
        case TimelineColumn::kPort: return If(!IsTimelinePort(node.port), kOddPort, node.port);
        case TimelineColumn::kPeerPort:
            return If(node.peerPort < 0 || node.peerPort > kLastPeerPort, kOddPeerPort,
                      node.peerPort);
        case TimelineColumn::kCommand: return If(!IsHexCommand(node.command), kOddCommand);
        default: return std::nullopt;
    }
}

}  // namespace sontaro
