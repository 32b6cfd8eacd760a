// What tests ask of the system, on either platform.
#pragma once

#include <cstddef>

namespace sontaro::test {

/// A number that no other running process has.
unsigned ProcessNumber();

/// Memory that the process has taken for itself.
std::size_t BytesInUse();

}  // namespace sontaro::test
