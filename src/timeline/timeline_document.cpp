#include "timeline/timeline_document.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "timeline/patch_builder.h"

namespace sontaro {

Status TimelineDocument::Take(std::string_view text, TimelineSource source) {
    Result<TimelineContent> content = Read(text, source);
    if (!content) return Error{content.reason()};
    Replace(std::move(*content));
    return Done{};
}

void TimelineDocument::Replace(TimelineContent content) {
    for (const SharedGroup& group : content.order)
        for (GroupNode& node : group->nodes) node.id = nextId_++;
    const bool isFirst = NodeCount() == 0 && !CanUndo() && !CanRedo();
    Do({{}, std::move(content.order), std::move(content.others)}, 0);
    if (isFirst) ForgetSteps();
}

std::size_t TimelineDocument::TextBytes() const {
    return JsonBytes(groups_.Bytes(), groups_.Others());
}

TimeNode TimelineDocument::NodeAt(std::size_t row) const {
    const NodeGroups::Place place = groups_.At(row);
    const NodeGroup& group = *Order()[place.group];
    return NodeOf(group, group.nodes[place.node]);
}

NodeId TimelineDocument::IdAt(std::size_t row) const {
    const NodeGroups::Place place = groups_.At(row);
    return Order()[place.group]->nodes[place.node].id;
}

std::optional<std::size_t> TimelineDocument::RowOf(NodeId id) const {
    for (std::size_t row = 0; const SharedGroup& group : Order()) {
        const auto found = std::ranges::find(group->nodes, id, &GroupNode::id);
        row += static_cast<std::size_t>(found - group->nodes.begin());
        if (found != group->nodes.end()) return row;
    }
    return std::nullopt;
}

std::optional<TimeNode> TimelineDocument::Find(NodeId id) const {
    const std::optional<std::size_t> row = RowOf(id);
    if (!row) return std::nullopt;
    return NodeAt(*row);
}

NodeIds TimelineDocument::Existing(std::span<const NodeId> ids) const {
    const std::unordered_set<NodeId> wanted(ids.begin(), ids.end());
    NodeIds existing;
    for (const SharedGroup& group : Order())
        for (const GroupNode& node : group->nodes)
            if (wanted.contains(node.id)) existing.push_back(node.id);
    return existing;
}

NodeIds TimelineDocument::Apply(const TimelineChange& change, Series series) {
    PatchBuilder builder(groups_, names_, nextId_);
    TimelinePatch patch = builder.Build(change);
    if (!patch.groups.empty()) Do(std::move(patch), series);
    return builder.NewIds();
}

void TimelineDocument::Do(TimelinePatch patch, Series series) {
    groups_.Toggle(patch);
    history_.Add(std::move(patch), series);
}

bool TimelineDocument::Toggle(TimelinePatch* patch) {
    if (patch != nullptr) groups_.Toggle(*patch);
    return patch != nullptr;
}

}  // namespace sontaro
