// Backups of a venue, in folders.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "base/result.h"
#include "venue/backup_manifest.h"

namespace sontaro {

/// A whole backup: when it was opened, every file was just as its manifest says. Any thread, one at
/// a time.
class Backup {
   public:
    /// Opens the backup in `folder`: its own, or else the latest whole one among those that
    /// `folder` holds. Reads every file of it. Fails with a reason for the user, which names the
    /// file at fault.
    [[nodiscard]] static Result<Backup> Open(const std::filesystem::path& folder);

    [[nodiscard]] const std::filesystem::path& Folder() const { return folder_; }
    [[nodiscard]] const BackupManifest& Manifest() const { return manifest_; }

    /// The documents of the player at that place in the manifest. What stands in the backup from an
    /// earlier run counts as read. Fails when a file is no longer as it was.
    [[nodiscard]] Result<PlayerDocuments> Documents(std::size_t player) const;

    /// The players with that ID; where several have it and one of them has that address, it alone.
    [[nodiscard]] std::vector<std::size_t> PlayersWithId(std::string_view id,
                                                         std::string_view mac = {}) const;

   private:
    friend class BackupStore;

    [[nodiscard]] static Result<Backup> OpenOwn(const std::filesystem::path& folder);
    [[nodiscard]] Result<std::string> ReadBlock(const ManifestPlayer& player,
                                                const ManifestBlock& block) const;
    [[nodiscard]] Status Check() const;

    std::filesystem::path folder_;
    BackupManifest manifest_;
    bool isHalfReplaced_ = false;  // files may still have the names that they were written by
};

/// A folder in the time form of backups.
struct ListedBackup {
    std::filesystem::path folder;
    std::string name;     ///< "20261121T203000Z"
    std::string trouble;  ///< why it is no whole backup, for the user; empty: it is one
};

/// The backups that a folder holds by time.
class BackupStore {
   public:
    explicit BackupStore(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// All of them, the latest first. Reads every file.
    [[nodiscard]] std::vector<ListedBackup> List() const;
    /// The latest whole one; none when there is none.
    [[nodiscard]] std::optional<Backup> Latest() const;
    /// Removes the oldest whole ones until `count`, at least 1, are left; the latest without a
    /// failure is left in any case, and so is what holds a document of a player that no later one
    /// has. What is no whole backup stays, and so does what nobody here has
    /// written. Returns how many are gone. The caller holds the folder's lock.
    [[nodiscard]] Result<std::size_t> RemoveAllBut(std::size_t count);
    /// Removes what killed runs have left, which says that it is unfinished. Likewise.
    void RemoveLeftovers();

   private:
    [[nodiscard]] std::vector<std::filesystem::path> Folders() const;

    std::filesystem::path folder_;
};

}  // namespace sontaro
