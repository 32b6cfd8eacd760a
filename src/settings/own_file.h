// Files that only this program writes: a JSON object with its format, its version and its content.
#pragma once

#include <json/value.h>

#include <filesystem>
#include <optional>
#include <string>

#include "base/local_text.h"
#include "base/prompts.h"

namespace sontaro {

/// A kind of such files.
struct OwnFileKind {
    const char* format;     ///< what a file says of itself
    LocalText isOtherKind;  ///< why any other file is refused
};

/// Replaces the file at `path` by `content`, an object to which format and version are added, and
/// tells the user whether that has worked.
void SaveOwnFile(const OwnFileKind& kind, Json::Value content, const std::filesystem::path& path,
                 Prompts& prompts);

/// The object in the file at `path`. None when it is of another kind or of a later version, or
/// cannot be read; the user has been told.
[[nodiscard]] std::optional<Json::Value> OpenOwnFile(const OwnFileKind& kind,
                                                     const std::filesystem::path& path,
                                                     Prompts& prompts);

/// Tells the user that a file is not taken, which has changed nothing, and why: a sentence.
void TellFileRefused(const std::filesystem::path& path, const std::string& why, Prompts& prompts);

}  // namespace sontaro
