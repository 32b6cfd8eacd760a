// The videos that a player has, as it lists them for what plays them by name.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace sontaro {

/// Screens of a player whose videos are listed.
inline constexpr std::size_t kListedScreens = 4;
/// Most players of a group.
inline constexpr int kMostListedPlayers = 64;

struct ListedVideo {
    std::string name;
    std::int64_t size = 0;  ///< bytes

    bool operator==(const ListedVideo&) const = default;
};

struct ListedCategory {
    std::string name;
    std::vector<ListedVideo> videos;

    bool operator==(const ListedCategory&) const = default;
};

/// The answer to command 10. Texts are UTF-8.
struct VideoList {
    int players = 1;  ///< of the group, 1 to `kMostListedPlayers`
    std::array<std::vector<ListedCategory>, kListedScreens> screens;

    bool operator==(const VideoList&) const = default;
};

/// The list in a JSON text. What is missing or of another type is as if it were 0, empty, or not
/// there; screens beyond the last are passed over, and what is listed twice is there twice. Fails
/// when the text is no JSON object.
[[nodiscard]] Result<VideoList> ReadVideoList(std::string_view text);

}  // namespace sontaro
