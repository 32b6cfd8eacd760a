// The two tables of the parameter page.
#pragma once

#include <unordered_set>

#include "base/table_model.h"
#include "batchsend/set_page_run.h"

namespace sontaro {

/// All players together in the first row, each of them behind it.
class SetPlayersTable : public TableModel {
   public:
    /// `run` outlives the table.
    explicit SetPlayersTable(const SetPageRun& run) : run_(run) {}

    [[nodiscard]] std::span<const TableColumn> Columns() const override;
    [[nodiscard]] std::size_t RowCount() const override { return run_.Players().size() + 1; }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override { return row; }
    [[nodiscard]] bool HasTicks() const override { return false; }
    [[nodiscard]] std::string CellCaution(std::size_t row, std::size_t column) const override;

    [[nodiscard]] static SetPageRun::Place PlaceOfRow(std::size_t row) {
        return row == 0 ? std::nullopt : SetPageRun::Place(row - 1);
    }
    [[nodiscard]] static std::size_t RowOfPlace(SetPageRun::Place place) {
        return place ? *place + 1 : 0;
    }

   private:
    const SetPageRun& run_;
};

/// The videos that are shown. Ticks stay with their videos, whatever is shown meanwhile.
class SetVideosTable : public TableModel {
   public:
    /// `run` outlives the table.
    explicit SetVideosTable(const SetPageRun& run) : run_(run) {}

    [[nodiscard]] std::span<const TableColumn> Columns() const override;
    [[nodiscard]] std::size_t RowCount() const override { return run_.Videos().size(); }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override;
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override;
    [[nodiscard]] bool IsTicked(std::size_t row) const override {
        return ticked_.contains(IdOf(row));
    }
    void SetTicked(std::size_t row, bool ticked) override;
    [[nodiscard]] std::string RowCaution(std::size_t row) const override;
    [[nodiscard]] std::string CellCaution(std::size_t row, std::size_t column) const override;

    /// Those that are ticked.
    [[nodiscard]] std::vector<std::size_t> TickedRows() const;
    /// Other videos may have their numbers from now on.
    void TickNone() { ticked_.clear(); }

   private:
    [[nodiscard]] const SetProblem* ProblemOfRow(std::size_t row) const;

    const SetPageRun& run_;
    std::unordered_set<std::uint64_t> ticked_;
};

}  // namespace sontaro
