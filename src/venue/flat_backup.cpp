#include "venue/flat_backup.h"

#include <algorithm>
#include <utility>

#include "base/file.h"
#include "base/path_text.h"
#include "venue/backup_files.h"
#include "venue/folder_name.h"
#include "venue/sha256.h"

namespace sontaro {

namespace fs = std::filesystem;

namespace {

using Outcome = BlockReading::Outcome;

/// Why a file that stands in the manifest is there no longer.
constexpr const char* kLost = "lost";

bool Holds(const fs::path& file, const ManifestBlock& block) {
    const auto text = ReadFile(file, static_cast<std::size_t>(block.bytes) + 1);
    return text && text->size() == block.bytes && Sha256Text(*text) == block.sha256;
}

/// The manifest of that name; none when there is none.
Result<std::optional<BackupManifest>> Manifest(const fs::path& folder, const char* name) {
    const auto text = backup_files::ManifestText(folder, name);
    if (!text) return Error{text.reason()};
    if (!*text) return std::optional<BackupManifest>();
    auto read = ReadManifest(**text);
    if (const auto* trouble = std::get_if<TextTrouble>(&read))
        return Error{std::string(name) + ": " + trouble->Told()};
    return std::optional(std::move(std::get<BackupManifest>(read)));
}

/// Gives every file its name. Those that are no longer to be there go before their manifest does:
/// nobody would know of them.
Status PutFiles(const fs::path& folder, const BackupManifest& next) {
    for (const ManifestPlayer& player : next.players)
        for (const ManifestBlock& block : player.blocks) {
            const fs::path place = folder / PathOfText(player.folder);
            const fs::path written = place / backup_files::NameOfNew(block.FileName());
            std::error_code error;
            if (!block.hasFile) {
                fs::remove(place / block.FileName(), error);
            } else if (fs::exists(written, error) && Holds(written, block)) {
                if (Status moved = MoveOver(written, place / block.FileName()); !moved)
                    return moved;
            }
        }
    return MoveOver(folder / backup_files::kNextManifest, folder / kManifestName);
}

/// Whether the files of a manifest are all there, under either name.
bool IsWhole(const fs::path& folder, const BackupManifest& manifest) {
    return std::ranges::all_of(manifest.players, [&](const ManifestPlayer& player) {
        const fs::path place = folder / PathOfText(player.folder);
        return std::ranges::all_of(player.blocks, [&](const ManifestBlock& block) {
            return !block.hasFile ||
                   Holds(place / backup_files::NameOfNew(block.FileName()), block) ||
                   Holds(place / block.FileName(), block);
        });
    });
}

/// A file that somebody has changed is written anew although its manifest stays as it is.
bool HasNewFiles(const fs::path& folder, const BackupManifest& manifest) {
    return std::ranges::any_of(manifest.players, [&](const ManifestPlayer& player) {
        const fs::path place = folder / PathOfText(player.folder);
        return std::ranges::any_of(player.blocks, [&](const ManifestBlock& block) {
            std::error_code error;
            return fs::exists(place / backup_files::NameOfNew(block.FileName()), error);
        });
    });
}

/// What was kept of a block, which could not be read this time.
void KeepEarlier(const fs::path& place, const ManifestBlock& earlier, ManifestBlock& block) {
    block.hasFile = earlier.hasFile && Holds(place / block.FileName(), earlier);
    if (!block.hasFile) return;
    block.bytes = earlier.bytes;
    block.sha256 = earlier.sha256;
}

void KeepEarlier(const fs::path& folder, const ManifestPlayer& earlier, ManifestPlayer& player) {
    const fs::path place = folder / PathOfText(player.folder);
    for (const ManifestBlock& kept : earlier.blocks) {
        const auto block = std::ranges::find(player.blocks, kept.kind, &ManifestBlock::kind);
        if (block == player.blocks.end()) {
            player.blocks.push_back(kept);
            if (!kept.hasFile || Holds(place / kept.FileName(), kept)) continue;
            player.blocks.back() = {kept.kind, Outcome::kFailed, kLost};
        } else if (block->outcome == Outcome::kFailed) {
            KeepEarlier(place, kept, *block);
        }
    }
    std::ranges::sort(player.blocks, {}, [](const ManifestBlock& block) { return block.kind; });
}

void KeepEarlier(const fs::path& folder, const BackupManifest& before, BackupManifest& manifest) {
    for (const ManifestPlayer& earlier : before.players) {
        auto player = std::ranges::find(manifest.players, earlier.folder, &ManifestPlayer::folder);
        if (player == manifest.players.end()) {
            std::error_code error;  // who has removed the folder has no use for the player
            if (!fs::exists(folder / PathOfText(earlier.folder), error)) continue;
            player = manifest.players.insert(player, {earlier.player, earlier.folder, {}});
        }
        KeepEarlier(folder, earlier, *player);
    }
}

}  // namespace

Result<std::optional<BackupManifest>> FlatBackup::Recover(const fs::path& folder) {
    const auto next = Manifest(folder, backup_files::kNextManifest);
    if (!next) return Error{next.reason()};
    if (*next && IsWhole(folder, **next)) {
        if (const Status put = PutFiles(folder, **next); !put) return Error{put.reason()};
    } else if (*next) {
        std::error_code error;
        fs::remove(folder / backup_files::kNextManifest, error);
        if (error) return Error{error.message()};
    }
    backup_files::RemoveNewFiles(folder);
    return Manifest(folder, kManifestName);
}

std::string FlatBackup::FolderIn(const std::optional<BackupManifest>& before,
                                 const VenuePlayer& player) {
    bool isAnothers = false;
    if (before)
        for (const ManifestPlayer& entry : before->players) {
            if (entry.player.id != player.id) continue;
            if (entry.player.mac == player.mac) return entry.folder;
            isAnothers = true;
        }
    return FolderNameOf({player.id, isAnothers ? player.mac : ""});
}

Result<bool> FlatBackup::Replace(const fs::path& folder,
                                 const std::optional<BackupManifest>& before,
                                 BackupManifest manifest) {
    if (before) KeepEarlier(folder, *before, manifest);
    std::ranges::sort(manifest.players, {}, &ManifestPlayer::folder);
    if (before && manifest == *before && !HasNewFiles(folder, manifest)) return false;
    const Status put =
        backup_files::PutManifest(folder, backup_files::kNextManifest, WriteManifest(manifest));
    if (!put) return Error{put.reason()};
    if (const Status placed = PutFiles(folder, manifest); !placed) return Error{placed.reason()};
    return true;
}

}  // namespace sontaro
