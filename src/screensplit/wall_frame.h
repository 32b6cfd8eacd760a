// A picture of a video wall in a window: where everything is, and what is dragged. Without a
// window.
#pragma once

#include "screensplit/wall_picture.h"

namespace sontaro {

/// The room for a picture, and its measures; all in pixels of the window.
struct WallSpace {
    double width = 0, height = 0;
    double margin = 8;   ///< around the wall and between the screens in the tray
    double tray = 40;    ///< height of the tray, at the bottom
    double chip = 160;   ///< most width of a screen in the tray
    double handle = 10;  ///< least width of a seam to be gripped
    double beside = 0;  ///< for what is said of the seams: above the wall, at the right of a column
    double caption = 0;  ///< height of the line between the wall and the tray
    double title = 0;    ///< of the tray, at the left of its screens
};

/// A picture, fitted into its room. `picture` outlives it.
class WallFrame {
   public:
    WallFrame(const WallPicture& picture, const WallSpace& space);

    /// Pixels of the window for one of the wall.
    [[nodiscard]] double Scale() const { return scale_; }
    /// Something of the wall in the window.
    [[nodiscard]] WallRect Placed(const WallRect& area) const;
    [[nodiscard]] WallRect Everything() const { return {0, 0, space_.width, space_.height}; }
    [[nodiscard]] WallRect Tray() const;
    /// The line between the wall and the tray.
    [[nodiscard]] WallRect Caption() const;
    /// A screen in the tray.
    [[nodiscard]] WallRect Unused(std::size_t index) const;
    /// Where a seam is gripped; with the room beside the wall.
    [[nodiscard]] WallRect Handle(std::size_t seam) const;
    /// The line ahead of the tile at `place`, or behind the last one: what is dropped goes there.
    [[nodiscard]] WallRect DropMark(std::size_t place) const;

    /// What is at a point: a seam before the tiles that it joins, of two tiles the later one.
    [[nodiscard]] WallSpot SpotAt(double x, double y) const;
    /// Where a tile goes that is dropped at a point.
    [[nodiscard]] WallDrop DropAt(double x, double y) const;

   private:
    const WallPicture& picture_;
    WallSpace space_;
    double scale_ = 1;
    double left_ = 0;  // of the wall's origin
    double top_ = 0;
};

/// Moves the tile of a screen.
void DropScreen(std::size_t screen, const WallDrop& drop, SplitDocument& document);

/// A tile that is dragged.
class TileDrag {
   public:
    /// Pressed at a point on a tile. It moves once the pointer has gone `threshold` pixels.
    // NOLINTNEXTLINE(bugprone-easily-swappable-parameters)
    TileDrag(std::size_t screen, double x, double y, double threshold)
        : screen_(screen), x_(x), y_(y), threshold_(threshold) {}

    [[nodiscard]] std::size_t Screen() const { return screen_; }
    /// Where the tile would go; none while the pointer has not gone far enough.
    [[nodiscard]] std::optional<WallDrop> MovedTo(double x, double y, const WallFrame& frame);

   private:
    const std::size_t screen_;
    const double x_, y_;
    const double threshold_;
    bool moves_ = false;
};

/// A seam that is dragged: its overlap grows as the later picture is drawn over the earlier one.
/// The scale of the press counts until the end, since the picture becomes another one meanwhile.
class SeamDrag {
   public:
    SeamDrag(SplitDocument& document, std::size_t seam, double x, double y, double scale);

    /// Gives the seam the overlap that the pointer stands for, all in one step to be undone.
    /// False when it has that overlap already.
    bool MoveTo(double x, double y, SplitDocument& document) const;

   private:
    const std::size_t seam_;
    const SplitDirection direction_;
    const double x_, y_;
    const double scale_;
    const std::int32_t pixels_;
    const SplitDocument::Series series_;
};

}  // namespace sontaro
