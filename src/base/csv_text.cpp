#include "base/csv_text.h"

namespace sontaro {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

bool HasBlankEnds(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    return !text.empty() && (kBlanks.find(text.front()) != std::string_view::npos ||
                             kBlanks.find(text.back()) != std::string_view::npos);
}

}  // namespace

std::string CsvCellText(std::string_view text) {
    const bool isPlain =
        text.find_first_of("\",;\t\r\n") == std::string_view::npos && !HasBlankEnds(text);
    if (isPlain) return std::string(text);
    std::string quoted = "\"";
    for (const char character : text) quoted.append(character == '"' ? 2 : 1, character);
    return quoted + '"';
}

void AddCsvRow(std::string& csv, std::span<const std::string> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) csv += ',';
        csv += CsvCellText(cells[i]);
    }
    csv += kLineEnd;
}

}  // namespace sontaro
