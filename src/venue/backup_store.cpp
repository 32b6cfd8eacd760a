#include "venue/backup_store.h"

#include <fmt/printf.h>

#include <algorithm>
#include <functional>
#include <set>
#include <tuple>

#include "base/file.h"
#include "base/folders.h"
#include "base/path_text.h"
#include "venue/backup_files.h"
#include "venue/sha256.h"
#include "venue/utc_time.h"

namespace sontaro {

namespace fs = std::filesystem;

namespace {

constexpr LocalText kNoManifest = {"“%s”中没有备份清单：备份未完成，或不是备份。",
                                   "\"%s\" has no manifest: it is not finished, or no backup."};
constexpr LocalText kNoBackup = {"“%s”中没有完整的备份。", "there is no whole backup in \"%s\"."};
constexpr LocalText kAtFault = {"%s：%s", "%s: %s"};
constexpr LocalText kOtherFile = {"文件与清单不符。", "the file is not as the manifest says."};

std::string Named(const LocalText& text, const fs::path& folder) {
    return fmt::sprintf(Localized(text), TextOfPath(folder));
}

Error AtFault(const std::string& file, const std::string& why) {
    return {fmt::sprintf(Localized(kAtFault), file, why)};
}

bool HasFailures(const BackupManifest& manifest) {
    return std::ranges::any_of(manifest.players, [](const ManifestPlayer& player) {
        return std::ranges::any_of(player.blocks, [](const ManifestBlock& block) {
            return block.outcome == BlockReading::Outcome::kFailed;
        });
    });
}

/// What was read of a player: its ID and MAC address, and the block.
using HeldBlocks = std::set<std::tuple<std::string, std::string, const SettingsBlockKind*>>;

/// Adds what a backup has read. Whether there was anything that was not held yet.
bool AddHeld(const BackupManifest& manifest, HeldBlocks& held) {
    const std::size_t before = held.size();
    for (const ManifestPlayer& entry : manifest.players)
        for (const ManifestBlock& block : entry.blocks)
            if (block.hasFile) held.emplace(entry.player.id, entry.player.mac, block.kind);
    return held.size() > before;
}

}  // namespace

Result<Backup> Backup::OpenOwn(const fs::path& folder) {
    Error failure{Named(kNoManifest, folder)};
    for (const char* name : {backup_files::kNextManifest, kManifestName}) {
        const auto text = backup_files::ManifestText(folder, name);
        if (text && !*text) continue;
        auto manifest = text ? ReadManifest(**text) : TextTrouble{{}, text.reason()};
        if (const auto* trouble = std::get_if<TextTrouble>(&manifest)) {
            failure = AtFault(name, trouble->Told());
            continue;
        }
        Backup backup;
        backup.folder_ = folder;
        backup.manifest_ = std::move(std::get<BackupManifest>(manifest));
        backup.isHalfReplaced_ = name == backup_files::kNextManifest;
        const Status checked = backup.Check();
        if (checked) return backup;
        failure = Error{checked.reason()};
    }
    return failure;
}

Result<Backup> Backup::Open(const fs::path& folder) {
    std::error_code error;
    const fs::path name =
        folder.has_filename() ? folder.filename() : folder.parent_path().filename();
    const bool isOwn = fs::exists(folder / kManifestName, error) ||
                       fs::exists(folder / backup_files::kNextManifest, error) ||
                       TimeOfName(TextOfPath(name));
    if (isOwn) return OpenOwn(folder);
    if (auto latest = BackupStore(folder).Latest()) return *std::move(latest);
    return Error{Named(kNoBackup, folder)};
}

Status Backup::Check() const {
    for (const ManifestPlayer& player : manifest_.players)
        for (const ManifestBlock& block : player.blocks)
            if (block.hasFile)
                if (const auto text = ReadBlock(player, block); !text) return Error{text.reason()};
    return Done{};
}

Result<std::string> Backup::ReadBlock(const ManifestPlayer& player,
                                      const ManifestBlock& block) const {
    const fs::path place = folder_ / PathOfText(player.folder);
    const auto limit = static_cast<std::size_t>(block.bytes) + 1;
    Error failure;
    for (const std::string& name : {block.FileName(), backup_files::NameOfNew(block.FileName())}) {
        Result<std::string> text = ReadFile(place / name, limit);
        if (text && text->size() == block.bytes && Sha256Text(*text) == block.sha256) return text;
        if (name == block.FileName())
            failure =
                AtFault(player.folder + '/' + name, text ? Localized(kOtherFile) : text.reason());
        if (!isHalfReplaced_) break;
    }
    return failure;
}

Result<PlayerDocuments> Backup::Documents(std::size_t player) const {
    const ManifestPlayer& entry = manifest_.players[player];
    PlayerDocuments documents{entry.player, {}};
    for (const ManifestBlock& block : entry.blocks) {
        BlockReading& reading = documents.blocks.emplace_back();
        reading.kind = block.kind;
        reading.outcome = block.hasFile ? BlockReading::Outcome::kRead : block.outcome;
        reading.why = block.why;
        if (!block.hasFile) continue;
        Result<std::string> text = ReadBlock(entry, block);
        if (!text) return Error{text.reason()};
        reading.text = std::move(*text);
    }
    return documents;
}

std::vector<std::size_t> Backup::PlayersWithId(std::string_view id, std::string_view mac) const {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < manifest_.players.size(); ++i)
        if (manifest_.players[i].player.id == id) found.push_back(i);
    const auto hasAddress = [&](std::size_t index) {
        return manifest_.players[index].player.mac == mac;
    };
    if (std::ranges::count_if(found, hasAddress) == 1)
        std::erase_if(found, std::not_fn(hasAddress));
    return found;
}

