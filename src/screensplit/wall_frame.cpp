#include "screensplit/wall_frame.h"

#include <algorithm>
#include <cmath>

namespace sontaro {

namespace {

using Kind = WallSpot::Kind;

bool IsHorizontal(SplitDirection direction) { return direction == SplitDirection::kHorizontal; }

/// `rect` made at least so long along a direction, about its middle.
WallRect Widened(WallRect rect, SplitDirection direction, double least) {
    double& start = IsHorizontal(direction) ? rect.left : rect.top;
    double& length = IsHorizontal(direction) ? rect.width : rect.height;
    if (length < least) {
        start -= (least - length) / 2;
        length = least;
    }
    return rect;
}

std::int32_t OverlapOf(const SplitDocument& document, std::size_t seam) {
    if (seam >= document.Wall().seams.size()) return 0;
    const SplitSeam& overlap = document.Wall().seams[seam];
    return IsHorizontal(document.Direction()) ? overlap.x : overlap.y;
}

}  // namespace

WallFrame::WallFrame(const WallPicture& picture, const WallSpace& space)
    : picture_(picture), space_(space) {
    const WallRect& whole = picture.Whole();
    const bool isHorizontal = IsHorizontal(picture.Direction());
    const double above = isHorizontal ? space.beside : 0;
    const double width =
        std::max(space.width - 2 * space.margin - (isHorizontal ? 0 : space.beside), 1.0);
    const double height =
        std::max(space.height - space.tray - space.caption - 2 * space.margin - above, 1.0);
    if (!picture.Tiles().empty())
        scale_ = std::min(width / std::max(whole.width, 1.0), height / std::max(whole.height, 1.0));
    left_ = space.margin + (width - whole.width * scale_) / 2 - whole.left * scale_;
    top_ = space.margin + above + (height - whole.height * scale_) / 2 - whole.top * scale_;
}

WallRect WallFrame::Placed(const WallRect& area) const {
    return {left_ + area.left * scale_, top_ + area.top * scale_, area.width * scale_,
            area.height * scale_};
}

WallRect WallFrame::Tray() const {
    return {0, std::max(space_.height - space_.tray, 0.0), space_.width, space_.tray};
}

WallRect WallFrame::Caption() const {
    return {space_.margin, Tray().top - space_.caption,
            std::max(space_.width - 2 * space_.margin, 1.0), space_.caption};
}

WallRect WallFrame::Unused(std::size_t index) const {
    const WallRect tray = Tray();
    const auto count = static_cast<double>(picture_.Unused().size());
    const double step =
        std::min(space_.chip, std::max(tray.width - space_.margin - space_.title, 0.0) / count);
    return {space_.margin + space_.title + step * static_cast<double>(index),
            tray.top + space_.margin / 2, std::max(step - space_.margin, 1.0),
            std::max(tray.height - space_.margin, 1.0)};
}

WallRect WallFrame::Handle(std::size_t seam) const {
    WallRect handle =
        Widened(Placed(picture_.Overlaps()[seam].area), picture_.Direction(), space_.handle);
    if (IsHorizontal(picture_.Direction())) {
        handle.top -= space_.beside;
        handle.height += space_.beside;
    } else {
        handle.width += space_.beside;
    }
    return handle;
}

WallRect WallFrame::DropMark(std::size_t place) const {
    const auto& tiles = picture_.Tiles();
    if (tiles.empty()) return {space_.margin, space_.margin, 0, 0};
    const bool isBehind = place >= tiles.size();
    WallRect mark = Placed(isBehind ? tiles.back().area : tiles[place].area);
    double& start = IsHorizontal(picture_.Direction()) ? mark.left : mark.top;
    double& length = IsHorizontal(picture_.Direction()) ? mark.width : mark.height;
    if (isBehind) start += length;
    length = 0;
    return mark;
}

WallSpot WallFrame::SpotAt(double x, double y) const {
    for (std::size_t i = 0; i < picture_.Unused().size(); ++i)
        if (Unused(i).Contains(x, y)) return {Kind::kUnused, i};
    if (Tray().Contains(x, y)) return {Kind::kTray};
    for (std::size_t i = picture_.Overlaps().size(); i-- > 0;)
        if (Handle(i).Contains(x, y)) return {Kind::kSeam, i};
    for (std::size_t i = picture_.Tiles().size(); i-- > 0;)
        if (Placed(picture_.Tiles()[i].area).Contains(x, y)) return {Kind::kTile, i};
    return {};
}

WallDrop WallFrame::DropAt(double x, double y) const {
    if (Tray().Contains(x, y)) return {true, 0};
    const bool isHorizontal = IsHorizontal(picture_.Direction());
    const auto isBefore = [&](const WallTile& tile) {
        const WallRect placed = Placed(tile.area);
        return isHorizontal ? placed.left + placed.width / 2 <= x
                            : placed.top + placed.height / 2 <= y;
    };
    return {false, static_cast<std::size_t>(std::ranges::count_if(picture_.Tiles(), isBefore))};
}

std::optional<WallDrop> TileDrag::MovedTo(double x, double y, const WallFrame& frame) {
    moves_ = moves_ || std::hypot(x - x_, y - y_) >= threshold_;
    return moves_ ? std::optional(frame.DropAt(x, y)) : std::nullopt;
}

void DropScreen(std::size_t screen, const WallDrop& drop, SplitDocument& document) {
    if (drop.toTray)
        document.DismissScreen(screen);
    else
        document.PlaceScreen(screen, drop.place);
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters)
SeamDrag::SeamDrag(SplitDocument& document, std::size_t seam, double x, double y, double scale)
    : seam_(seam),
      direction_(document.Direction()),
      x_(x),
      y_(y),
      scale_(scale),
      pixels_(OverlapOf(document, seam)),
      series_(document.NewSeries()) {}

bool SeamDrag::MoveTo(double x, double y, SplitDocument& document) const {
    const double way = IsHorizontal(direction_) ? x - x_ : y - y_;
    constexpr double kFarthest = 1 << 20;
    const double pixels = std::clamp(pixels_ - way / scale_, -kFarthest, kFarthest);
    return document.SetOverlap(seam_, static_cast<std::int32_t>(std::lround(pixels)), series_);
}

}  // namespace sontaro
