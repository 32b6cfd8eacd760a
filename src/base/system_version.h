// Which operating system the program runs on.
#pragma once

#include <cstdint>

namespace sontaro {

/// Version numbers of the operating system, as it tells them to every program whatever that
/// program's manifest says: on Windows those of the kernel, on Linux those of the running kernel.
struct SystemVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
    bool isWindows = false;
};

/// The numbers are 0 when the system does not tell them.
[[nodiscard]] SystemVersion ReadSystemVersion();

}  // namespace sontaro
