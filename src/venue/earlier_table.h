// What is shown of documents that stood on a player earlier.
#pragma once

#include "base/table_model.h"
#include "venue/document_keeper.h"

namespace sontaro {

/// The documents, the latest first: until when each stood there, and what was changed after it.
class EarlierTable : public TableModel {
   public:
    void Show(std::vector<EarlierState> states) { states_ = std::move(states); }
    [[nodiscard]] const EarlierState& StateAt(std::size_t row) const { return states_[row]; }

    [[nodiscard]] std::span<const TableColumn> Columns() const override;
    [[nodiscard]] std::size_t RowCount() const override { return states_.size(); }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override { return row; }
    [[nodiscard]] bool HasTicks() const override { return false; }
    [[nodiscard]] std::string RowCaution(std::size_t row) const override {
        return states_[row].trouble;
    }

   private:
    std::vector<EarlierState> states_;
};

/// All that was changed after one of them.
class LaterChangesTable : public TableModel {
   public:
    /// Absent: nothing is known of it.
    void Show(const std::optional<BlockComparison>& changes);

    [[nodiscard]] std::span<const TableColumn> Columns() const override;
    [[nodiscard]] std::size_t RowCount() const override { return rows_.size(); }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override { return row; }
    [[nodiscard]] bool HasTicks() const override { return false; }

   private:
    std::vector<RowDifference> rows_;
};

/// A sentence in place of changes: why there are none to be listed; or how many more there are than
/// those. Empty: all of them are listed.
[[nodiscard]] std::string TextBesideChanges(const EarlierState& state);

}  // namespace sontaro
