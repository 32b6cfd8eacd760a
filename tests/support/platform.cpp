#include "support/platform.h"

#ifdef _WIN32
#include <windows.h>  // before the next one

#include <psapi.h>
#else
#include <malloc.h>
#include <unistd.h>
#endif

namespace sontaro::test {

#ifdef _WIN32

unsigned ProcessNumber() { return GetCurrentProcessId(); }

std::size_t BytesInUse() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

#else

unsigned ProcessNumber() { return static_cast<unsigned>(getpid()); }

std::size_t BytesInUse() {
    const auto usage = mallinfo2();
    return usage.uordblks + usage.hblkhd;
}

#endif

}  // namespace sontaro::test