std::vector<fs::path> BackupStore::Folders() const {
    std::error_code error;
    std::vector<fs::path> folders;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        const fs::path& path = entry->path();
        if (TimeOfName(TextOfPath(path.filename())) && !IsLink(path) &&
            fs::is_directory(path, unknown))
            folders.push_back(path);
    }
    std::ranges::sort(folders, std::greater());
    return folders;
}

std::vector<ListedBackup> BackupStore::List() const {
    std::vector<ListedBackup> listed;
    for (const fs::path& folder : Folders()) {
        const auto backup = Backup::OpenOwn(folder);
        listed.push_back({folder, TextOfPath(folder.filename()), backup ? "" : backup.reason()});
    }
    return listed;
}

std::optional<Backup> BackupStore::Latest() const {
    for (const fs::path& folder : Folders())
        if (auto backup = Backup::OpenOwn(folder)) return std::move(*backup);
    return std::nullopt;
}

Result<std::size_t> BackupStore::RemoveAllBut(std::size_t count) {
    std::size_t whole = 0;
    std::size_t removed = 0;
    bool hasSound = false;  // among those that are left
    HeldBlocks held;
    for (const fs::path& folder : Folders()) {
        const auto backup = Backup::OpenOwn(folder);
        if (!backup) continue;
        const bool isFirstSound = !hasSound && !HasFailures(backup->Manifest());
        hasSound = hasSound || isFirstSound;
        const bool isOnlyOne = AddHeld(backup->Manifest(), held);
        if (++whole <= std::max<std::size_t>(count, 1) || isFirstSound || isOnlyOne) continue;
        if (const Status gone = backup_files::RemoveBackup(folder); !gone)
            return Error{gone.reason()};
        ++removed;
    }
    return removed;
}

void BackupStore::RemoveLeftovers() {
    std::error_code error;
    for (const fs::path& folder : Folders()) {
        const fs::path mark = folder / backup_files::kUnfinished;
        if (!fs::exists(mark, error)) {
            if (fs::is_empty(folder, error)) fs::remove(folder, error);
        } else if (fs::exists(folder / kManifestName, error)) {
            fs::remove(mark, error);  // it comes last, and goes first: all else is there
        } else {
            static_cast<void>(backup_files::RemoveBackup(folder));  // what is left is no backup
        }
    }
}

}  // namespace sontaro
