// The commands of a timeline, in memory: read, written, changed, undone.
#pragma once

#include <functional>
#include <span>

#include "base/undo_history.h"
#include "timeline/node_groups.h"
#include "timeline/timeline_json.h"

namespace sontaro {

/// Most bytes of a document that a player takes. The bound is the players'.
inline constexpr std::size_t kLongestTimeline = 8'192'000;

using NodeIds = std::vector<NodeId>;

/// What is to be done to a timeline as one step. Each node is named once.
struct TimelineChange {
    struct Replacement {
        NodeId id = 0;
        TimeNode node;
    };
    /// A node that is inserted with what another one's object has besides.
    struct Copy {
        TimeNode node;
        OtherKeys others = {};
    };
    NodeIds removed = {};
    /// One that has another player, category or video leaves its group and is inserted as new; any
    /// other stays in its place.
    std::vector<Replacement> replaced = {};
    std::vector<TimeNode> inserted = {};
    std::vector<Copy> copied = {};  ///< inserted behind those

    [[nodiscard]] bool IsEmpty() const {
        return removed.empty() && replaced.empty() && inserted.empty() && copied.empty();
    }
};

/// A timeline. Its nodes are rows, counted from 0 over the groups in their order; each has a number
/// of its own besides. Values beyond their ranges are kept as a document has them. Every change is
/// one step that can be undone. User-interface thread.
class TimelineDocument {
   public:
    using Series = UndoHistory<TimelinePatch>::Series;
    using State = UndoHistory<TimelinePatch>::State;

    TimelineDocument() = default;
    TimelineDocument(const TimelineDocument&) = delete;
    TimelineDocument& operator=(const TimelineDocument&) = delete;

    /// Takes a document in place of all nodes, or fails and changes nothing. That can be undone
    /// like any change, unless nothing was there and nothing had been done.
    [[nodiscard]] Status Take(std::string_view text, TimelineSource source);
    /// The two halves of that. What has been read is put in place of the nodes of the same
    /// timeline.
    [[nodiscard]] Result<TimelineContent> Read(std::string_view text, TimelineSource source) {
        return ReadTimeline(text, source, names_);
    }
    void Replace(TimelineContent content);
    /// Nothing that was done can be undone any more.
    void ForgetSteps() { history_.Clear(); }
    /// The document as players read it.
    [[nodiscard]] std::string Write() const { return TimelineText(Order(), groups_.Others()); }
    /// Bytes of that text, which costs next to nothing.
    [[nodiscard]] std::size_t TextBytes() const;
    /// Whether that is too much for a player.
    [[nodiscard]] bool IsTooLong() const { return TextBytes() > kLongestTimeline; }

    [[nodiscard]] std::size_t NodeCount() const { return groups_.NodeCount(); }
    /// The node of a row, which is below `NodeCount`.
    [[nodiscard]] TimeNode NodeAt(std::size_t row) const;
    [[nodiscard]] NodeId IdAt(std::size_t row) const;
    /// The row of a node; none when there is no such node. Looks at every node.
    [[nodiscard]] std::optional<std::size_t> RowOf(NodeId id) const;
    [[nodiscard]] std::optional<TimeNode> Find(NodeId id) const;
    /// Which of the nodes there are, in the order of their rows. Looks at every node.
    [[nodiscard]] NodeIds Existing(std::span<const NodeId> ids) const;
    /// All groups, for who has to go through many nodes.
    [[nodiscard]] const GroupOrder& Order() const { return groups_.Order(); }
    [[nodiscard]] NodeGroups::Place PlaceOf(std::size_t row) const { return groups_.At(row); }
    [[nodiscard]] std::size_t RowAt(const NodeGroups::Place& place) const {
        return groups_.RowOf(place);
    }

    /// Does a change, and says which numbers the inserted nodes have got. Changes of one series,
    /// one after another, are undone together.
    NodeIds Apply(const TimelineChange& change, Series series = 0);
    /// Inserts one node.
    NodeId Insert(const TimeNode& node) { return Apply({{}, {}, {node}}).front(); }
    /// A number for a new series.
    [[nodiscard]] Series NewSeries() { return ++lastSeries_; }

    [[nodiscard]] bool CanUndo() const { return history_.CanUndo(); }
    [[nodiscard]] bool CanRedo() const { return history_.CanRedo(); }
    /// False when there is nothing to undo, or to do again.
    bool Undo() { return Toggle(history_.Undo()); }
    bool Redo() { return Toggle(history_.Redo()); }
    /// Differs whenever the nodes do.
    [[nodiscard]] State CurrentState() const { return history_.Now(); }

    /// Every node that is inserted later has a number of at least this.
    [[nodiscard]] NodeId NextId() const { return nextId_; }

   private:
    bool Toggle(TimelinePatch* patch);
    void Do(TimelinePatch patch, Series series);

    static constexpr std::size_t kMostUndoBytes = std::size_t{128} << 20;

    NameTable names_;
    NodeGroups groups_;
    UndoHistory<TimelinePatch> history_{kMostUndoBytes};
    NodeId nextId_ = 1;
    Series lastSeries_ = 0;
};

}  // namespace sontaro
