// As large a timeline as players take.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <random>

#include "timeline/timeline_document.h"

namespace sontaro::bench {

inline constexpr std::size_t kManyNodes = 65'000;
inline constexpr std::size_t kNodesPerVideo = 1'000;

/// The nodes of 65 videos, in the order of their rows.
inline std::vector<TimeNode> ManyNodes() {
    std::vector<TimeNode> nodes;
    for (std::size_t i = 0; i < kManyNodes; ++i) {
        const auto moment = static_cast<std::int64_t>(i % kNodesPerVideo * 25);
        nodes.push_back({static_cast<std::int64_t>(i / kManyNodes), "舞曲",
                         fmt::format("v{:02}", i / kNodesPerVideo), moment,
                         static_cast<std::int32_t>(i % 4), "", 0, "A501"});
    }
    return nodes;
}

inline std::vector<TimeNode> ShuffledNodes() {
    static const std::vector<TimeNode> shuffled = [] {
        std::vector<TimeNode> nodes = ManyNodes();
        std::ranges::shuffle(nodes, std::mt19937(1));
        return nodes;
    }();
    return shuffled;
}

inline NodeIds EverySecond(const TimelineDocument& document) {
    NodeIds ids;
    for (std::size_t row = 0; row < document.NodeCount(); row += 2)
        ids.push_back(document.IdAt(row));
    return ids;
}

}  // namespace sontaro::bench
