#include "timeline/patch_builder.h"

#include <algorithm>
#include <utility>

namespace sontaro {

namespace {

bool IsOf(const NodeGroup& group, const TimeNode& node) {
    return group.player == node.player && group.type->text == node.typeName &&
           group.video->text == node.videoName;
}

}  // namespace

TimelinePatch PatchBuilder::Build(const TimelineChange& change) {
    Replacements replacements;
    for (const NodeId id : change.removed) replacements[id] = nullptr;
    for (const auto& replacement : change.replaced)
        replacements[replacement.id] = &replacement.node;
    if (!replacements.empty())
        for (const SharedGroup& group : groups_.Order()) VisitGroup(group, replacements);
    for (Moved& moved : moved_) Insert(*moved.node, std::move(moved.stored));
    for (const TimeNode& node : change.inserted) Add(node, {});
    for (const TimelineChange::Copy& copy : change.copied) Add(copy.node, copy.others);
    TimelinePatch patch;
    patch.order = OrderAfterwards();
    for (Touched& touched : touched_) patch.groups.push_back(std::move(touched.patch));
    return patch;
}

void PatchBuilder::VisitGroup(const SharedGroup& group, const Replacements& replacements) {
    std::uint32_t gone = 0;
    for (std::uint32_t place = 0; place < group->nodes.size(); ++place) {
        const auto named = replacements.find(group->nodes[place].id);
        if (named == replacements.end()) continue;
        Touched& touched = Touch(group);
        touched.patch.takeAt.push_back(place);
        const TimeNode* node = named->second;
        if (node != nullptr && IsOf(*group, *node)) {
            touched.patch.putAt.push_back(place - gone);
            StoreNode(*node, touched.patch.put.emplace_back(group->nodes[place]));
            continue;
        }
        if (node != nullptr) moved_.push_back({node, group->nodes[place]});
        ++gone;
        --touched.size;
    }
}

void PatchBuilder::Add(const TimeNode& node, const OtherKeys& others) {
    newIds_.push_back(nextId_++);
    GroupNode stored;
    stored.id = newIds_.back();
    stored.others = others;
    Insert(node, std::move(stored));
}

void PatchBuilder::Insert(const TimeNode& node, GroupNode stored) {
    inserts_ = true;
    Touched& touched = Touch(GroupFor(node));
    touched.patch.putAt.push_back(static_cast<std::uint32_t>(touched.size++));
    StoreNode(node, stored);
    touched.patch.put.push_back(std::move(stored));
}

PatchBuilder::Touched& PatchBuilder::Touch(const SharedGroup& group) {
    const auto [known, isNew] = places_.try_emplace(group.get(), touched_.size());
    if (isNew) touched_.push_back({{group, {}, {}, {}}, group->nodes.size()});
    return touched_[known->second];
}

/// The group that a node is inserted into; a new one when there is none.
SharedGroup PatchBuilder::GroupFor(const TimeNode& node) {
    const auto keyOf = [](const NodeGroup& group) {
        return Key(group.player, group.type.get(), group.video.get());
    };
    if (byKey_.empty())
        for (const SharedGroup& group : groups_.Order()) byKey_.emplace(keyOf(*group), group);
    NodeGroup header{node.player, names_.Find(node.typeName), names_.Find(node.videoName)};
    SharedGroup& group = byKey_[keyOf(header)];
    if (!group) {
        header.frameBytes = JsonFrameBytes(header);
        group = std::make_shared<NodeGroup>(std::move(header));
        newGroups_.push_back(group);
    }
    return group;
}

/// Of the groups, if it is another one than now. Only insertions sort: what was read keeps its
/// order until then.
std::optional<GroupOrder> PatchBuilder::OrderAfterwards() {
    const auto isEmpty = [this](const SharedGroup& group) {
        const auto place = places_.find(group.get());
        return place != places_.end() && touched_[place->second].size == 0;
    };
    GroupOrder order = groups_.Order();
    std::erase_if(order, isEmpty);
    order.insert(order.end(), newGroups_.begin(), newGroups_.end());
    if (inserts_) SortGroups(order);
    if (order == groups_.Order()) return std::nullopt;
    return order;
}

}  // namespace sontaro
