// Files that nobody but the user may read, where the system knows such.
#pragma once

#include <filesystem>
#include <string_view>

#include "base/result.h"

namespace sontaro {

/// Makes a folder for the user alone, unless there is one, and those that it stands in. Fails as
/// well when something else, a link included, has the name.
[[nodiscard]] Status MakePrivateFolder(const std::filesystem::path& folder);

/// Writes a file for the user alone in place of whatever file has the name. When that fails there
/// is no such file.
[[nodiscard]] Status WritePrivateFile(const std::filesystem::path& path, std::string_view bytes);

/// Waits until the file at `path` is on its disk; on Linux with all else that was written there.
[[nodiscard]] Status SyncWritten(const std::filesystem::path& path);

}  // namespace sontaro
