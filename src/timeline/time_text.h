// Moments of a video as people write them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace sontaro {

/// A moment as the editor of a node shows it. Every part is at least 0; hours have no bound but
/// `kMostHours`, beyond which milliseconds have no 64 bits.
struct ClockTime {
    std::int64_t hours = 0;
    std::int64_t minutes = 0;
    std::int64_t seconds = 0;
    std::int64_t milliseconds = 0;

    bool operator==(const ClockTime&) const = default;
};

inline constexpr std::int64_t kMostHours = 2'562'047'788'014;
inline constexpr std::int64_t kMostMinutes = 59;
inline constexpr std::int64_t kMostSeconds = 59;
inline constexpr std::int64_t kMostMilliseconds = 999;

/// The milliseconds of a moment whose parts are within their bounds.
[[nodiscard]] std::int64_t MillisecondsOf(const ClockTime& time);

/// The parts of a time; of a negative one, which no editor takes, those of 0.
[[nodiscard]] ClockTime ClockTimeOf(std::int64_t milliseconds);

/// Seconds with three decimals: "3600.001".
[[nodiscard]] std::string SecondsText(std::int64_t milliseconds);

/// The milliseconds of such a text: a sign, digits, a point and up to three decimals behind it,
/// blanks around; none for any other text, and for what has no 64 bits.
[[nodiscard]] std::optional<std::int64_t> MillisecondsOfSeconds(std::string_view text);

/// Hours, minutes and seconds for an axis: "1:00:05", with ".250" behind when there are
/// milliseconds.
[[nodiscard]] std::string AxisText(std::int64_t milliseconds);

}  // namespace sontaro
