#include "base/file.h"

#include <chrono>
#include <fstream>
#include <thread>

#include "base/path_text.h"

namespace sontaro {

namespace fs = std::filesystem;

Result<std::string> ReadFile(const fs::path& path, std::size_t limit) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return Error{"cannot open " + TextOfPath(path.filename())};
    std::string bytes;
    char block[16384];
    while (bytes.size() < limit && file) {
        const std::size_t wanted = std::min(sizeof block, limit - bytes.size());
        file.read(block, static_cast<std::streamsize>(wanted));
        bytes.append(block, static_cast<std::size_t>(file.gcount()));
    }
    if (file.bad() || (file.fail() && !file.eof()))
        return Error{"cannot read " + TextOfPath(path.filename())};
    return bytes;
}

// Windows cannot replace a file for as long as anybody reads it, such as a virus scanner.
Status MoveOver(const fs::path& from, const fs::path& target) {
    constexpr int kAttempts = 20;
    constexpr std::chrono::milliseconds kPause{10};
    for (int attempt = 1;; ++attempt) {
        std::error_code error;
        fs::rename(from, target, error);
        if (!error) return Done{};
        if (error != std::errc::permission_denied || attempt == kAttempts)
            return Error{error.message()};
        std::this_thread::sleep_for(kPause);
    }
}

Status WriteFileAtomically(const fs::path& path, std::string_view bytes) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    fs::path temporary = path;
    temporary += ".new";
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        file.close();
        if (!file) {
            fs::remove(temporary, error);
            return Error{"cannot write " + TextOfPath(path.filename())};
        }
    }
    Status moved = MoveOver(temporary, path);
    if (!moved) fs::remove(temporary, error);
    return moved;
}

}  // namespace sontaro
