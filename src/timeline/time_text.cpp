#include "timeline/time_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

namespace sontaro {

namespace {

constexpr std::int64_t kPerSecond = 1000;
constexpr std::int64_t kPerMinute = 60 * kPerSecond;
constexpr std::int64_t kPerHour = 60 * kPerMinute;
constexpr std::size_t kDecimals = 3;

/// The distance from 0, which has room for that of the least number, too.
std::uint64_t Magnitude(std::int64_t number) {
    const auto bits = static_cast<std::uint64_t>(number);
    return number < 0 ? 0 - bits : bits;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    return text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

}  // namespace

std::int64_t MillisecondsOf(const ClockTime& time) {
    return ((time.hours * 60 + time.minutes) * 60 + time.seconds) * kPerSecond + time.milliseconds;
}

ClockTime ClockTimeOf(std::int64_t milliseconds) {
    const std::int64_t time = std::max<std::int64_t>(milliseconds, 0);
    return {time / kPerHour, time % kPerHour / kPerMinute, time % kPerMinute / kPerSecond,
            time % kPerSecond};
}

std::string SecondsText(std::int64_t milliseconds) {
    const std::uint64_t time = Magnitude(milliseconds);
    return fmt::format("{}{}.{:03}", milliseconds < 0 ? "-" : "", time / kPerSecond,
                       time % kPerSecond);
}

std::optional<std::int64_t> MillisecondsOfSeconds(std::string_view text) {
    text = Trimmed(text);
    const bool isNegative = text.starts_with('-');
    if (isNegative) text.remove_prefix(1);
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::size_t decimals = text.size() - std::min(point + 1, text.size());
    if (point == 0 || decimals > kDecimals) return std::nullopt;
    std::string digits(text.substr(0, point));
    digits += text.substr(std::min(point + 1, text.size()));
    digits.append(kDecimals - decimals, '0');
    if (isNegative) digits.insert(0, 1, '-');
    if (digits.find_first_not_of("0123456789", isNegative ? 1 : 0) != std::string::npos)
        return std::nullopt;
    std::int64_t time = 0;
    const char* end = digits.data() + digits.size();
    if (std::from_chars(digits.data(), end, time).ec != std::errc()) return std::nullopt;
    return time;
}

std::string AxisText(std::int64_t milliseconds) {
    const ClockTime time = ClockTimeOf(milliseconds);
    const std::string decimals =
        time.milliseconds == 0 ? "" : fmt::format(".{:03}", time.milliseconds);
    return fmt::format("{}:{:02}:{:02}{}", time.hours, time.minutes, time.seconds, decimals);
}

}  // namespace sontaro
