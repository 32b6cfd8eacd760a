// Where Sontaro keeps its files.
#pragma once

#include <filesystem>

#include "base/result.h"

namespace sontaro {

/// The folder that holds the executable. "Templates/Co.txt" is looked for in `ProgramFolder()`.
[[nodiscard]] std::filesystem::path ExecutableFolder();

/// The user's own data folder for Sontaro; it need not exist.
[[nodiscard]] std::filesystem::path UserDataFolder();

/// The user's configuration folder for Sontaro; it need not exist.
[[nodiscard]] std::filesystem::path ConfigFolder();

/// A folder of this user for sockets and locks that do not outlive the session.
[[nodiscard]] std::filesystem::path RuntimeFolder();

/// Whether files can be created in `folder`.
[[nodiscard]] bool IsWritableFolder(const std::filesystem::path& folder);

/// Where program data stands: the executable's folder when it is writable, else `UserDataFolder()`.
[[nodiscard]] std::filesystem::path ProgramFolder();

/// Makes sure that the working folder "Temp" exists under `programFolder` and returns its path.
[[nodiscard]] Result<std::filesystem::path> EnsureTempFolder(
    const std::filesystem::path& programFolder);

/// Deletes every file and folder beneath `folder`; the folder itself stays. Symbolic links are
/// removed, never followed. What cannot be deleted is left behind.
void DeleteContents(const std::filesystem::path& folder);

/// Whether the system shows a file or a folder to nobody who does not ask for what is hidden.
[[nodiscard]] bool IsHidden(const std::filesystem::path& path);

/// Whether the path itself is a link to something else.
[[nodiscard]] bool IsLink(const std::filesystem::path& path);

}  // namespace sontaro
