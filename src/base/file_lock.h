// A right that only one process has at a time.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>

#include "base/result.h"

namespace sontaro {

/// Holds the lock of a file for as long as it lives. The system gives the lock back with the
/// process, however that ends; the file stays where it is, and what it holds says nothing.
class FileLock {
   public:
    /// Takes the lock of the file at `path`, which is made if need be, in an existing folder. Tries
    /// for up to `patience`; none when another holder has had the lock all that time. Fails when
    /// there can be no such file. Where the file system knows no locks, everybody gets one.
    [[nodiscard]] static Result<std::optional<FileLock>> Take(const std::filesystem::path& path,
                                                              std::chrono::milliseconds patience);

   private:
    class OpenFile;  // closing it gives the lock back

    explicit FileLock(std::shared_ptr<OpenFile> file) : file_(std::move(file)) {}

    /// The locked file; an empty pointer while another holder has the lock.
    [[nodiscard]] static Result<std::shared_ptr<OpenFile>> TryOnce(
        const std::filesystem::path& path);

    std::shared_ptr<OpenFile> file_;
};

}  // namespace sontaro
