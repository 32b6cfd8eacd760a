#include "timeline/node_groups.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace sontaro {

namespace {

/// What a group is compared by; its category's first appearance is found out once for all groups.
struct SortKey {
    const NodeGroup* group;
    std::size_t appearance;  // of its category
    std::size_t place;

    [[nodiscard]] auto AsTuple() const {
        return std::tuple(group->player, group->type->length, group->type->letter, appearance,
                          group->video->length, group->video->letter);
    }
};

bool ComesBefore(const SortKey& one, const SortKey& other) {
    return one.AsTuple() < other.AsTuple();
}

std::vector<SortKey> SortKeys(const GroupOrder& order) {
    std::unordered_map<const GroupName*, std::size_t> appearances;
    std::vector<SortKey> keys;
    keys.reserve(order.size());
    for (const SharedGroup& group : order) {
        const std::size_t place = keys.size();
        const std::size_t appearance =
            appearances.try_emplace(group->type.get(), place).first->second;
        keys.push_back({group.get(), appearance, place});
    }
    return keys;
}

/// Moves the nodes at `places` out of `nodes`, which closes the gaps.
std::vector<GroupNode> TakeOut(std::vector<GroupNode>& nodes,
                               const std::vector<std::uint32_t>& places) {
    std::vector<GroupNode> taken;
    if (places.empty()) return taken;
    taken.reserve(places.size());
    std::size_t target = places.front();
    for (std::size_t from = target; from < nodes.size(); ++from) {
        if (taken.size() < places.size() && places[taken.size()] == from)
            taken.push_back(std::move(nodes[from]));
        else
            nodes[target++] = std::move(nodes[from]);
    }
    nodes.resize(target);
    return taken;
}

/// Moves `put` into `nodes`, each to its place. From behind, so that no node moves twice, and none
/// in front of the first place at all.
void PutIn(std::vector<GroupNode>& nodes, const std::vector<std::uint32_t>& places,
           std::vector<GroupNode>& put) {
    std::size_t from = nodes.size();
    std::size_t left = put.size();
    nodes.resize(from + left);
    for (std::size_t target = nodes.size(); left > 0;)
        if (--target; places[left - 1] == target)
            nodes[target] = std::move(put[--left]);
        else
            nodes[target] = std::move(nodes[--from]);
}

std::size_t TextBytesOf(const std::vector<GroupNode>& nodes) {
    return std::transform_reduce(nodes.begin(), nodes.end(), std::size_t{0}, std::plus(),
                                 [](const GroupNode& node) { return node.bytes; });
}

void ToggleGroup(GroupPatch& patch) {
    std::vector<GroupNode>& nodes = patch.group->nodes;
    patch.group->nodeBytes += TextBytesOf(patch.put);
    if (patch.takeAt == patch.putAt) {
        for (std::size_t i = 0; i < patch.put.size(); ++i)
            std::swap(nodes[patch.putAt[i]], patch.put[i]);
    } else {
        std::vector<GroupNode> taken = TakeOut(nodes, patch.takeAt);
        PutIn(nodes, patch.putAt, patch.put);
        patch.put = std::move(taken);
        std::swap(patch.takeAt, patch.putAt);
    }
    patch.group->nodeBytes -= TextBytesOf(patch.put);
}

/// Whether the patch changes nodes where they are and nothing else.
bool IsInPlace(const TimelinePatch& patch) {
    return !patch.order && !patch.others &&
           std::ranges::all_of(patch.groups,
                               [](const GroupPatch& part) { return part.takeAt == part.putAt; });
}

std::size_t BytesOf(const std::vector<GroupNode>& nodes) {
    constexpr std::size_t kShortText = 15;  // longer ones are kept outside of the record
    std::size_t bytes = nodes.size() * sizeof(GroupNode);
    for (const GroupNode& node : nodes)
        for (const std::string* text : {&node.ip, &node.command})
            if (text->size() > kShortText) bytes += text->capacity();
    return bytes;
}

}  // namespace

std::size_t TimelinePatch::Bytes() const {
    std::size_t bytes = sizeof(TimelinePatch);
    for (const GroupPatch& part : groups)
        bytes += sizeof(GroupPatch) + BytesOf(part.put) +
                 (part.takeAt.size() + part.putAt.size()) * sizeof(std::uint32_t);
    if (!order) return bytes;
    bytes += order->size() * sizeof(SharedGroup);
    if (others)  // another document, which nothing but this patch keeps
        for (const SharedGroup& group : *order) bytes += sizeof(NodeGroup) + BytesOf(group->nodes);
    return bytes;
}

bool TimelinePatch::Absorb(const TimelinePatch& later) {
    const auto sameNodes = [](const GroupPatch& one, const GroupPatch& other) {
        return one.group == other.group && one.takeAt == other.takeAt;
    };
    return IsInPlace(*this) && IsInPlace(later) &&
           std::ranges::equal(groups, later.groups, sameNodes);
}

NodeGroups::Place NodeGroups::At(std::size_t row) const {
    const auto next = std::ranges::upper_bound(firstRows_, row);
    const auto group = static_cast<std::size_t>(next - firstRows_.begin()) - 1;
    return {group, row - firstRows_[group]};
}

void NodeGroups::Toggle(TimelinePatch& patch) {
    for (GroupPatch& part : patch.groups) ToggleGroup(part);
    if (patch.order) std::swap(order_, *patch.order);
    if (patch.others) std::swap(others_, *patch.others);
    CountRows();
}

void NodeGroups::CountRows() {
    firstRows_.assign(1, 0);
    bytes_ = 0;
    for (const SharedGroup& group : order_) {
        firstRows_.push_back(firstRows_.back() + group->nodes.size());
        bytes_ += group->frameBytes + group->nodeBytes;
    }
}

void SortGroups(GroupOrder& order) {
    std::vector<SortKey> keys = SortKeys(order);
    if (std::ranges::is_sorted(keys, ComesBefore)) return;
    std::ranges::stable_sort(keys, ComesBefore);
    GroupOrder sorted;
    sorted.reserve(order.size());
    for (const SortKey& key : keys) sorted.push_back(std::move(order[key.place]));
    order = std::move(sorted);
}

}  // namespace sontaro
