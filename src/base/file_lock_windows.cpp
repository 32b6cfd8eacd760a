#include <windows.h>

#include <system_error>

#include "base/file_lock.h"

namespace sontaro {

class FileLock::OpenFile {
   public:
    explicit OpenFile(const std::filesystem::path& path)
        : file_(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~OpenFile() {
        if (IsOpen()) CloseHandle(file_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] bool IsOpen() const { return file_ != INVALID_HANDLE_VALUE; }
    [[nodiscard]] bool IsHeldElsewhere() const {
        OVERLAPPED firstByte{};
        return !LockFileEx(file_, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                           &firstByte) &&
               (GetLastError() == ERROR_LOCK_VIOLATION || GetLastError() == ERROR_IO_PENDING);
    }

   private:
    const HANDLE file_;
};

Result<std::shared_ptr<FileLock::OpenFile>> FileLock::TryOnce(const std::filesystem::path& path) {
    auto file = std::make_shared<OpenFile>(path);
    if (!file->IsOpen())
        return Error{std::system_category().message(static_cast<int>(GetLastError()))};
    if (file->IsHeldElsewhere()) file.reset();
    return file;
}

}  // namespace sontaro
