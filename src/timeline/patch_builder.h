// Turns what is to be done to nodes into what is to be done to groups.
#pragma once

#include <map>
#include <tuple>
#include <unordered_map>

#include "timeline/timeline_document.h"

namespace sontaro {

/// Makes the patch for one change of a timeline, which it leaves as it is.
class PatchBuilder {
   public:
    /// Gives new nodes the numbers from `nextId` on.
    PatchBuilder(const NodeGroups& groups, NameTable& names, NodeId& nextId)
        : groups_(groups), names_(names), nextId_(nextId) {}

    [[nodiscard]] TimelinePatch Build(const TimelineChange& change);
    /// Of the inserted nodes.
    [[nodiscard]] const NodeIds& NewIds() const { return newIds_; }

   private:
    /// A group that changes.
    struct Touched {
        GroupPatch patch;
        std::size_t size = 0;  // afterwards
    };
    using Replacements = std::unordered_map<NodeId, const TimeNode*>;  // absent: it is removed

    void VisitGroup(const SharedGroup& group, const Replacements& replacements);
    void Add(const TimeNode& node, const OtherKeys& others);
    void Insert(const TimeNode& node, GroupNode stored);
    [[nodiscard]] Touched& Touch(const SharedGroup& group);
    [[nodiscard]] SharedGroup GroupFor(const TimeNode& node);
    [[nodiscard]] std::optional<GroupOrder> OrderAfterwards();

    /// A node on its way to another group.
    struct Moved {
        const TimeNode* node = nullptr;
        GroupNode stored;
    };
    using Key = std::tuple<std::int64_t, const GroupName*, const GroupName*>;

    const NodeGroups& groups_;
    NameTable& names_;
    NodeId& nextId_;
    NodeIds newIds_;
    std::vector<Moved> moved_;
    std::vector<Touched> touched_;
    std::unordered_map<const NodeGroup*, std::size_t> places_;  // in `touched_`
    std::map<Key, SharedGroup> byKey_;                          // made for the first insertion
    GroupOrder newGroups_;
    bool inserts_ = false;
};

}  // namespace sontaro
