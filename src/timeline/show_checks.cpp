#include "timeline/show_checks.h"

#include <fmt/printf.h>

#include <algorithm>
#include <tuple>

#include "timeline/node_checks.h"
#include "timeline/time_text.h"
#include "timeline/timeline_texts.h"

namespace sontaro {

namespace {

using Kind = ShowFinding::Kind;

constexpr std::int64_t kPlayersWithVideos = 4;
constexpr const char* kNoAddress = "0.0.0.0";

// clang-format off
constexpr LocalText kSameMoment = {"%s：与另一条命令同时从同一端口（%s）发出。",
                                   "%s: another command goes out over the same port (%s) at the same moment."};
constexpr LocalText kTooClose = {"%s：%s 上的下一条命令在 %d 毫秒后，早于本命令发送完毕。",
                                 "%s: the next command on %s comes %d ms later, before this one has gone out."};
constexpr LocalText kNoType = {"%s：播放器没有类别“%s”。", "%s: the player does not have the category \"%s\"."};
constexpr LocalText kNoVideo = {"%s：播放器没有视频“%s”。", "%s: the player does not have the video \"%s\"."};
constexpr LocalText kNoPeer = {"%s：%s 没有有效的 IP 地址或网络端口。", "%s: %s has no IP address or port to send to."};
constexpr LocalText kOutOfRange = {"%s：%s", "%s: %s"};
// clang-format on

constexpr TimelineColumn kRangedColumns[] = {TimelineColumn::kPlayer, TimelineColumn::kTime,
                                             TimelineColumn::kPort, TimelineColumn::kPeerPort,
                                             TimelineColumn::kCommand};

/// What takes one command after another; the peer counts for network ports alone.
auto LineOf(const GroupNode& node) {
    static const std::string nobody;
    const bool isNetwork = IsNetworkPort(node.port);
    return std::tuple<std::int32_t, const std::string&, std::int32_t>(
        node.port, isNetwork ? node.ip : nobody, isNetwork ? node.peerPort : 0);
}

/// Milliseconds that a command takes on a serial line, rounded up.
std::int64_t DurationOf(const GroupNode& node, int baudRate) {
    constexpr std::int64_t kBitsPerByte = 10;
    constexpr std::int64_t kPerSecond = 1000;
    const auto bytes = static_cast<std::int64_t>(node.command.size() / 2);
    return (bytes * kBitsPerByte * kPerSecond + baudRate - 1) / baudRate;
}

std::string FirstCaution(const TimeNode& node) {
    for (const TimelineColumn column : kRangedColumns)
        if (auto caution = CellCaution(node, column)) return *std::move(caution);
    return "";
}

/// Finds what there is to be found in one group.
class GroupCheck {
   public:
    GroupCheck(const NodeGroup& group, int baudRate)
        : group_(group), baudRate_(std::max(baudRate, 1)) {}

    /// Adds to `findings` in the order of the rows.
    void Run(const KnownVideos* videos, std::vector<ShowFinding>& findings) {
        if (videos != nullptr) CheckVideo(*videos);
        for (std::size_t place = 0; place < group_.nodes.size(); ++place) CheckNode(place);
        CheckLines();
        std::ranges::stable_sort(found_, {}, &Placed::place);
        for (const Placed& placed : found_) findings.push_back(placed.finding);
    }

   private:
    void CheckVideo(const KnownVideos& videos) {
        if (group_.player < 0 || group_.player >= kPlayersWithVideos) return;
        const NodeId first = group_.nodes.front().id;
        if (!videos.hasType(group_.player, group_.type->text))
            Add({Kind::kNoType, first}, 0);
        else if (!videos.hasVideo(group_.player, group_.type->text, group_.video->text))
            Add({Kind::kNoVideo, first}, 0);
    }

