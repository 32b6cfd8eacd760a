// The nodes of a timeline, grouped by the videos they belong to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "settings/record_members.h"
#include "timeline/group_name.h"
#include "timeline/time_node.h"

namespace sontaro {

/// A node's own number, which it keeps when it is edited, moved, deleted and brought back. From 1.
using NodeId = std::uint32_t;

/// A node within its group.
struct GroupNode {
    NodeId id = 0;
    std::int32_t port = 0;
    std::int64_t time = 0;
    std::int32_t peerPort = 0;
    std::uint32_t bytes = 0;  ///< that it takes in a document; see timeline_json.h
    std::string ip;
    std::string command;
    OtherKeys others;  ///< what its object has besides
};

/// The nodes of one video of a player, in the order of their insertion.
struct NodeGroup {
    std::int64_t player = 0;
    SharedName type;
    SharedName video;
    OtherKeys others = {};
    std::vector<GroupNode> nodes = {};
    std::size_t frameBytes = 0;  ///< that it takes in a document without its nodes
    std::size_t nodeBytes = 0;   ///< that these take
};

using SharedGroup = std::shared_ptr<NodeGroup>;
using GroupOrder = std::vector<SharedGroup>;

/// What is to be taken out of one group and put into it.
struct GroupPatch {
    SharedGroup group;
    std::vector<std::uint32_t> takeAt;  ///< rising places in the group as it is
    std::vector<std::uint32_t> putAt;   ///< rising places in the group as it will be
    std::vector<GroupNode> put;         ///< for each of those places
};

/// A change of a timeline, as small as the change is. Done twice, it has not been done.
struct TimelinePatch {
    std::vector<GroupPatch> groups;
    std::optional<GroupOrder> order;  ///< of the groups afterwards; absent: as it is
    std::optional<OtherKeys> others;  ///< of the whole document; absent: as they are

    [[nodiscard]] std::size_t Bytes() const;
    /// A later change of the same nodes in their places needs nothing kept: what they were before
    /// is known already.
    [[nodiscard]] bool Absorb(const TimelinePatch& later);
};

/// The groups of a timeline in their order. User-interface thread.
class NodeGroups {
   public:
    struct Place {
        std::size_t group = 0;  ///< in `Order`
        std::size_t node = 0;
    };

    [[nodiscard]] const GroupOrder& Order() const { return order_; }
    [[nodiscard]] const OtherKeys& Others() const { return others_; }
    [[nodiscard]] std::size_t NodeCount() const { return firstRows_.back(); }
    /// Where the node of a row is; rows count the nodes of all groups in their order.
    [[nodiscard]] Place At(std::size_t row) const;
    [[nodiscard]] std::size_t RowOf(const Place& place) const {
        return firstRows_[place.group] + place.node;
    }
    /// Bytes that the groups take in a document.
    [[nodiscard]] std::size_t Bytes() const { return bytes_; }

    /// Does what the patch says, which then says how to get back.
    void Toggle(TimelinePatch& patch);

   private:
    void CountRows();

    GroupOrder order_;
    OtherKeys others_;
    std::vector<std::size_t> firstRows_ = {0};  // of each group, and behind the last
    std::size_t bytes_ = 0;
};

/// Sorts groups: by player, length of the category, its sort letter, the place at which it first
/// appears, length of the video, its sort letter. Equal ones keep their places.
void SortGroups(GroupOrder& order);

}  // namespace sontaro
