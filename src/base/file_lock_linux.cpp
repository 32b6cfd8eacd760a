#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "base/file_lock.h"

namespace sontaro {

class FileLock::OpenFile {
   public:
    // A child process must not inherit the file: it would hold the lock on.
    explicit OpenFile(const std::filesystem::path& path)
        : file_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {}
    ~OpenFile() {
        if (IsOpen()) close(file_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] bool IsOpen() const { return file_ >= 0; }
    [[nodiscard]] bool IsHeldElsewhere() const {
        return flock(file_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    }

   private:
    const int file_;
};

Result<std::shared_ptr<FileLock::OpenFile>> FileLock::TryOnce(const std::filesystem::path& path) {
    auto file = std::make_shared<OpenFile>(path);
    if (!file->IsOpen()) return Error{std::generic_category().message(errno)};
    if (file->IsHeldElsewhere()) file.reset();
    return file;
}

}  // namespace sontaro
