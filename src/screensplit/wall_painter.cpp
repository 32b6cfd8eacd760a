#include "screensplit/wall_painter.h"

#include <algorithm>
#include <cmath>

#include "widgets/fonts.h"
#include "widgets/picture_control.h"
#include "widgets/table_drawing.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

using Kind = WallSpot::Kind;

constexpr double kSmall = 0.85;
constexpr double kLarge = 1.4;
constexpr double kGroundShare = 0.6;   // of a window's colour, around the wall
constexpr double kLineShare = 0.55;    // of the text's colour
constexpr double kPaleShare = 0.65;    // of the text's colour, while nothing can be changed
constexpr double kChosenShare = 0.2;   // of the highlight, on a tile
constexpr double kShadeShare = 0.45;   // of the highlight, on an overlap
constexpr double kLinesWithLarge = 4;  // from which height on there is a large number
constexpr double kLeastStep = 0.75;    // from line to line, where they stand close
constexpr double kLeastLines = 2;      // beneath the number; otherwise they stand outside

bool Touch(const WallRect& a, const WallRect& b) {
    return a.left < b.Right() && b.left < a.Right() && a.top < b.Bottom() && b.top < a.Bottom();
}

}  // namespace

WallPainter::WallPainter(const wxWindow& window, wxGraphicsContext& canvas,
                         const WallPicture& picture, const WallFrame& frame, const WallLook& look)
    : window_(window),
      canvas_(canvas),
      picture_(picture),
      frame_(frame),
      look_(look),
      text_(look.editable ? ink_ : Mix(ink_, ground_, kPaleShare)) {}

void WallPainter::Paint() {
    if (!picture_.Tiles().empty())
        Rectangle(frame_.Everything(), *wxTRANSPARENT_PEN, Mix(ground_, face_, kGroundShare));
    PaintTray();
    PaintWall();
    PaintCaption();
    if (look_.ghost) PaintGhost(*look_.ghost);
}

void WallPainter::Small(const wxColour& colour) {
    canvas_.SetFont(window_.GetFont().Scaled(static_cast<float>(kSmall)), colour);
}

wxPen WallPainter::LinePen() const { return {Mix(ink_, ground_, kLineShare), 1}; }

double WallPainter::SmallLine() const { return std::ceil(LineHeight(window_) * kSmall); }

/// Later tiles lie over earlier ones; edges and texts of all of them are to be seen.
void WallPainter::PaintWall() {
    const std::vector<WallTile>& tiles = picture_.Tiles();
    for (std::size_t i = 0; i < tiles.size(); ++i)
        Rectangle(frame_.Placed(tiles[i].area), *wxTRANSPARENT_PEN,
                  IsChosen(Kind::kTile, i) ? Mix(highlight_, ground_, kChosenShare) : ground_);
    for (const WallOverlap& overlap : picture_.Overlaps())
        Rectangle(frame_.Placed(overlap.area), *wxTRANSPARENT_PEN,
                  Mix(highlight_, ground_, kShadeShare));
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        if (tiles[i].clashes) PaintClash(i);
        Rectangle(frame_.Placed(tiles[i].area), LinePen(), *wxTRANSPARENT_BRUSH);
        PaintZoom(tiles[i]);
    }
    for (std::size_t i = 0; i < tiles.size(); ++i) PaintText(i);
    PaintSeams();
    if (look_.chosen.kind == Kind::kTile)
        Rectangle(frame_.Placed(tiles[look_.chosen.index].area), ChosenPen(), *wxTRANSPARENT_BRUSH);
}

/// Hatched where three are seen.
void WallPainter::PaintClash(std::size_t index) {
    const WallRect& area = picture_.Tiles()[index].area;
    const WallRect& other = picture_.Tiles()[index - 2].area;
    Rectangle(frame_.Placed(Common(area, other)), wxPen(ink_, window_.FromDIP(2)),
              wxBrush(ink_, wxBRUSHSTYLE_BDIAGONAL_HATCH));
}

