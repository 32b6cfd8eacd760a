// Which texts the rows of a settings grid take, and the numbers in them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/settings_rows.h"

namespace sontaro {

/// `text` as a row of that kind takes it; none when it does not fit. Whole numbers are one digit
/// or more, decimals one digit or point or more: a sign or an exponent has never been accepted
/// from a grid. Commands are normalised (see base/hex_command.h). A choice is one of
/// `choices`.
[[nodiscard]] std::optional<std::string> FittingRowText(RowKind kind, const std::string& text,
                                                        const std::vector<std::string>& choices);

/// What to tell the user of a number that is not between these bounds.
[[nodiscard]] std::string OutsideRangeText(const std::string& least, const std::string& most);

/// The decimal number at the start of `text` behind blanks, as C reads it (a sign may go ahead);
/// 0 when there is none. Beyond 32 bits it is the nearest number within.
[[nodiscard]] std::int32_t LeadingInteger(std::string_view text);

/// The number at the start of `text` behind blanks, as C reads it (sign, point, exponent); 0 when
/// there is none. Always finite: beyond the range of a double it is the nearest number within.
[[nodiscard]] double LeadingDouble(std::string_view text);

/// The text of a colour row: "#RRGGBB" for 0x00BBGGRR.
[[nodiscard]] std::string ColourRowText(std::uint32_t colour);

/// The colour as 0x00BBGGRR that a colour row's text stands for; none for the default colour.
[[nodiscard]] std::optional<std::uint32_t> ColourOfRowText(std::string_view text);

}  // namespace sontaro
