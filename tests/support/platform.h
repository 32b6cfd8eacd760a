// What tests ask of the system, on either platform.
#pragma once

#include <cstddef>

namespace sontaro::test {

#ifdef _WIN32
inline constexpr bool kOnWindows = true;
#else
inline constexpr bool kOnWindows = false;
#endif

/// A number that no other running process has.
unsigned ProcessNumber();

/// Memory that the process has taken for itself.
std::size_t BytesInUse();

}  // namespace sontaro::test
