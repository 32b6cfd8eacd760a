#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "base/private_files.h"

namespace sontaro {

namespace fs = std::filesystem;

namespace {

Error LastError() { return {std::generic_category().message(errno)}; }

/// An open file; a child process does not get it.
class OpenFile {
   public:
    OpenFile(const fs::path& path, int flags)
        : file_(open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR)) {}
    ~OpenFile() {
        if (IsOpen()) close(file_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] bool IsOpen() const { return file_ >= 0; }
    [[nodiscard]] bool Write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = write(file_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }
    [[nodiscard]] bool Sync() const { return syncfs(file_) == 0; }

   private:
    const int file_;
};

}  // namespace

Status MakePrivateFolder(const fs::path& folder) {
    std::error_code error;
    if (folder.has_parent_path()) fs::create_directories(folder.parent_path(), error);
    if (mkdir(folder.c_str(), S_IRWXU) == 0) return Done{};
    if (errno != EEXIST) return LastError();
    if (fs::symlink_status(folder, error).type() == fs::file_type::directory) return Done{};
    return Error{std::make_error_code(std::errc::not_a_directory).message()};
}

Status WritePrivateFile(const fs::path& path, std::string_view bytes) {
    std::error_code error;
    fs::remove(path, error);
    // Neither through a link nor into a file that others may read.
    const OpenFile file(path, O_WRONLY | O_CREAT | O_EXCL);
    if (!file.IsOpen()) return LastError();
    if (file.Write(bytes)) return Done{};
    Error failure = LastError();
    fs::remove(path, error);
    return failure;
}

Status SyncWritten(const fs::path& path) {
    const OpenFile file(path, O_RDONLY);
    if (!file.IsOpen() || !file.Sync()) return LastError();
    return Done{};
}

}  // namespace sontaro
