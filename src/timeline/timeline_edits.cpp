#include "timeline/timeline_edits.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

#include "base/hex_command.h"
#include "timeline/node_checks.h"

namespace sontaro {

namespace {

/// Calls `visit(id, node)` for each chosen node in the order of the rows.
template <class Visit>
void VisitChosen(const TimelineDocument& document, ChosenNodes chosen, Visit visit) {
    const std::unordered_set<NodeId> ids(chosen.begin(), chosen.end());
    for (const SharedGroup& group : document.Order())
        for (const GroupNode& node : group->nodes)
            if (ids.contains(node.id)) visit(node.id, NodeOf(*group, node));
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

void Give(const CommonValues& values, TimeNode& node) {
    Give(values.player, node.player);
    Give(values.typeName, node.typeName);
    Give(values.videoName, node.videoName);
    Give(values.port, node.port);
    Give(values.ip, node.ip);
    Give(values.peerPort, node.peerPort);
    if (values.command) node.command = NormalizedHexCommand(*values.command).value_or("");
}

void GiveVideo(const VideoKey& video, TimeNode& node) {
    node.player = video.player;
    node.typeName = video.typeName;
    node.videoName = video.videoName;
}

std::vector<TimeNode> NodesFor(const NodeGroup& group, const VideoKey& video) {
    std::vector<TimeNode> nodes;
    nodes.reserve(group.nodes.size());
    for (const GroupNode& node : group.nodes)
        GiveVideo(video, nodes.emplace_back(NodeOf(group, node)));
    return nodes;
}

}  // namespace

void DeleteNodes(TimelineDocument& document, ChosenNodes chosen) {
    document.Apply({{chosen.begin(), chosen.end()}, {}, {}});
}

NodeIds DuplicateNodes(TimelineDocument& document, ChosenNodes chosen) {
    TimelineChange change;
    VisitChosen(document, chosen,
                [&](NodeId, TimeNode node) { change.inserted.push_back(std::move(node)); });
    return document.Apply(change);
}

bool ShiftNodes(TimelineDocument& document, ChosenNodes chosen, std::int64_t milliseconds,
                TimelineDocument::Series series) {
    TimelineChange change;
    bool possible = true;
    VisitChosen(document, chosen, [&](NodeId id, TimeNode node) {
        const std::optional<std::int64_t> moved = Moved(node.time, milliseconds);
        possible = possible && moved;
        node.time = moved.value_or(node.time);
        change.replaced.push_back({id, std::move(node)});
    });
    if (possible && milliseconds != 0) document.Apply(change, series);
    return possible;
}

std::optional<LocalText> RefusalOf(const CommonValues& values) {
    NodeEntry entry;
    entry.port = values.ip && !values.ip->empty() ? kPortTcp : kPortSerial0;
    entry.ip = values.ip.value_or("");
    entry.command = values.command.value_or("00");
    return RefusalOf(entry);
}

void ChangeNodes(TimelineDocument& document, ChosenNodes chosen, const CommonValues& values) {
    TimelineChange change;
    VisitChosen(document, chosen, [&](NodeId id, TimeNode node) {
        const TimeNode before = node;
        Give(values, node);
        if (node != before) change.replaced.push_back({id, std::move(node)});
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
    return document.Apply({{}, {}, NodesFor(*group, target)});
}

NodeIds MergeGroups(TimelineDocument& document, const std::vector<MergedGroup>& groups) {
    TimelineChange change;
    for (const MergedGroup& merged : groups)
        std::ranges::move(NodesFor(*merged.group, merged.video),
                          std::back_inserter(change.inserted));
    return document.Apply(change);
}

}  // namespace sontaro
