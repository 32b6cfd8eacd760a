// Whole files in and out.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "base/result.h"

namespace sontaro {

/// The first `limit` bytes of the file at `path`. Fails when it cannot be opened or read.
[[nodiscard]] Result<std::string> ReadFile(const std::filesystem::path& path,
                                           std::size_t limit = 64U << 20);

/// Replaces the file at `path` by `bytes`, or leaves it as it was: the bytes are written to a
/// temporary file beside it, which then takes its name. Missing folders are created.
[[nodiscard]] Status WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes);

/// Gives the file at `from` the name `target`, in place of the file that has it.
[[nodiscard]] Status MoveOver(const std::filesystem::path& from,
                              const std::filesystem::path& target);

}  // namespace sontaro
