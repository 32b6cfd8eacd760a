// A table for a terminal.
#pragma once

#include <string>
#include <vector>

namespace sontaro::cli {

/// Columns stand below one another, whatever they are written in.
class CellTable {
   public:
    explicit CellTable(std::vector<std::string> headings) { Add(std::move(headings)); }

    /// A row has as many cells as there are headings.
    void Add(std::vector<std::string> cells);
    [[nodiscard]] bool HasRows() const { return rows_.size() > 1; }
    /// The headings and the rows, a line each. What terminals might take for orders is replaced.
    [[nodiscard]] std::string Text() const;

   private:
    std::vector<std::vector<std::string>> rows_;
};

}  // namespace sontaro::cli
