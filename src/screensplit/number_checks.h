// What the grids of a video wall refuse.
#pragma once

#include <optional>
#include <string>

#include "base/local_text.h"

namespace sontaro {

inline constexpr LocalText kNoData = {"未输入数据吧", "No data entered"};
inline constexpr LocalText kOutOfRange = {"输入超范围", "Input out of range"};
inline constexpr LocalText kInputError = {"输入错误!", "input error!"};

enum class NumberForm { kWhole, kDecimal };

/// Whether all of `text` is a number: digits, in a decimal at most one point, ahead of them a minus
/// sign where a number may be negative.
[[nodiscard]] bool IsNumber(const std::string& text, NumberForm form, bool mayBeNegative);

/// Why a text cannot be a number from `least` to `most`; none when it can. Whether a minus sign is
/// out of the range or no number at all, `mayBeNegative` says.
[[nodiscard]] std::optional<LocalText> RefusalOfNumber(const std::string& text, NumberForm form,
                                                       double least, double most,
                                                       bool mayBeNegative);

}  // namespace sontaro
