#include "screensplit/wall_picture.h"

#include <fmt/format.h>

#include <algorithm>

namespace sontaro {

namespace {

using Kind = WallSpot::Kind;

// Players may hold corners in any order, and zoom that cuts off more than there is.

WallRect AreaOf(const SplitChannel& channel) {
    return {static_cast<double>(channel.leftTopX), static_cast<double>(channel.leftTopY),
            std::max(static_cast<double>(channel.rightTopX) - channel.leftTopX + 1, 0.0),
            std::max(static_cast<double>(channel.leftBottomY) - channel.leftTopY + 1, 0.0)};
}

WallRect Within(const WallRect& area, const SplitZoom& zoom) {
    const double left = std::clamp<double>(zoom.left, 0, area.width);
    const double top = std::clamp<double>(zoom.top, 0, area.height);
    return {area.left + left, area.top + top,
            std::clamp(area.width - left - zoom.right, 0.0, area.width - left),
            std::clamp(area.height - top - zoom.bottom, 0.0, area.height - top)};
}

WallRect Common(const WallRect& a, const WallRect& b) {
    const double left = std::max(a.left, b.left);
    const double top = std::max(a.top, b.top);
    return {left, top, std::max(std::min(a.Right(), b.Right()) - left, 0.0),
            std::max(std::min(a.Bottom(), b.Bottom()) - top, 0.0)};
}

WallRect Around(const WallRect& a, const WallRect& b) {
    const double left = std::min(a.left, b.left);
    const double top = std::min(a.top, b.top);
    return {left, top, std::max(a.Right(), b.Right()) - left,
            std::max(a.Bottom(), b.Bottom()) - top};
}

bool Meet(const WallRect& a, const WallRect& b) {
    const WallRect common = Common(a, b);
    return common.width > 0 && common.height > 0;
}

/// A tile without its place. A player may hold a wall with screens that are not here.
WallTile TileOf(const SplitDocument& document, std::size_t screen, std::size_t number) {
    const auto& names = document.Names();
    return {screen, number, screen < names.size() ? &names[screen] : nullptr};
}

WallSpot At(Kind kind, std::size_t index) { return {kind, index}; }

/// Arrows as they lie to the wall.
enum class Way { kBack, kOn, kAway, kToTray };

Way WayOf(WallArrow arrow, SplitDirection direction) {
    const bool isHorizontal = direction == SplitDirection::kHorizontal;
    switch (arrow) {
        case WallArrow::kLeft: return isHorizontal ? Way::kBack : Way::kAway;
        case WallArrow::kUp: return isHorizontal ? Way::kAway : Way::kBack;
        case WallArrow::kRight: return isHorizontal ? Way::kOn : Way::kToTray;
        case WallArrow::kDown: break;
    }
    return isHorizontal ? Way::kToTray : Way::kOn;
}

}  // namespace

std::string WallTile::CornersText() const {
    return fmt::format("({:.0f}, {:.0f}) - ({:.0f}, {:.0f})", area.left, area.top, area.Right() - 1,
                       area.Bottom() - 1);
}

WallPicture::WallPicture(const SplitDocument& document) : direction_(document.Direction()) {
    tiles_.reserve(document.Screens().size());
    overlaps_.reserve(document.Screens().size());
    for (const SplitScreen& screen : document.Screens()) {
        if (!screen.enabled || screen.channels.empty()) {
            unused_.push_back(TileOf(document, screen.screen, 0));
            continue;
        }
        const SplitChannel& channel = screen.channels.front();
        WallTile& tile = tiles_.emplace_back(TileOf(document, screen.screen, tiles_.size() + 1));
        tile.area = AreaOf(channel);
        tile.shown = Within(tile.area, screen.zoom);
    }
    if (tiles_.empty()) return;
    if (!document.IsLaidOut() && tiles_.size() > 1)
        direction_ = tiles_[0].area.left == tiles_[1].area.left ? SplitDirection::kVertical
                                                                : SplitDirection::kHorizontal;
    whole_ = tiles_.front().area;
    for (std::size_t i = 1; i < tiles_.size(); ++i) {
        AddOverlap(tiles_[i - 1].area, tiles_[i].area);
        whole_ = Around(whole_, tiles_[i].area);
        tiles_[i].clashes = i > 1 && Meet(tiles_[i - 2].area, tiles_[i].area);
    }
}

void WallPicture::AddOverlap(const WallRect& previous, const WallRect& next) {
    WallRect common = Common(previous, next);
    double& across = direction_ == SplitDirection::kHorizontal ? common.width : common.height;
    constexpr double kMost = 1 << 30;  // a player may hold anything
    across = std::min(across, kMost);
    overlaps_.push_back({static_cast<std::int32_t>(across), common});
}

std::string WallPicture::SizeText() const {
    if (tiles_.empty()) return {};
    return fmt::format("{:.0f} x {:.0f}", whole_.width, whole_.height);
}

// NOLINTNEXTLINE(readability-function-cognitive-complexity): a table of ways
WallSpot WallPicture::Neighbour(const WallSpot& spot, WallArrow arrow) const {
    const Way way = WayOf(arrow, direction_);
    const std::size_t index = spot.index;
    switch (spot.kind) {
        case Kind::kTile:
            if (way == Way::kBack && index > 0) return At(Kind::kTile, index - 1);
            if (way == Way::kOn && index + 1 < tiles_.size()) return At(Kind::kTile, index + 1);
            if (way == Way::kAway && index > 0) return At(Kind::kSeam, index - 1);
            if (way == Way::kToTray && !unused_.empty())
                return At(Kind::kUnused, std::min(index, unused_.size() - 1));
            break;
        case Kind::kSeam:
            if (way == Way::kBack && index > 0) return At(Kind::kSeam, index - 1);
            if (way == Way::kOn && index + 1 < overlaps_.size()) return At(Kind::kSeam, index + 1);
            if (way == Way::kToTray) return At(Kind::kTile, index + 1);
            break;
        case Kind::kUnused:
            if (arrow == WallArrow::kLeft && index > 0) return At(Kind::kUnused, index - 1);
            if (arrow == WallArrow::kRight && index + 1 < unused_.size())
                return At(Kind::kUnused, index + 1);
            if (arrow == WallArrow::kUp && !tiles_.empty())
                return At(Kind::kTile, std::min(index, tiles_.size() - 1));
            break;
        case Kind::kNothing:
        case Kind::kTray:
            if (!tiles_.empty()) return At(Kind::kTile, 0);
            if (!unused_.empty()) return At(Kind::kUnused, 0);
            break;
    }
    return spot;
}

std::optional<WallDrop> WallPicture::MovedBy(const WallSpot& spot, WallArrow arrow) const {
    const Way way = WayOf(arrow, direction_);
    if (spot.kind == Kind::kUnused && arrow == WallArrow::kUp)
        return WallDrop{false, tiles_.size()};
    if (spot.kind != Kind::kTile) return std::nullopt;
    if (way == Way::kToTray) return WallDrop{true, 0};
    if (way == Way::kBack && spot.index > 0) return WallDrop{false, spot.index - 1};
    if (way == Way::kOn && spot.index + 1 < tiles_.size()) return WallDrop{false, spot.index + 2};
    return std::nullopt;
}

std::optional<std::size_t> WallPicture::ScreenOf(const WallSpot& spot) const {
    if (spot.kind == Kind::kTile && spot.index < tiles_.size()) return tiles_[spot.index].screen;
    if (spot.kind == Kind::kUnused && spot.index < unused_.size())
        return unused_[spot.index].screen;
    return std::nullopt;
}

WallSpot WallPicture::SpotOf(std::size_t screen) const {
    const auto tile = std::ranges::find(tiles_, screen, &WallTile::screen);
    if (tile != tiles_.end())
        return At(Kind::kTile, static_cast<std::size_t>(tile - tiles_.begin()));
    const auto unused = std::ranges::find(unused_, screen, &WallTile::screen);
    if (unused == unused_.end()) return {};
    return At(Kind::kUnused, static_cast<std::size_t>(unused - unused_.begin()));
}

}  // namespace sontaro
