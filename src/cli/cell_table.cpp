#include "cli/cell_table.h"

#include <algorithm>

#include "cli/display_width.h"

namespace sontaro::cli {

void CellTable::Add(std::vector<std::string> cells) {
    for (std::string& cell : cells) cell = Harmless(cell);
    rows_.push_back(std::move(cells));
}

std::string CellTable::Text() const {
    constexpr std::size_t kBetween = 2;
    std::vector<std::size_t> widths(rows_.front().size());
    for (const auto& row : rows_)
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], DisplayWidth(row[i]));
    std::string text;
    for (const auto& row : rows_) {
        std::string line;
        for (std::size_t i = 0; i < widths.size(); ++i)
            line += FilledUp(row[i], widths[i] + kBetween);
        text += line.erase(line.find_last_not_of(' ') + 1) + '\n';
    }
    return text;
}

}  // namespace sontaro::cli
