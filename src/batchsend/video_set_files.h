// Where the parameter page is kept: in files, and as it was last.
#pragma once

#include "base/json_file.h"
#include "base/prompts.h"
#include "batchsend/video_set.h"

namespace sontaro {

/// What such a file says of itself, and what it holds.
inline constexpr const char* kVideoSetFormat = "sontaro-video-set";
inline constexpr const char* kVideoSetMember = "set";

/// Writes the page to a file of Sontaro's own, and says whether that worked.
void SaveVideoSet(const VideoSet& set, const std::filesystem::path& path, Prompts& prompts);
/// Takes such a file, or says what is wrong with it and changes nothing.
bool OpenVideoSet(VideoSet& set, const std::filesystem::path& path, Prompts& prompts);

/// Keeps the page as it is. Nothing is told when that does not work: only a convenience is lost.
void RememberVideoSet(const VideoSet& set, JsonFile& preferences);
/// The page as it was last; an empty one when it is not known.
[[nodiscard]] VideoSet RememberedVideoSet(const JsonFile& preferences);

}  // namespace sontaro
