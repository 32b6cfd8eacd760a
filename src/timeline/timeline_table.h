// The rows of a timeline's table.
#pragma once

#include <unordered_set>

#include "base/table_model.h"
#include "timeline/timeline_document.h"

namespace sontaro {

/// Shows a timeline's nodes as rows; a port without a peer has no peer port. A node's tick stays
/// with it wherever it goes, and is there again when its deletion is undone. User-interface thread.
class TimelineTable : public TableModel {
   public:
    /// `document` outlives the table.
    explicit TimelineTable(const TimelineDocument& document) : document_(document) {}

    [[nodiscard]] std::span<const TableColumn> Columns() const override;
    [[nodiscard]] std::size_t RowCount() const override { return document_.NodeCount(); }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override { return document_.IdAt(row); }
    [[nodiscard]] bool IsTicked(std::size_t row) const override {
        return ticked_.contains(document_.IdAt(row));
    }
    void SetTicked(std::size_t row, bool ticked) override;
    [[nodiscard]] std::string RowCaution(std::size_t row) const override;
    [[nodiscard]] std::string CellCaution(std::size_t row, std::size_t column) const override;

    /// The ticked nodes, in the order of their rows. Looks at every node, unless none is ticked.
    [[nodiscard]] NodeIds Ticked() const;
    /// Ticks these nodes and no others.
    void TickOnly(const NodeIds& ids) { ticked_ = {ids.begin(), ids.end()}; }

   private:
    [[nodiscard]] const TimeNode& NodeOfRow(std::size_t row) const;

    const TimelineDocument& document_;
    std::unordered_set<NodeId> ticked_;

    /// The node that was asked for last: a row is asked for cell by cell.
    struct Latest {
        TimelineDocument::State state = 0;
        std::size_t row = 0;
        TimeNode node;
    };
    mutable std::optional<Latest> latest_;
};

}  // namespace sontaro