void WallPainter::PaintZoom(const WallTile& tile) {
    if (tile.shown == tile.area) return;
    Rectangle(frame_.Placed(tile.shown), wxPen(ink_, window_.FromDIP(1), wxPENSTYLE_SHORT_DASH),
              *wxTRANSPARENT_BRUSH);
}

/// The part of a tile that it has for itself; where there is next to nothing, that to the next one.
WallRect WallPainter::FreePart(std::size_t index, double least) const {
    const std::vector<WallTile>& tiles = picture_.Tiles();
    WallRect area = frame_.Placed(tiles[index].area);
    double begin = IsHorizontal() ? area.left : area.top;
    double end = IsHorizontal() ? area.Right() : area.Bottom();
    const double first = begin;
    const auto shared = [&](std::size_t seam) {
        const WallRect& common = picture_.Overlaps()[seam].area;
        return common.width > 0 && common.height > 0;
    };
    if (index > 0 && shared(index - 1)) {
        const WallRect previous = frame_.Placed(tiles[index - 1].area);
        begin = std::max(begin, IsHorizontal() ? previous.Right() : previous.Bottom());
    }
    if (index + 1 < tiles.size() && shared(index)) {
        const WallRect next = frame_.Placed(tiles[index + 1].area);
        end = std::min(end, IsHorizontal() ? next.left : next.top);
    }
    if (end - begin < least) begin = first;
    (IsHorizontal() ? area.left : area.top) = begin;
    (IsHorizontal() ? area.width : area.height) = std::max(end - begin, 0.0);
    return area;
}

/// The number is large where there is room for a lot else.
wxFont WallPainter::NumberFont(double height) const {
    const wxFont font = window_.GetFont().Bold();
    return height < kLinesWithLarge * SmallLine() ? font : font.Scaled(static_cast<float>(kLarge));
}

void WallPainter::PaintText(std::size_t index) {
    const WallTile& tile = picture_.Tiles()[index];
    const wxString number = std::to_string(tile.number);
    const double space = Dip(3);
    const WallRect whole = frame_.Placed(tile.area);
    const wxFont font = NumberFont(whole.height);
    canvas_.SetFont(font, text_);
    const double width = WidthOf(number);
    const double height = HeightOf(number);
    WallRect room = FreePart(index, IsHorizontal() ? width + 2 * space : SmallLine());
    room.left += space;
    room.width -= 2 * space;
    const bool hasNumber = room.width >= width && room.height >= SmallLine();
    const bool isOutside = room.height < height + kLeastLines * SmallLine();
    Small(text_);
    if (isOutside) PaintTextOutside(tile, !hasNumber);
    if (!hasNumber) return;

    WallRect rest = room;
    rest.height = isOutside ? 0 : room.height - height;
    const std::vector<std::string> lines = TileLines(tile, RoomIn(rest));
    rest.height = static_cast<double>(lines.size()) * SmallLine();
    rest.top = room.top + (room.height + height - rest.height) / 2;
    PaintLines(rest, lines);
    canvas_.SetFont(font, text_);
    const double middle = room.left + room.width / 2;
    DrawCentred(canvas_, number, middle, rest.top - height / 2);
    if (tile.clashes && room.width >= width + 2 * (SmallLine() + space))
        PaintCautionSign(middle + width / 2 + space, rest.top - (height + SmallLine()) / 2);
}

/// A low row leaves room beneath it, a narrow column at its left.
void WallPainter::PaintTextOutside(const WallTile& tile, bool withNumber) {
    const double space = Dip(3);
    WallRect room = frame_.Placed(tile.area);
    const double step = StepAt(tile.number - 1);
    if (IsHorizontal()) {
        room = {room.left + space, room.Bottom() + space, step - 2 * space,
                frame_.Caption().top - room.Bottom() - 2 * space};
        const std::vector<std::string> lines = TileLines(tile, RoomIn(room));
        room.height = static_cast<double>(lines.size()) * SmallLine();
        return PaintLines(room, lines);
    }
    if (step < kLeastStep * SmallLine()) return;
    const double right = room.left - space;
    room.left = space;
    room.width = right - room.left;
    std::string text = DescriptionOf(picture_, {Kind::kTile, tile.number - 1});
    if (!withNumber) text.erase(0, text.find(' ') + 1);
    const wxString line = ToWx(Shortened(text, RoomIn(room)));
    canvas_.DrawText(line, right - WidthOf(line), room.top + (step - HeightOf(line)) / 2);
}

