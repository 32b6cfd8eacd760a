// A small table.
#pragma once

#include <array>
#include <utility>
#include <vector>

#include "base/table_model.h"

namespace sontaro::test {

/// A name, a value, and a button.
struct ListedTable : TableModel {
    struct Row {
        std::uint64_t id;
        std::string name;
        std::string value;
        bool ticked = false;
        std::string caution = {};  // of the row and of its value
    };

    explicit ListedTable(std::vector<Row> listed) : rows(std::move(listed)) {}

    [[nodiscard]] std::span<const TableColumn> Columns() const override { return columns; }
    [[nodiscard]] std::size_t RowCount() const override { return rows.size(); }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override {
        if (column == 0) return rows.at(row).name;
        return column == 1 ? rows.at(row).value : "Test";
    }
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override { return rows.at(row).id; }
    [[nodiscard]] bool IsTicked(std::size_t row) const override { return rows.at(row).ticked; }
    void SetTicked(std::size_t row, bool ticked) override { rows.at(row).ticked = ticked; }
    [[nodiscard]] std::string RowCaution(std::size_t row) const override {
        return rows.at(row).caution;
    }
    [[nodiscard]] std::string CellCaution(std::size_t row, std::size_t column) const override {
        return column == 1 ? rows.at(row).caution : "";
    }

    std::vector<Row> rows;
    std::array<TableColumn, 3> columns{{{{"名称", "Name"}, 16},
                                        {{"数值", "Value"}, 12, CellKind::kNumber},
                                        {{"测试", "Test"}, 8, CellKind::kButton}}};
};

}  // namespace sontaro::test
