#include "base/row_text.h"

#include <fmt/printf.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>

#include "base/hex_command.h"
#include "base/local_text.h"

namespace sontaro {

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kDigitsAndPoint = "0123456789.";
constexpr std::string_view kBlanks = " \t\n\v\f\r";

bool ConsistsOf(std::string_view text, std::string_view characters) {
    return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
}

/// The text from its number on, for from_chars, which knows neither blanks nor a plus sign.
std::string_view NumberIn(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    return text;
}

/// A number too large or too small for from_chars, which does not say which. Not strtod, whose
/// decimal point is that of the user's language.
double NearestDouble(const std::string& digits) {
    std::istringstream stream(digits);
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> number;
    return number;
}

}  // namespace

std::optional<std::string> FittingRowText(RowKind kind, const std::string& text,
                                          const std::vector<std::string>& choices) {
    const auto textIf = [&](bool fits) { return fits ? std::optional(text) : std::nullopt; };
    switch (kind) {
        case RowKind::kWholeNumber: return textIf(ConsistsOf(text, kDigits));
        case RowKind::kDecimal: return textIf(ConsistsOf(text, kDigitsAndPoint));
        case RowKind::kHexCommand: return NormalizedHexCommand(text);
        case RowKind::kChoice: return textIf(std::ranges::find(choices, text) != choices.end());
        case RowKind::kYesNo: return textIf(text == kRowYes || text == kRowNo);
        case RowKind::kReadOnly: return std::nullopt;
        case RowKind::kText:
        case RowKind::kColour: break;
    }
    return text;
}

std::string OutsideRangeText(const std::string& least, const std::string& most) {
    constexpr LocalText kOutside = {"数值超出范围 %s~%s。",
                                    "The value is outside the range %s to %s."};
    return fmt::sprintf(Localized(kOutside), least, most);
}

std::int32_t LeadingInteger(std::string_view text) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::string_view digits = NumberIn(text);
    std::int32_t number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc::result_out_of_range) return number;
    return digits.starts_with('-') ? Limits::min() : Limits::max();
}

double LeadingDouble(std::string_view text) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    const std::string digits(NumberIn(text));
    double number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec == std::errc::result_out_of_range) number = NearestDouble(digits);
    return std::isnan(number) ? 0 : std::clamp(number, -kLargest, kLargest);
}

std::string ColourRowText(std::uint32_t colour) {
    return fmt::format("#{:02X}{:02X}{:02X}", colour & 0xFF, colour >> 8 & 0xFF,
                       colour >> 16 & 0xFF);
}

std::optional<std::uint32_t> ColourOfRowText(std::string_view text) {
    constexpr std::size_t kLength = 7;
    std::uint32_t rgb = 0;
    if (text.size() != kLength || text.front() != '#') return std::nullopt;
    const char* const end = text.data() + kLength;
    const auto read = std::from_chars(text.data() + 1, end, rgb, 16);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
}

}  // namespace sontaro
