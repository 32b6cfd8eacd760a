// Numbers that somebody typed.
#pragma once

#include <charconv>
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
    if (number < least || number > most) return std::nullopt;
    return number;
}

}  // namespace sontaro::simulator
