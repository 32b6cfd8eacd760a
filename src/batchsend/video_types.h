// The names of the video categories on their way to players.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "batchsend/video_set.h"

namespace sontaro {

/// The names in a player's control protocol, or in a document of names. Missing ones are empty.
/// Fails when the text is no JSON object with categories.
[[nodiscard]] Result<CategoryNames> ReadCategoryNames(std::string_view text);

/// The document of all 64 names, and of nothing else.
[[nodiscard]] std::string VideoTypeDocument(const CategoryNames& names);

enum class VideoTypeFile : std::uint8_t {
    kWritten,
    kRemoved,       ///< players keep the names that they have
    kNamesUnknown,  ///< removed as well: what players call the other slots would be lost
};

/// Writes the document of the names to the file at `path` when that is wanted; else there is to be
/// no such file. `players` are the names for slots to which the user has given none. Fails when the
/// file cannot be written or removed.
[[nodiscard]] Result<VideoTypeFile> KeepVideoTypes(const std::filesystem::path& path,
                                                   const VideoSet& set,
                                                   const std::optional<CategoryNames>& players,
                                                   bool isWanted);

/// Where two control protocols differ, besides the names of video categories: paths of keys. Fails
/// when one of them is no JSON object.
[[nodiscard]] Result<std::vector<std::string>> DifferencesBesidesNames(std::string_view before,
                                                                       std::string_view after);

}  // namespace sontaro
