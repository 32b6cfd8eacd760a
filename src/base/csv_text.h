// Tables of text for spreadsheets (RFC 4180 in UTF-8, with a byte order mark).
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace sontaro {

/// What such a table begins with.
inline constexpr std::string_view kCsvBegin = "\xEF\xBB\xBF";

/// A cell: quoted where it has to be, as blanks at its ends would go with some programs.
[[nodiscard]] std::string CsvCellText(std::string_view text);

/// Adds a row with its line end.
void AddCsvRow(std::string& csv, std::span<const std::string> cells);

}  // namespace sontaro
