// What is written in the picture of a video wall. Without a window.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "screensplit/wall_picture.h"

namespace sontaro {

/// Room for text on a tile.
struct TextRoom {
    double width = 0;
    std::size_t lines = 0;
    /// The width of a text in the font of the tile.
    std::function<double(const std::string&)> widthOf;
};

/// What is written on a tile beneath its number. Where there is little room, the corners go first,
/// then ID, remark and output; of an address its last number stays. Remark and ID may be shortened
/// with an ellipsis, nothing else is cut.
[[nodiscard]] std::vector<std::string> TileLines(const WallTile& tile, const TextRoom& room);

/// As much of `text` as there is room for in a line, with an ellipsis; empty where that is next to
/// nothing.
[[nodiscard]] std::string Shortened(std::string text, const TextRoom& room);

/// All that there is to say of a spot; empty where there is nothing.
[[nodiscard]] std::string DescriptionOf(const WallPicture& picture, const WallSpot& spot);

}  // namespace sontaro
