#include "base/folders.h"

namespace sontaro {

namespace fs = std::filesystem;

fs::path ProgramFolder() {
    fs::path beside = ExecutableFolder();
    return IsWritableFolder(beside) ? beside : UserDataFolder();
}

Result<fs::path> EnsureTempFolder(const fs::path& programFolder) {
    fs::path temp = programFolder / "Temp";
    std::error_code error;
    fs::create_directories(temp, error);
    if (error) return Error{error.message()};
    return temp;
}

void DeleteContents(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code leftBehind;
        fs::remove_all(entry->path(), leftBehind);
    }
}

}  // namespace sontaro
