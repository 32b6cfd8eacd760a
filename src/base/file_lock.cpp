#include "base/file_lock.h"

#include <thread>

namespace sontaro {

Result<std::optional<FileLock>> FileLock::Take(const std::filesystem::path& path,
                                               std::chrono::milliseconds patience) {
    constexpr std::chrono::milliseconds kPause{5};
    for (;; patience -= kPause) {
        const auto file = TryOnce(path);
        if (!file) return Error{file.reason()};
        if (*file) return std::optional(FileLock(*file));
        if (patience < kPause) return std::optional<FileLock>();
        std::this_thread::sleep_for(kPause);
    }
}

}  // namespace sontaro
