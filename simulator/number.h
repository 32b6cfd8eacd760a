// Numbers that somebody typed.
#pragma once

#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>
#include <string_view>

namespace sontaro::simulator {

/// The decimal number that `text` is, all of it, from `least` to `most`; none for anything else.
template <class Number>
[[nodiscard]] std::optional<Number> ParseNumber(std::string_view text, Number least, Number most) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
    if (!(number >= least && number <= most)) return std::nullopt;  // so is what is not a number
    return number;
}

/// The time that `text` means, a number of seconds from 0 to those of a day with or without a
/// fraction; none for anything else.
[[nodiscard]] inline std::optional<std::chrono::milliseconds> ParseSeconds(std::string_view text) {
    constexpr double kDay = 86400;
    constexpr double kMilliseconds = 1000;  // in a second
    const auto seconds = ParseNumber<double>(text, 0, kDay);
    if (!seconds) return std::nullopt;
    return std::chrono::milliseconds(std::llround(*seconds * kMilliseconds));
}

}  // namespace sontaro::simulator
