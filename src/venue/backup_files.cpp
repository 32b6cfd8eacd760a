#include "venue/backup_files.h"

#include <vector>

#include "base/file.h"
#include "base/folders.h"
#include "base/path_text.h"
#include "base/private_files.h"
#include "venue/backup_manifest.h"
#include "venue/folder_name.h"

namespace sontaro::backup_files {

namespace fs = std::filesystem;

namespace {

constexpr const char* kNewManifest = ".sontaro-manifest.new";

/// The folders in `folder` that are named as those of players are.
std::vector<fs::path> PlayerFolders(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> folders;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        const fs::path& path = entry->path();
        if (!IsLink(path) && fs::is_directory(path, unknown) &&
            OwnerOfFolder(TextOfPath(path.filename())))
            folders.push_back(path);
    }
    return folders;
}

std::string FileOf(const SettingsBlockKind& kind) { return std::string(kind.name) + ".json"; }

}  // namespace

std::string NameOfNew(const std::string& file) { return '.' + file + ".new"; }

Result<std::optional<std::string>> ManifestText(const fs::path& folder, const char* name) {
    std::error_code error;
    const fs::path path = folder / name;
    if (!fs::exists(path, error)) return std::optional<std::string>();
    Result<std::string> text = ReadFile(path, kLongestManifest + 1);
    if (!text) return Error{text.reason()};
    return std::optional(std::move(*text));
}

Status PutManifest(const fs::path& folder, const char* name, const std::string& text) {
    const fs::path written = folder / kNewManifest;
    if (Status done = WritePrivateFile(written, text); !done) return done;
    Status synced = SyncWritten(written);
    Status moved = synced ? MoveOver(written, folder / name) : synced;
    std::error_code leftBehind;
    if (!moved) fs::remove(written, leftBehind);
    return moved;
}

Status RemoveBackup(const fs::path& folder) {
    if (Status marked = WritePrivateFile(folder / kUnfinished, ""); !marked) return marked;
    std::error_code error;
    fs::remove(folder / kManifestName, error);
    if (error) return Error{error.message()};
    for (const fs::path& player : PlayerFolders(folder)) {
        for (const SettingsBlockKind& kind : SettingsBlocks())
            fs::remove(player / FileOf(kind), error);
        fs::remove(player, error);
    }
    fs::remove(folder / kNewManifest, error);
    fs::remove(folder / kUnfinished, error);
    fs::remove(folder, error);
    if (error) return Error{error.message()};
    return Done{};
}

void RemoveNewFiles(const fs::path& folder) {
    std::error_code error;
    for (const fs::path& player : PlayerFolders(folder)) {
        for (const SettingsBlockKind& kind : SettingsBlocks())
            fs::remove(player / NameOfNew(FileOf(kind)), error);
        if (fs::is_empty(player, error)) fs::remove(player, error);
    }
    fs::remove(folder / kNewManifest, error);
}

}  // namespace sontaro::backup_files