/// From a tile to the next one.
double WallPainter::StepAt(std::size_t index) const {
    const std::vector<WallTile>& tiles = picture_.Tiles();
    const WallRect area = frame_.Placed(tiles[index].area);
    if (index + 1 == tiles.size()) return IsHorizontal() ? area.width : area.height;
    const WallRect next = frame_.Placed(tiles[index + 1].area);
    return IsHorizontal() ? next.left - area.left : next.top - area.top;
}

TextRoom WallPainter::RoomIn(const WallRect& area) {
    return {area.width, static_cast<std::size_t>(std::max(area.height, 0.0) / SmallLine()),
            [this](const std::string& text) { return WidthOf(ToWx(text)); }};
}

/// One under another, about the middle.
void WallPainter::PaintLines(const WallRect& area, const std::vector<std::string>& lines) {
    double middle =
        area.top + area.height / 2 - (static_cast<double>(lines.size()) - 1) * SmallLine() / 2;
    for (const std::string& line : lines) {
        DrawCentred(canvas_, ToWx(line), area.left + area.width / 2, middle);
        middle += SmallLine();
    }
}

void WallPainter::PaintCautionSign(double x, double y) {
    const double size = SmallLine();
    wxGraphicsPath triangle = canvas_.CreatePath();
    triangle.MoveToPoint(x + size / 2, y);
    triangle.AddLineToPoint(x + size, y + size);
    triangle.AddLineToPoint(x, y + size);
    triangle.CloseSubpath();
    canvas_.SetPen(*wxTRANSPARENT_PEN);
    canvas_.SetBrush(text_);
    canvas_.FillPath(triangle);
    canvas_.SetFont(window_.GetFont().Bold().Scaled(static_cast<float>(kSmall * kSmall)), ground_);
    DrawCentred(canvas_, "!", x + size / 2, y + size * 0.62);  // the middle of the triangle
}

/// Where the pixels of a seam stand: beside the wall.
WallRect WallPainter::Badge(std::size_t seam) {
    const WallRect handle = frame_.Handle(seam);
    const double height = SmallLine();
    const double width = WidthOf(std::to_string(picture_.Overlaps()[seam].pixels)) + Dip(8);
    if (IsHorizontal())
        return {handle.left + (handle.width - width) / 2, handle.top, width, height};
    return {handle.Right() - width, handle.top + (handle.height - height) / 2, width, height};
}

/// Where there is no room for all pixels, the chosen seam has its own, and no two touch.
void WallPainter::PaintSeams() {
    std::optional<WallRect> chosen;
    std::optional<WallRect> last;
    Small(text_);
    if (look_.chosen.kind == Kind::kSeam) chosen = Badge(look_.chosen.index);
    for (std::size_t i = 0; i < picture_.Overlaps().size(); ++i) {
        Small(text_);
        const WallRect badge = Badge(i);
        const bool isChosen = IsChosen(Kind::kSeam, i);
        if (!isChosen && ((last && Touch(*last, badge)) || (chosen && Touch(*chosen, badge))))
            continue;
        PaintSeam(i, badge);
        last = badge;
    }
}

void WallPainter::PaintSeam(std::size_t index, const WallRect& badge) {
    const bool isChosen = IsChosen(Kind::kSeam, index);
    const WallRect handle = frame_.Handle(index);
    const double x = badge.left + badge.width / 2;
    const double y = badge.top + badge.height / 2;
    const wxPen pen = isChosen ? ChosenPen() : LinePen();
    Rectangle(frame_.Placed(picture_.Overlaps()[index].area), pen, *wxTRANSPARENT_BRUSH);
    if (IsHorizontal())
        canvas_.StrokeLine(x, badge.Bottom(), x, handle.Bottom());
    else
        canvas_.StrokeLine(handle.left, y, badge.left, y);
    canvas_.SetBrush(isChosen ? highlight_ : ground_);
    canvas_.DrawRoundedRectangle(badge.left, badge.top, badge.width, badge.height, Dip(3));
    Small(isChosen ? SystemColour(wxSYS_COLOUR_HIGHLIGHTTEXT) : text_);
    DrawCentred(canvas_, std::to_string(picture_.Overlaps()[index].pixels), x, y);
}

