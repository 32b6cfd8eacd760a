// What the folders of backups hold besides documents and manifests. For those who read and write
// them.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "base/result.h"
#include "session/settings_blocks.h"

namespace sontaro::backup_files {

/// In a folder of backups: who holds it writes there.
inline constexpr const char* kLock = ".sontaro-lock";
/// In the folder of a backup that is not whole yet, or no longer.
inline constexpr const char* kUnfinished = ".sontaro-unfinished";
/// The manifest of a flat backup whose files may still be called by `NameOfNew`.
inline constexpr const char* kNextManifest = ".sontaro-next.json";

/// How a document is called until it takes its place in a flat backup.
[[nodiscard]] std::string NameOfNew(const std::string& file);

/// The text of the manifest of that name in `folder`; none when there is none. Fails when it cannot
/// be read, or is longer than any.
[[nodiscard]] Result<std::optional<std::string>> ManifestText(const std::filesystem::path& folder,
                                                              const char* name);

/// Writes a manifest and gives it its name, once everything before it is on the disk.
[[nodiscard]] Status PutManifest(const std::filesystem::path& folder, const char* name,
                                 const std::string& text);

/// Removes a backup that is not to be one any longer, or has never been: the files that backups
/// have, and the folders if they are empty then. Links are not followed. Killed in the middle, it
/// leaves a folder that says that it is unfinished.
[[nodiscard]] Status RemoveBackup(const std::filesystem::path& folder);

/// Removes what a killed run has left in the flat backup in `folder`: files that have not taken
/// their places.
void RemoveNewFiles(const std::filesystem::path& folder);

}  // namespace sontaro::backup_files
