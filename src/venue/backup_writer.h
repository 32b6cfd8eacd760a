// Writes a backup of a venue.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>

#include "base/file_lock.h"
#include "venue/backup_manifest.h"

namespace sontaro {

class Backup;

struct BackupPlan {
    std::filesystem::path folder;          ///< made if need be
    bool isFlat = false;                   ///< without times, into the folder itself
    bool onlyChanged = false;              ///< none with the same values as the latest
    std::optional<std::size_t> keep = {};  ///< how many whole ones are left, at least 1
    std::string program = {};              ///< its version
    std::chrono::system_clock::time_point begun = std::chrono::system_clock::now();
};

/// What a run has left.
struct WrittenBackup {
    std::filesystem::path folder;  ///< of the backup; of the latest one when nothing has changed
    bool isNew = true;             ///< false: nothing has changed
    std::size_t removed = 0;       ///< older ones that had to go
    std::string notRemoved = {};   ///< why not all of them could be removed; empty: they are gone
};

/// Writes each player's documents as soon as they are there, and the manifest last: what there is
/// before `Finish` has succeeded is no backup, whatever becomes of the process. A flat backup is,
/// at every moment, whole as it was or as it is now; players and blocks that were not read stay in
/// it as they were. Files are the user's alone.
class BackupWriter {
   public:
    /// Begins a backup, once the leftovers of killed runs are removed. Fails, with a reason for the
    /// user, when another process is writing into the folder.
    [[nodiscard]] static Result<std::unique_ptr<BackupWriter>> Begin(BackupPlan plan);
    /// Removes what was written, unless it is finished.
    ~BackupWriter();
    BackupWriter(const BackupWriter&) = delete;
    BackupWriter& operator=(const BackupWriter&) = delete;

    /// Writes a player's documents; each player once. Any thread.
    [[nodiscard]] Status Add(const PlayerDocuments& documents);

    /// Makes a backup of all that was added. Afterwards the writer is of no more use.
    [[nodiscard]] Result<WrittenBackup> Finish(
        std::chrono::system_clock::time_point ended = std::chrono::system_clock::now());

   private:
    BackupWriter(BackupPlan plan, FileLock lock);

    [[nodiscard]] Status MakeFolder();
    [[nodiscard]] Status PrepareFlat();
    [[nodiscard]] std::optional<std::string> Reserve(const VenuePlayer& player);
    [[nodiscard]] Status WriteBlock(const std::string& folder, const std::string& text,
                                    ManifestBlock& block) const;
    [[nodiscard]] bool HoldsNoMoreThan(const Backup& latest, const BackupManifest& manifest) const;
    [[nodiscard]] Result<WrittenBackup> FinishTimed(const BackupManifest& manifest);
    [[nodiscard]] Result<WrittenBackup> FinishFlat(BackupManifest manifest);
    void Discard();

    const BackupPlan plan_;
    const FileLock lock_;
    std::filesystem::path folder_;  // of this backup
    std::mutex mutex_;
    BackupManifest manifest_;
    std::string trouble_;                   // with the first file that could not be written
    std::optional<BackupManifest> before_;  // of a flat backup that there was
    bool isFinished_ = false;
};

}  // namespace sontaro
