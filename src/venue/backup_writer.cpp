#include "venue/backup_writer.h"

#include <fmt/printf.h>

#include <algorithm>
#include <utility>

#include "base/file.h"
#include "base/path_text.h"
#include "base/private_files.h"
#include "venue/backup_files.h"
#include "venue/backup_store.h"
#include "venue/compare.h"
#include "venue/flat_backup.h"
#include "venue/folder_name.h"
#include "venue/sha256.h"
#include "venue/utc_time.h"

namespace sontaro {

namespace fs = std::filesystem;
using namespace std::chrono;

namespace {

constexpr seconds kPatience{1};

constexpr LocalText kInUse = {"另一个程序正在向“%s”写入备份。",
                              "another process is writing a backup into \"%s\"."};
constexpr LocalText kNotWritten = {"无法写入“%s”：%s", "\"%s\" cannot be written: %s"};
constexpr LocalText kThereTwice = {"播放器“%s”出现了两次。", "the player \"%s\" is there twice."};
constexpr LocalText kNothing = {"没有读取任何播放器。", "no player has been read."};

Error NotWritten(const fs::path& path, const std::string& why) {
    return {fmt::sprintf(Localized(kNotWritten), TextOfPath(path), why)};
}

Result<std::string> TextIn(const fs::path& backup, const ManifestFile& file) {
    return ReadFile(backup / PathOfText(file.player.folder) / file.block.FileName(),
                    static_cast<std::size_t>(file.block.bytes));
}

std::string TimeTextOf(system_clock::time_point time) { return TimeText(floor<seconds>(time)); }

}  // namespace

BackupWriter::BackupWriter(BackupPlan plan, FileLock lock)
    : plan_(std::move(plan)), lock_(std::move(lock)) {
    manifest_.program = plan_.program;
}

Result<std::unique_ptr<BackupWriter>> BackupWriter::Begin(BackupPlan plan) {
    const fs::path folder = plan.folder;
    if (const Status made = MakePrivateFolder(folder); !made)
        return NotWritten(folder, made.reason());
    auto lock = FileLock::Take(folder / backup_files::kLock, kPatience);
    if (!lock) return NotWritten(folder, lock.reason());
    if (!*lock) return Error{fmt::sprintf(Localized(kInUse), TextOfPath(folder))};
    std::unique_ptr<BackupWriter> writer(new BackupWriter(std::move(plan), **lock));
    const Status ready = writer->plan_.isFlat ? writer->PrepareFlat() : writer->MakeFolder();
    if (!ready) return NotWritten(folder, ready.reason());
    return writer;
}

BackupWriter::~BackupWriter() {
    if (!isFinished_) Discard();
}

Status BackupWriter::PrepareFlat() {
    folder_ = plan_.folder;
    const auto before = FlatBackup::Recover(folder_);
    if (!before) {
        isFinished_ = true;  // what is there is not to be touched
        return Error{before.reason()};
    }
    before_ = *before;
    return Done{};
}

/// A folder that nobody has, with the time as its name; a second later where there is one.
Status BackupWriter::MakeFolder() {
    constexpr int kAttempts = 100;
    BackupStore(plan_.folder).RemoveLeftovers();
    auto time = floor<seconds>(plan_.begun);
    for (int attempt = 0; attempt < kAttempts; ++attempt, time += seconds(1)) {
        std::error_code error;
        const fs::path folder = plan_.folder / TimeName(time);
        if (fs::exists(folder, error)) continue;
        Status made = MakePrivateFolder(folder);
        if (made) made = WritePrivateFile(folder / backup_files::kUnfinished, "");
        if (made) folder_ = folder;
        return made;
    }
    return Error{std::make_error_code(std::errc::file_exists).message()};
}

/// The folder of a player that has none yet; none when it has been added.
std::optional<std::string> BackupWriter::Reserve(const VenuePlayer& player) {
    const std::lock_guard guard(mutex_);
    const auto isTaken = [&](const std::string& folder) {
        return std::ranges::find(manifest_.players, folder, &ManifestPlayer::folder) !=
               manifest_.players.end();
    };
    const bool isThere = std::ranges::any_of(manifest_.players, [&](const ManifestPlayer& entry) {
        return entry.player.id == player.id && entry.player.mac == player.mac;
    });
    std::string folder = FlatBackup::FolderIn(before_, player);
    if (isTaken(folder)) folder = FolderNameOf({player.id, player.mac});
    if (isThere || isTaken(folder)) return std::nullopt;
    manifest_.players.push_back({player, folder, {}});
    return folder;
}

Status BackupWriter::Add(const PlayerDocuments& documents) {
    const auto folder = Reserve(documents.player);
    if (!folder) return Error{fmt::sprintf(Localized(kThereTwice), documents.player.id)};
    std::vector<ManifestBlock> blocks;
    Status written = MakePrivateFolder(folder_ / PathOfText(*folder));
    for (const BlockReading& reading : documents.blocks) {
        if (!written) break;
        ManifestBlock& block = blocks.emplace_back();
        block.kind = reading.kind;
        block.outcome = reading.outcome;
        if (reading.outcome == BlockReading::Outcome::kFailed) block.why = reading.why;
        if (reading.outcome == BlockReading::Outcome::kRead)
            written = WriteBlock(*folder, reading.text, block);
    }
    if (!written) written = NotWritten(folder_ / PathOfText(*folder), written.reason());
    std::ranges::sort(blocks, {}, [](const ManifestBlock& block) { return block.kind; });
    const std::lock_guard guard(mutex_);
    std::ranges::find(manifest_.players, *folder, &ManifestPlayer::folder)->blocks =
        std::move(blocks);
    if (!written && trouble_.empty()) trouble_ = written.reason();
    return written;
}

Status BackupWriter::WriteBlock(const std::string& folder, const std::string& text,
                                ManifestBlock& block) const {
    const fs::path place = folder_ / PathOfText(folder);
    block.hasFile = true;
    block.bytes = text.size();
    block.sha256 = Sha256Text(text);
    if (!plan_.isFlat) return WritePrivateFile(place / block.FileName(), text);
    const Result<std::string> held = ReadFile(place / block.FileName(), text.size() + 1);
    if (held && *held == text) return Done{};
    return WritePrivateFile(place / backup_files::NameOfNew(block.FileName()), text);
}

Result<WrittenBackup> BackupWriter::Finish(system_clock::time_point ended) {
    BackupManifest manifest = manifest_;
    if (!trouble_.empty()) return Error{trouble_};
    if (manifest.players.empty()) return Error{Localized(kNothing)};
    if (!plan_.isFlat) {
        manifest.begun = TimeTextOf(plan_.begun);
        manifest.ended = TimeTextOf(ended);
    }
    std::ranges::sort(manifest.players, {}, &ManifestPlayer::folder);
    return plan_.isFlat ? FinishFlat(std::move(manifest)) : FinishTimed(manifest);
}

Result<WrittenBackup> BackupWriter::FinishFlat(BackupManifest manifest) {
    const Result<bool> replaced = FlatBackup::Replace(folder_, before_, std::move(manifest));
    if (!replaced) return NotWritten(folder_, replaced.reason());
    isFinished_ = true;
    return WrittenBackup{folder_, *replaced};
}

/// What compares as the same is not worth another backup, though players may have written it down
/// in another way.
bool BackupWriter::HoldsNoMoreThan(const Backup& latest, const BackupManifest& manifest) const {
    const auto areAlike = [&](const ManifestFile& held, const ManifestFile& written) {
        const auto first = TextIn(latest.Folder(), held);
        const auto second = TextIn(folder_, written);
        return first && second && CompareTexts(*held.block.kind, *first, *second).HasSameValues();
    };
    return HoldTheSame(latest.Manifest(), manifest, areAlike);
}

Result<WrittenBackup> BackupWriter::FinishTimed(const BackupManifest& manifest) {
    BackupStore store(plan_.folder);
    const auto latest = plan_.onlyChanged ? store.Latest() : std::nullopt;
    const bool isSame = latest && HoldsNoMoreThan(*latest, manifest);
    if (isSame) Discard();
    if (!isSame) {
        const Status put =
            backup_files::PutManifest(folder_, kManifestName, WriteManifest(manifest));
        if (!put) return NotWritten(folder_, put.reason());
        std::error_code leftBehind;
        fs::remove(folder_ / backup_files::kUnfinished, leftBehind);
    }
    isFinished_ = true;
    WrittenBackup written{isSame ? latest->Folder() : folder_, !isSame};
    if (!plan_.keep) return written;
    const Result<std::size_t> removed = store.RemoveAllBut(*plan_.keep);
    if (removed)
        written.removed = *removed;
    else
        written.notRemoved = removed.reason();
    return written;
}

void BackupWriter::Discard() {
    if (plan_.isFlat)
        backup_files::RemoveNewFiles(folder_);
    else if (!folder_.empty())
        static_cast<void>(backup_files::RemoveBackup(folder_));  // what is left is no backup
    isFinished_ = true;
}

}  // namespace sontaro
