// Walls that are kept: the one that a set of players had last, and those in files.
#pragma once

#include "base/json_file.h"
#include "base/prompts.h"
#include "screensplit/split_document.h"

namespace sontaro {

/// What a file of a wall says of itself, and what it holds.
inline constexpr const char* kWallFormat = "sontaro-screen-split";
inline constexpr const char* kWallMember = "wall";

/// The wall of a document as JSON that names every screen by the ID of its player and the number of
/// its output, since names carry addresses that change. None when two screens cannot be told apart.
[[nodiscard]] std::optional<Json::Value> WallToJson(const SplitDocument& document);
/// The wall that `json` tells for the same set of screens; none when they are others, or it is no
/// wall at all.
[[nodiscard]] std::optional<SplitWall> WallFromJson(const Json::Value& json,
                                                    const SplitDocument& document);

/// Keeps a wall of `WallToJson` as the last one of its set of players. Nothing is told when that
/// does not work: only a convenience is lost.
void RememberWall(const Json::Value& wall, JsonFile& preferences);
/// The wall that just this set of players had last; none when it is not known.
[[nodiscard]] std::optional<SplitWall> RememberedWall(const SplitDocument& document,
                                                      const JsonFile& preferences);

/// Writes wall and advanced settings to a file of Sontaro's own, and says whether that worked.
void SaveWallFile(const SplitDocument& document, const std::filesystem::path& path,
                  Prompts& prompts);
/// Takes such a file for the same set of screens, and says so when not all of its advanced settings
/// fit; or says what is wrong with it and changes nothing.
bool OpenWallFile(SplitDocument& document, const std::filesystem::path& path, Prompts& prompts);
/// The same for a document that one of the players held earlier.
bool OpenEarlierWall(SplitDocument& document, std::string_view text, Prompts& prompts);

}  // namespace sontaro
