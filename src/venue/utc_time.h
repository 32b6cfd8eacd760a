// Moments as texts, in UTC and to the second.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace sontaro {

/// "2026-11-21T20:30:00Z".
[[nodiscard]] std::string TimeText(std::chrono::sys_seconds time);
/// The moment of such a text; none for any other.
[[nodiscard]] std::optional<std::chrono::sys_seconds> TimeOfText(std::string_view text);

/// "20261121T203000Z", as names of files have it: in the order of time as they are in that of
/// letters.
[[nodiscard]] std::string TimeName(std::chrono::sys_seconds time);
[[nodiscard]] std::optional<std::chrono::sys_seconds> TimeOfName(std::string_view name);

}  // namespace sontaro
