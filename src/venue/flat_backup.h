// A backup that is replaced in its place, file by file, and is whole all the while.
#pragma once

#include <filesystem>
#include <optional>

#include "base/result.h"
#include "venue/backup_manifest.h"

namespace sontaro {

/// New documents first stand beside those that they replace. A second manifest then tells that they
/// are all there: from that moment on they are the backup, and whoever comes next finishes what was
/// begun. The caller holds the folder's lock.
class FlatBackup {
   public:
    /// Finishes, or takes back, what a killed run has begun. The manifest that there is then; none
    /// when there is none. Fails when the manifest is not one of ours.
    [[nodiscard]] static Result<std::optional<BackupManifest>> Recover(
        const std::filesystem::path& folder);

    /// The name of a player's folder: the one that it has already, and never another player's.
    [[nodiscard]] static std::string FolderIn(const std::optional<BackupManifest>& before,
                                              const VenuePlayer& player);

    /// Makes the written documents the backup, together with what was not read this time. False
    /// when nothing has changed.
    [[nodiscard]] static Result<bool> Replace(const std::filesystem::path& folder,
                                              const std::optional<BackupManifest>& before,
                                              BackupManifest manifest);
};

}  // namespace sontaro
