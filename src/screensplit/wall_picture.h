// The picture of a video wall: its screens as tiles, true to scale. Without a window.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "screensplit/split_document.h"

namespace sontaro {

/// In pixels of the wall, or of a window.
struct WallRect {
    double left = 0, top = 0, width = 0, height = 0;

    [[nodiscard]] double Right() const { return left + width; }
    [[nodiscard]] double Bottom() const { return top + height; }
    [[nodiscard]] bool Contains(double x, double y) const {
        return x >= left && x < Right() && y >= top && y < Bottom();
    }
    bool operator==(const WallRect&) const = default;
};

/// What is in both; without width (or height) where they do not meet.
[[nodiscard]] WallRect Common(const WallRect& a, const WallRect& b);

/// What is written on a tile, and what it is.
struct WallTile {
    std::size_t screen = 0;  ///< its place among the names
    std::size_t number = 0;  ///< in the wall, from 1; 0: not used
    /// Of the document; absent for a screen that is none of its own.
    const ScreenName* name = nullptr;
    WallRect area = {};    ///< in the wall
    WallRect shown = {};   ///< what zoom leaves of it
    bool clashes = false;  ///< reaches into the one before the previous one

    /// "(1920, 0) - (3839, 1079)"
    [[nodiscard]] std::string CornersText() const;

    bool operator==(const WallTile&) const = default;
};

/// Where a picture and the one before it are both seen.
struct WallOverlap {
    std::int32_t pixels = 0;  ///< 0 where they only meet
    WallRect area;            ///< in the wall; without width (or height) then

    bool operator==(const WallOverlap&) const = default;
};

/// Something in the picture.
struct WallSpot {
    enum class Kind : std::uint8_t {
        kNothing,
        kTile,    ///< `index` among the tiles
        kSeam,    ///< `index` among the overlaps
        kUnused,  ///< `index` among the screens in the tray
        kTray,
    };
    Kind kind{};
    std::size_t index = 0;

    bool operator==(const WallSpot&) const = default;
};

/// Where a tile is dragged to.
struct WallDrop {
    bool toTray = false;
    std::size_t place = 0;  ///< ahead of which tile

    bool operator==(const WallDrop&) const = default;
};

enum class WallArrow { kLeft, kUp, kRight, kDown };
/// Arrows as they lie to the wall.
enum class WallWay { kBack, kOn, kAway, kToTray };

inline constexpr LocalText kTrayTitle = {"未使用", "not used"};

/// What there is to be seen of a document, made of the screens that would be sent. Lasts until the
/// document takes other devices.
class WallPicture {
   public:
    explicit WallPicture(const SplitDocument& document);

    [[nodiscard]] const std::vector<WallTile>& Tiles() const { return tiles_; }
    /// One between each tile and the next.
    [[nodiscard]] const std::vector<WallOverlap>& Overlaps() const { return overlaps_; }
    /// The screens in the tray.
    [[nodiscard]] const std::vector<WallTile>& Unused() const { return unused_; }
    /// All of the wall.
    [[nodiscard]] const WallRect& Whole() const { return whole_; }
    /// "3840 x 1080"; empty without a tile.
    [[nodiscard]] std::string SizeText() const;
    [[nodiscard]] SplitDirection Direction() const { return direction_; }

    /// What an arrow key leads to: along the wall from tile to tile, away from the tray to the seam
    /// ahead of a tile, towards the tray into it. The same spot where there is nothing.
    [[nodiscard]] WallSpot Neighbour(const WallSpot& spot, WallArrow arrow) const;
    /// Where a tile goes that is moved by an arrow key; none when it stays.
    [[nodiscard]] std::optional<WallDrop> MovedBy(const WallSpot& spot, WallArrow arrow) const;
    /// The screen of a tile, in the wall or in the tray; none for anything else.
    [[nodiscard]] std::optional<std::size_t> ScreenOf(const WallSpot& spot) const;
    /// Where a screen is; nothing when there is no such one.
    [[nodiscard]] WallSpot SpotOf(std::size_t screen) const;

   private:
    [[nodiscard]] WallSpot FromTile(const WallSpot& tile, WallWay way) const;
    [[nodiscard]] WallSpot FromSeam(const WallSpot& seam, WallWay way) const;
    [[nodiscard]] WallSpot FromTray(const WallSpot& unused, WallArrow arrow) const;
    void AddOverlap(const WallRect& previous, const WallRect& next);

    SplitDirection direction_{};
    std::vector<WallTile> tiles_;
    std::vector<WallOverlap> overlaps_;
    std::vector<WallTile> unused_;
    WallRect whole_;
};

}  // namespace sontaro