    void CheckNode(std::size_t place) {
        const GroupNode& node = group_.nodes[place];
        if (IsNetworkPort(node.port) &&
            (node.peerPort == 0 || node.ip == kNoAddress || !IsCompleteAddress(node.ip)))
            Add({Kind::kNoPeer, node.id}, place);
        if (!FirstCaution(NodeOf(group_, node)).empty()) Add({Kind::kOutOfRange, node.id}, place);
    }

    /// Neighbours in time on each line.
    void CheckLines() {
        std::vector<std::size_t> places(group_.nodes.size());
        for (std::size_t place = 0; place < places.size(); ++place) places[place] = place;
        const auto key = [this](std::size_t place) {
            const GroupNode& node = group_.nodes[place];
            return std::tuple_cat(LineOf(node), std::tuple(node.time));
        };
        std::ranges::stable_sort(places, {}, key);
        std::size_t latest = 0;  // of those so far on the line, whose bytes end last
        for (std::size_t i = 1; i < places.size(); ++i) {
            const bool isSameLine =
                LineOf(group_.nodes[places[i - 1]]) == LineOf(group_.nodes[places[i]]);
            if (isSameLine) CheckNeighbours(places[i - 1], places[latest], places[i]);
            if (!isSameLine || EndOf(places[i]) >= EndOf(places[latest])) latest = i;
        }
    }

    void CheckNeighbours(std::size_t place, std::size_t latestPlace, std::size_t nextPlace) {
        const GroupNode& node = group_.nodes[place];
        const GroupNode& latest = group_.nodes[latestPlace];
        const GroupNode& next = group_.nodes[nextPlace];
        const bool isSerial = IsSerialPort(node.port) || node.port == kPortRs485;
        if (node.time == next.time)
            Add({Kind::kSameMoment, next.id, node.id}, nextPlace);
        else if (isSerial && latest.time >= 0 && next.time < EndOf(latestPlace))
            Add({Kind::kTooClose, latest.id, next.id, next.time - latest.time}, latestPlace);
    }

    /// When a command's bytes have gone out, if its port is a serial one.
    [[nodiscard]] std::int64_t EndOf(std::size_t place) const {
        const GroupNode& node = group_.nodes[place];
        const std::int64_t duration = DurationOf(node, baudRate_);
        return node.time > INT64_MAX - duration ? INT64_MAX : node.time + duration;
    }

    void Add(const ShowFinding& finding, std::size_t place) { found_.push_back({place, finding}); }

    struct Placed {
        std::size_t place;  // of the finding's node in the group
        ShowFinding finding;
    };

    const NodeGroup& group_;
    const int baudRate_;
    std::vector<Placed> found_;
};

/// Where in the show a node is.
std::string MomentText(const TimeNode& node) {
    return PlayerName(node.player) + ' ' + node.typeName + ' ' + node.videoName + ' ' +
           SecondsText(node.time);
}

}  // namespace

std::vector<ShowFinding> CheckShow(const GroupOrder& order, int baudRate,
                                   const KnownVideos* videos) {
    std::vector<ShowFinding> findings;
    for (const SharedGroup& group : order) GroupCheck(*group, baudRate).Run(videos, findings);
    return findings;
}

std::string Told(const ShowFinding& finding, const TimelineDocument& document) {
    const std::optional<TimeNode> node = document.Find(finding.node);
    if (!node) return "";
    const std::string where = MomentText(*node);
    const std::string port = Localized(PortName(node->port));
    switch (finding.kind) {
        case Kind::kSameMoment: return fmt::sprintf(Localized(kSameMoment), where, port);
        case Kind::kTooClose:
            return fmt::sprintf(Localized(kTooClose), where, port, finding.number);
        case Kind::kNoType: return fmt::sprintf(Localized(kNoType), where, node->typeName);
        case Kind::kNoVideo: return fmt::sprintf(Localized(kNoVideo), where, node->videoName);
        case Kind::kNoPeer: return fmt::sprintf(Localized(kNoPeer), where, port);
        case Kind::kOutOfRange:
            return fmt::sprintf(Localized(kOutOfRange), where, FirstCaution(*node));
    }
    return "";
}

}  // namespace sontaro