void WallPainter::PaintTray() {
    if (picture_.Tiles().empty() && picture_.Unused().empty()) return;
    const WallRect tray = frame_.Tray();
    Rectangle(tray, *wxTRANSPARENT_PEN, face_);
    canvas_.SetPen(LinePen());
    canvas_.StrokeLine(tray.left, tray.top, tray.Right(), tray.top);
    Small(text_);
    const wxString title = ToWx(kTrayTitle);
    canvas_.DrawText(title, Dip(8), tray.top + (tray.height - HeightOf(title)) / 2);
    for (std::size_t i = 0; i < picture_.Unused().size(); ++i) PaintChip(i);
    if (!look_.ghost || !look_.ghost->drop.toTray) return;
    const double line = Dip(3);
    Rectangle({tray.left + line, tray.top + line, tray.width - 2 * line, tray.height - 2 * line},
              wxPen(highlight_, window_.FromDIP(3)), *wxTRANSPARENT_BRUSH);
}

void WallPainter::PaintChip(std::size_t index) {
    WallRect area = frame_.Unused(index);
    const bool isChosen = IsChosen(Kind::kUnused, index);
    canvas_.SetPen(isChosen ? ChosenPen() : LinePen());
    canvas_.SetBrush(isChosen ? Mix(highlight_, ground_, kChosenShare) : ground_);
    canvas_.DrawRoundedRectangle(area.left, area.top, area.width, area.height, Dip(3));
    Small(text_);
    area.left += Dip(2);
    area.width -= 2 * Dip(2);
    PaintLines(area, TileLines(picture_.Unused()[index], RoomIn(area)));
}

/// The size of the wall, and what is to be said of the chosen spot as far as there is room.
void WallPainter::PaintCaption() {
    WallRect line = frame_.Caption();
    const double middle = line.top + line.height / 2;
    const wxString size = ToWx(picture_.SizeText());
    canvas_.SetFont(window_.GetFont().Bold(), text_);
    canvas_.DrawText(size, line.left, middle - HeightOf(size) / 2);
    if (!size.empty()) {
        const double used = WidthOf(size) + Dip(16);
        line.left += used;
        line.width -= used;
    }
    if (look_.chosen.kind == Kind::kNothing) return;
    canvas_.SetFont(window_.GetFont(), text_);
    const wxString text = ToWx(Shortened(DescriptionOf(picture_, look_.chosen), RoomIn(line)));
    canvas_.DrawText(text, line.left, middle - HeightOf(text) / 2);
}

/// A line where the tile would go, and its label under the pointer.
void WallPainter::PaintGhost(const WallGhost& ghost) {
    canvas_.SetPen(wxPen(highlight_, window_.FromDIP(5)));
    if (!ghost.drop.toTray) {
        const WallRect mark = frame_.DropMark(ghost.drop.place);
        canvas_.StrokeLine(mark.left, mark.top, mark.Right(), mark.Bottom());
    }
    Small(SystemColour(wxSYS_COLOUR_HIGHLIGHTTEXT));
    const wxString text = ToWx(ghost.text);
    const double width = WidthOf(text) + Dip(12);
    const double height = SmallLine() + Dip(6);
    canvas_.SetPen(*wxTRANSPARENT_PEN);
    canvas_.SetBrush(highlight_);
    canvas_.DrawRoundedRectangle(ghost.at.x - width / 2, ghost.at.y - height / 2, width, height,
                                 Dip(3));
    DrawCentred(canvas_, text, ghost.at.x, ghost.at.y);
}

}  // namespace sontaro
