#include "timeline/timeline_edits.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

#include "base/hex_command.h"
#include "timeline/node_checks.h"

namespace sontaro {

namespace {

/// Calls `visit(group, node)` for each chosen node in the order of the rows.
template <class Visit>
void VisitChosen(const TimelineDocument& document, ChosenNodes chosen, Visit visit) {
    const std::unordered_set<NodeId> ids(chosen.begin(), chosen.end());
    for (const SharedGroup& group : document.Order())
        for (const GroupNode& node : group->nodes)
            if (ids.contains(node.id)) visit(*group, node);
}

/// The time, moved; none when it would not be one.
std::optional<std::int64_t> Moved(std::int64_t time, std::int64_t distance) {
    constexpr std::int64_t kLatest = std::numeric_limits<std::int64_t>::max();
    if (distance > 0 && time > kLatest - distance) return std::nullopt;
    if (distance < 0 && time < 0) return std::nullopt;
    const std::int64_t moved = time + distance;
    if (moved < 0) return std::nullopt;
    return moved;
}

template <class Value>
void Give(const std::optional<Value>& value, Value& field) {
    if (value) field = *value;
}

/// The node with these values. As in the editor of one node, a port without a peer has no peer
/// port.
TimeNode Given(const CommonValues& values, TimeNode node) {
    const bool getsPort = values.port && *values.port != node.port;
    Give(values.player, node.player);
    Give(values.typeName, node.typeName);
    Give(values.videoName, node.videoName);
    Give(values.port, node.port);
    Give(values.ip, node.ip);
    if (IsNetworkPort(node.port))
        Give(values.peerPort, node.peerPort);
    else if (getsPort)
        node.peerPort = 0;
    if (values.command) node.command = NormalizedHexCommand(*values.command).value_or("");
    return node;
}

/// What the editor of one node would have against these.
std::optional<LocalText> EditorRefusal(std::int32_t port, const std::string& ip,
                                       const std::string& command = "00") {
    NodeEntry entry;
    entry.port = port;
    entry.ip = ip;
    entry.command = command;
    return RefusalOf(entry);
}

void GiveVideo(const VideoKey& video, TimeNode& node) {
    node.player = video.player;
    node.typeName = video.typeName;
    node.videoName = video.videoName;
}

/// Copies of all nodes of a group, for a video.
void AddCopies(const NodeGroup& group, const VideoKey& video, TimelineChange& change) {
    for (const GroupNode& node : group.nodes) {
        change.copied.push_back({NodeOf(group, node), node.others});
        GiveVideo(video, change.copied.back().node);
    }
}

}  // namespace

void DeleteNodes(TimelineDocument& document, ChosenNodes chosen) {
    document.Apply({{chosen.begin(), chosen.end()}, {}, {}});
}

NodeIds DuplicateNodes(TimelineDocument& document, ChosenNodes chosen) {
    TimelineChange change;
    VisitChosen(document, chosen, [&](const NodeGroup& group, const GroupNode& node) {
        change.copied.push_back({NodeOf(group, node), node.others});
    });
    return document.Apply(change);
}

bool ShiftNodes(TimelineDocument& document, ChosenNodes chosen, std::int64_t milliseconds,
                TimelineDocument::Series series) {
    TimelineChange change;
    bool possible = true;
    VisitChosen(document, chosen, [&](const NodeGroup& group, const GroupNode& node) {
        const std::optional<std::int64_t> moved = Moved(node.time, milliseconds);
        possible = possible && moved;
        change.replaced.push_back({node.id, NodeOf(group, node)});
        change.replaced.back().node.time = moved.value_or(node.time);
    });
    if (possible && milliseconds != 0) document.Apply(change, series);
    return possible;
}

std::optional<LocalText> RefusalOf(const CommonValues& values, const TimelineDocument& document,
                                   ChosenNodes chosen) {
    const bool hasAddress = values.ip && !values.ip->empty();
    std::optional<LocalText> refusal =
        EditorRefusal(hasAddress ? kPortTcp : kPortSerial0, values.ip.value_or(""),
                      values.command.value_or("00"));
    VisitChosen(document, chosen, [&](const NodeGroup& group, const GroupNode& node) {
        const TimeNode after = Given(values, NodeOf(group, node));
        const bool isNew = after.port != node.port || after.ip != node.ip;
        if (!refusal && isNew) refusal = EditorRefusal(after.port, after.ip);
    });
    return refusal;
}

void ChangeNodes(TimelineDocument& document, ChosenNodes chosen, const CommonValues& values) {
    TimelineChange change;
    VisitChosen(document, chosen, [&](const NodeGroup& group, const GroupNode& node) {
        const TimeNode before = NodeOf(group, node);
        TimeNode after = Given(values, before);
        if (after != before) change.replaced.push_back({node.id, std::move(after)});
    });
    document.Apply(change);
}

VideoKey VideoOf(const NodeGroup& group) {
    return {group.player, group.type->text, group.video->text};
}

const NodeGroup* FindGroup(const GroupOrder& order, const VideoKey& video) {
    const auto isOf = [&](const SharedGroup& group) {
        return group->player == video.player && group->video->text == video.videoName &&
               group->type->text == video.typeName;
    };
    const auto found = std::ranges::find_if(order, isOf);
    return found == order.end() ? nullptr : found->get();
}

NodeIds CopyVideo(TimelineDocument& document, const VideoKey& source, const VideoKey& target) {
    const NodeGroup* group = FindGroup(document.Order(), source);
    if (group == nullptr) return {};
    TimelineChange change;
    AddCopies(*group, target, change);
    return document.Apply(change);
}

NodeIds MergeGroups(TimelineDocument& document, const std::vector<MergedGroup>& groups) {
    TimelineChange change;
    for (const MergedGroup& merged : groups) AddCopies(*merged.group, merged.video, change);
    return document.Apply(change);
}

}  // namespace sontaro
