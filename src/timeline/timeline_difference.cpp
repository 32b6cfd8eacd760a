#include "timeline/timeline_difference.h"

#include <fmt/printf.h>

#include <algorithm>
#include <iterator>
#include <tuple>

#include "timeline/timeline_json.h"
#include "timeline/timeline_texts.h"

namespace sontaro {

namespace {

constexpr std::size_t kMostExamples = 3;

constexpr LocalText kEqual = {"播放器已确认，读回的时间轴一致。",
                              "Confirmed and equal: the player holds this timeline."};
constexpr LocalText kDifferent = {"播放器已确认，但读回的时间轴不同：缺少 %d 条，多出 %d 条。",
                                  "Confirmed, but the player holds another timeline: %d nodes are "
                                  "missing, %d are not from here."};

struct Found {
    const NodeGroup* group;
    const GroupNode* node;

    [[nodiscard]] auto AsTuple() const {
        return std::tie(group->player, group->type->text, group->video->text, node->time,
                        node->port, node->peerPort, node->ip, node->command);
    }
};

bool ComesBefore(const Found& one, const Found& other) { return one.AsTuple() < other.AsTuple(); }

std::vector<Found> Sorted(const GroupOrder& order) {
    std::vector<Found> nodes;
    for (const SharedGroup& group : order)
        for (const GroupNode& node : group->nodes) nodes.push_back({group.get(), &node});
    std::ranges::sort(nodes, ComesBefore);
    return nodes;
}

/// Nodes of the first that the second does not have, or not so often.
std::vector<Found> Without(const std::vector<Found>& first, const std::vector<Found>& second) {
    std::vector<Found> rest;
    std::ranges::set_difference(first, second, std::back_inserter(rest), ComesBefore);
    return rest;
}

void AddExamples(const std::vector<Found>& nodes, std::vector<TimeNode>& examples) {
    for (const Found& found : nodes)
        if (examples.size() < kMostExamples) examples.push_back(NodeOf(*found.group, *found.node));
}

}  // namespace

TimelineDifference Compare(const GroupOrder& first, const GroupOrder& second) {
    const std::vector<Found> ours = Sorted(first);
    const std::vector<Found> theirs = Sorted(second);
    const std::vector<Found> missing = Without(ours, theirs);
    const std::vector<Found> unexpected = Without(theirs, ours);
    TimelineDifference difference{missing.size(), unexpected.size()};
    AddExamples(missing, difference.examples);
    AddExamples(unexpected, difference.examples);
    return difference;
}

std::string Told(const TimelineDifference& difference) {
    if (difference.IsNone()) return Localized(kEqual);
    std::string text =
        fmt::sprintf(Localized(kDifferent), difference.missing, difference.unexpected);
    for (const TimeNode& node : difference.examples) {
        text += '\n';
        for (const auto column :
             {TimelineColumn::kPlayer, TimelineColumn::kType, TimelineColumn::kVideo,
              TimelineColumn::kTime, TimelineColumn::kPort, TimelineColumn::kCommand})
            text += CellText(node, column) + ' ';
        text.pop_back();
    }
    return text;
}

}  // namespace sontaro
