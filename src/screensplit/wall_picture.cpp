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

/// `index`, or the last of `count` where there are fewer.
std::size_t LastOr(std::size_t index, std::size_t count) { return std::min(index, count - 1); }

/// One farther on or back among `count`; stays at either end.
std::size_t Stepped(std::size_t index, bool isOn, std::size_t count) {
    if (isOn) return LastOr(index + 1, count);
    return index > 0 ? index - 1 : 0;
}

WallWay WayOf(WallArrow arrow, SplitDirection direction) {
    const bool isHorizontal = direction == SplitDirection::kHorizontal;
    switch (arrow) {
        case WallArrow::kLeft: return isHorizontal ? WallWay::kBack : WallWay::kAway;
        case WallArrow::kUp: return isHorizontal ? WallWay::kAway : WallWay::kBack;
        case WallArrow::kRight: return isHorizontal ? WallWay::kOn : WallWay::kToTray;
        case WallArrow::kDown: break;
    }
    return isHorizontal ? WallWay::kToTray : WallWay::kOn;
}

}  // namespace

WallRect Common(const WallRect& a, const WallRect& b) {
    const double left = std::max(a.left, b.left);
    const double top = std::max(a.top, b.top);
    return {left, top, std::max(std::min(a.Right(), b.Right()) - left, 0.0),
            std::max(std::min(a.Bottom(), b.Bottom()) - top, 0.0)};
}

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

WallSpot WallPicture::Neighbour(const WallSpot& spot, WallArrow arrow) const {
    switch (spot.kind) {
        case Kind::kTile: return FromTile(spot, WayOf(arrow, direction_));
        case Kind::kSeam: return FromSeam(spot, WayOf(arrow, direction_));
        case Kind::kUnused: return FromTray(spot, arrow);
        case Kind::kNothing:
        case Kind::kTray: break;
    }
    if (!tiles_.empty()) return {Kind::kTile, 0};
    return unused_.empty() ? spot : WallSpot{Kind::kUnused, 0};
}

WallSpot WallPicture::FromTile(const WallSpot& tile, WallWay way) const {
    const std::size_t index = tile.index;
    if (way == WallWay::kToTray)
        return unused_.empty() ? tile : WallSpot{Kind::kUnused, LastOr(index, unused_.size())};
    if (way == WallWay::kAway) return index > 0 ? WallSpot{Kind::kSeam, index - 1} : tile;
    return {Kind::kTile, Stepped(index, way == WallWay::kOn, tiles_.size())};
}

WallSpot WallPicture::FromSeam(const WallSpot& seam, WallWay way) const {
    if (way == WallWay::kToTray) return {Kind::kTile, seam.index + 1};
    if (way == WallWay::kAway) return seam;
    return {Kind::kSeam, Stepped(seam.index, way == WallWay::kOn, overlaps_.size())};
}

WallSpot WallPicture::FromTray(const WallSpot& unused, WallArrow arrow) const {
    if (arrow == WallArrow::kDown) return unused;
    if (arrow == WallArrow::kUp)
        return tiles_.empty() ? unused : WallSpot{Kind::kTile, LastOr(unused.index, tiles_.size())};
    return {Kind::kUnused, Stepped(unused.index, arrow == WallArrow::kRight, unused_.size())};
}

std::optional<WallDrop> WallPicture::MovedBy(const WallSpot& spot, WallArrow arrow) const {
    const WallWay way = WayOf(arrow, direction_);
    if (spot.kind == Kind::kUnused && arrow == WallArrow::kUp)
        return WallDrop{false, tiles_.size()};
    if (spot.kind != Kind::kTile) return std::nullopt;
    if (way == WallWay::kToTray) return WallDrop{true, 0};
    if (way == WallWay::kBack && spot.index > 0) return WallDrop{false, spot.index - 1};
    if (way == WallWay::kOn && spot.index + 1 < tiles_.size())
        return WallDrop{false, spot.index + 2};
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
    if (tile != tiles_.end()) return {Kind::kTile, static_cast<std::size_t>(tile - tiles_.begin())};
    const auto unused = std::ranges::find(unused_, screen, &WallTile::screen);
    if (unused == unused_.end()) return {};
    return {Kind::kUnused, static_cast<std::size_t>(unused - unused_.begin())};
}

}  // namespace sontaro
