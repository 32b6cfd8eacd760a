#include <windows.h>

#include <algorithm>
#include <system_error>

#include "base/folders.h"
#include "base/private_files.h"

namespace sontaro {

namespace fs = std::filesystem;

// The user's folders are the user's alone by what they inherit; files have no modes of their own.

namespace {

Error LastError() { return {std::system_category().message(static_cast<int>(GetLastError()))}; }

class OpenFile {
   public:
    OpenFile(const fs::path& path, DWORD creation)
        : file_(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, creation,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~OpenFile() {
        if (IsOpen()) CloseHandle(file_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] bool IsOpen() const { return file_ != INVALID_HANDLE_VALUE; }
    [[nodiscard]] bool Write(std::string_view bytes) const {
        constexpr std::size_t kPiece = std::size_t{1} << 20;
        while (!bytes.empty()) {
            const auto size = static_cast<DWORD>(std::min(bytes.size(), kPiece));
            DWORD written = 0;
            if (!WriteFile(file_, bytes.data(), size, &written, nullptr)) return false;
            bytes.remove_prefix(written);
        }
        return true;
    }
    [[nodiscard]] bool Sync() const { return FlushFileBuffers(file_) != 0; }

   private:
    const HANDLE file_;
};

}  // namespace

Status MakePrivateFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    std::error_code unknown;
    if (fs::is_directory(folder, unknown) && !IsLink(folder)) return Done{};
    if (!error) error = std::make_error_code(std::errc::not_a_directory);
    return Error{error.message()};
}

Status WritePrivateFile(const fs::path& path, std::string_view bytes) {
    std::error_code error;
    fs::remove(path, error);
    Error failure;
    {
        const OpenFile file(path, CREATE_NEW);
        if (file.IsOpen() && file.Write(bytes)) return Done{};
        failure = LastError();
        if (!file.IsOpen()) return failure;
    }
    fs::remove(path, error);
    return failure;
}

Status SyncWritten(const fs::path& path) {
    const OpenFile file(path, OPEN_EXISTING);
    if (!file.IsOpen() || !file.Sync()) return LastError();
    return Done{};
}

}  // namespace sontaro
