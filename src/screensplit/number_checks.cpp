#include "screensplit/number_checks.h"

#include <algorithm>

#include "base/row_text.h"

namespace sontaro {

bool IsNumber(const std::string& text, NumberForm form, bool mayBeNegative) {
    constexpr const char* kDigits = "0123456789";
    std::string digits = text.substr(mayBeNegative && text.starts_with('-') ? 1 : 0);
    const std::size_t point = form == NumberForm::kDecimal ? digits.find('.') : std::string::npos;
    if (point != std::string::npos) digits.erase(point, 1);
    return !digits.empty() && digits.find_first_not_of(kDigits) == std::string::npos;
}

std::optional<LocalText> RefusalOfNumber(const std::string& text, NumberForm form, double least,
                                         double most, bool mayBeNegative) {
    if (text.empty()) return kNoData;
    if (!IsNumber(text, form, mayBeNegative)) return kInputError;
    const double number = LeadingDouble(text);
    if (number < least || number > most) return kOutOfRange;
    return std::nullopt;
}

}  // namespace sontaro
