#include "venue/utc_time.h"

#include <fmt/format.h>

#include <charconv>

namespace sontaro {

using namespace std::chrono;

namespace {

constexpr std::string_view kTextPattern = "####-##-##T##:##:##Z";
constexpr std::string_view kNamePattern = "########T######Z";

/// The moment in a text of that pattern, whose signs are the digits.
std::optional<sys_seconds> TimeIn(std::string_view text, std::string_view pattern) {
    std::string digits;
    if (text.size() != pattern.size()) return std::nullopt;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (pattern[i] == '#' ? !isDigit : text[i] != pattern[i]) return std::nullopt;
        if (isDigit) digits += text[i];
    }
    const auto number = [&](std::size_t at, std::size_t count) {
        int value = 0;
        std::from_chars(digits.data() + at, digits.data() + at + count, value);
        return value;
    };
    const year_month_day date{year(number(0, 4)), month(static_cast<unsigned>(number(4, 2))),
                              day(static_cast<unsigned>(number(6, 2)))};
    const int hour = number(8, 2);
    const int minute = number(10, 2);
    const int second = number(12, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
}

/// Replaces the signs of a pattern by the digits of a moment.
std::string Filled(std::string_view pattern, sys_seconds time) {
    const year_month_day date(floor<days>(time));
    const hh_mm_ss clock(time - floor<days>(time));
    const std::string digits =
        fmt::format("{:04}{:02}{:02}{:02}{:02}{:02}", static_cast<int>(date.year()),
                    static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                    clock.hours().count(), clock.minutes().count(), clock.seconds().count());
    std::string text;
    std::size_t next = 0;
    for (const char sign : pattern) text += sign == '#' ? digits[next++] : sign;
    return text;
}

}  // namespace

std::string TimeText(sys_seconds time) { return Filled(kTextPattern, time); }
std::optional<sys_seconds> TimeOfText(std::string_view text) { return TimeIn(text, kTextPattern); }
std::string TimeName(sys_seconds time) { return Filled(kNamePattern, time); }
std::optional<sys_seconds> TimeOfName(std::string_view name) { return TimeIn(name, kNamePattern); }

}  // namespace sontaro
