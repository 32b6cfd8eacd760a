// The videos of another timeline, to be merged.
#pragma once

#include "base/table_model.h"
#include "timeline/timeline_edits.h"

namespace sontaro {

/// One video of the other timeline a row, all ticked at first and for the video of its own name.
/// User-interface thread.
class MergeTable : public TableModel {
   public:
    explicit MergeTable(const GroupOrder& order);

    [[nodiscard]] std::span<const TableColumn> Columns() const override;
    [[nodiscard]] std::size_t RowCount() const override { return rows_.size(); }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override { return row; }
    [[nodiscard]] bool IsTicked(std::size_t row) const override { return rows_[row].isTicked; }
    void SetTicked(std::size_t row, bool ticked) override { rows_[row].isTicked = ticked; }

    /// The video here that a row is for.
    [[nodiscard]] VideoKey& VideoFor(std::size_t row) { return rows_[row].merged.video; }
    /// The ticked rows.
    [[nodiscard]] std::vector<MergedGroup> Ticked() const;

   private:
    struct Row {
        MergedGroup merged;
        bool isTicked = true;
    };
    std::vector<Row> rows_;
};

}  // namespace sontaro
