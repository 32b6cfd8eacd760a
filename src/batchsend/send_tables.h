// The two tables of the last page.
#pragma once

#include "base/table_model.h"
#include "batchsend/send_page.h"

namespace sontaro {

/// The players of the run, in their order.
class UploadTable : public TableModel {
   public:
    /// `page` outlives the table.
    explicit UploadTable(const SendPage& page) : page_(page) {}

    [[nodiscard]] std::span<const TableColumn> Columns() const override;
    [[nodiscard]] std::size_t RowCount() const override { return page_.Rows().size(); }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override { return row; }
    [[nodiscard]] bool HasTicks() const override { return false; }

   private:
    const SendPage& page_;
};

/// Videos against players: a row for each video, and a column for each player.
class BatchMatrix : public TableModel {
   public:
    /// Its columns are the players of the page's batch as they are now. `page` outlives the table.
    explicit BatchMatrix(const SendPage& page);

    /// Whether its columns are still the players of the batch.
    [[nodiscard]] bool IsUpToDate() const;

    [[nodiscard]] std::span<const TableColumn> Columns() const override { return columns_; }
    [[nodiscard]] std::size_t RowCount() const override { return page_.Batch().Videos().size(); }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override { return row; }
    [[nodiscard]] bool HasTicks() const override { return false; }
    [[nodiscard]] std::string CellCaution(std::size_t row, std::size_t column) const override;

   private:
    /// None: the column is no player's.
    [[nodiscard]] const SendPair* PairAt(std::size_t row, std::size_t column) const;

    const SendPage& page_;
    std::vector<std::string> addresses_;  // that the captions stand on
    std::vector<TableColumn> columns_;
};

}  // namespace sontaro
