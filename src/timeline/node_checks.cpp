#include "timeline/node_checks.h"

#include <algorithm>

#include "base/hex_command.h"
#include "link/socket.h"

namespace sontaro {

namespace {

struct CheckRow {
    bool (*fails)(const NodeEntry& entry);
    LocalText refusal;
};

bool HasCommand(const NodeEntry& entry) {
    return entry.command.find_first_not_of(" \t\r\n") != std::string::npos;
}

/// In the order in which they are made.
constexpr CheckRow kChecks[] = {
    {[](const NodeEntry& entry) {
         return IsNetworkPort(entry.port) && !IsCompleteAddress(entry.ip);
     },
     {"IP参数有问题！", "IP parameters are problematic!"}},
    {[](const NodeEntry& entry) { return entry.time.minutes > kMostMinutes; },
     {"时间节点:分设置有问题<60！", "Time node: There is an issue with the minute setting <60!"}},
    {[](const NodeEntry& entry) { return entry.time.seconds > kMostSeconds; },
     {"时间节点:秒设置有问题<60！", "Time node: There is an issue with the second setting <60!"}},
    {[](const NodeEntry& entry) { return entry.time.milliseconds > kMostMilliseconds; },
     {"时间节点:毫秒设置有问题<1000！",
      "Time node: There is an issue with the millisecond setting <1000!"}},
    {[](const NodeEntry& entry) { return !HasCommand(entry); }, {"命令未输入！", "Cmd not input!"}},
    {[](const NodeEntry& entry) { return !NormalizedHexCommand(entry.command); },
     {"命令输入错误!", "Cmd input error!"}},
};

}  // namespace

bool IsCompleteAddress(const std::string& ip) { return ParseIpv4(ip).has_value(); }

std::optional<LocalText> RefusalOf(const NodeEntry& entry) {
    const auto* failed =
        std::ranges::find_if(kChecks, [&](const CheckRow& check) { return check.fails(entry); });
    if (failed == std::end(kChecks)) return std::nullopt;
    return failed->refusal;
}

TimeNode NodeOf(const NodeEntry& entry, const TimeNode* original) {
    TimeNode node{entry.player, entry.typeName, entry.videoName, 0, entry.port};
    ClockTime time = entry.time;
    time.hours = std::min(time.hours, kMostHours);
    const bool keepsTime = original != nullptr && time == ClockTimeOf(original->time);
    node.time = keepsTime ? original->time : MillisecondsOf(time);
    const bool keepsPort = original != nullptr && entry.port == original->port;
    const bool keepsIp = keepsPort && entry.ip == original->ip;
    const bool keepsPeerPort = keepsPort && entry.peerPort == original->peerPort;
    if (keepsIp || IsCompleteAddress(entry.ip)) node.ip = entry.ip;
    if (keepsPeerPort || IsNetworkPort(entry.port)) node.peerPort = entry.peerPort;
    node.command = NormalizedHexCommand(entry.command).value_or("");
    return node;
}

NodeEntry EntryOf(const TimeNode& node) {
    return {node.player, node.typeName, node.videoName, ClockTimeOf(node.time),
            node.port,   node.ip,       node.peerPort,  node.command};
}

}  // namespace sontaro
