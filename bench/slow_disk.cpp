#include "bench/slow_disk.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <thread>

namespace {

/// Bytes a second; 0: as fast as the disk is.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): of the whole process
std::atomic<double> speed = 0;

/// What is read in smaller pieces is no video.
constexpr ssize_t kLeast = 0x10000;

}  // namespace

/// Stands in for the system's call: the standard library's streams come here, too.
extern "C" ssize_t read(int file, void* buffer, size_t size) {
    const auto start = std::chrono::steady_clock::now();
    const ssize_t count = syscall(SYS_read, file, buffer, size);
    const double limit = speed;
    if (limit == 0 || count < kLeast) return count;
    const std::chrono::duration<double> time(static_cast<double>(count) / limit);
    const int error = errno;
    std::this_thread::sleep_until(start + time);
    errno = error;
    return count;
}

namespace sontaro::bench {

SlowDisk::SlowDisk(double bytesPerSecond) { speed = bytesPerSecond; }

SlowDisk::~SlowDisk() { speed = 0; }

}  // namespace sontaro::bench
