// How one frame of the picture of a video wall is painted.
#pragma once

#include <wx/brush.h>
#include <wx/pen.h>

#include <string>
#include <vector>

#include "screensplit/wall_drawing.h"
#include "screensplit/wall_text.h"
#include "widgets/colours.h"

namespace sontaro {

/// One frame of the picture, in the system's colours of the moment. Everything that it is made
/// with outlives it.
class WallPainter {
   public:
    WallPainter(const wxWindow& window, wxGraphicsContext& canvas, const WallPicture& picture,
                const WallFrame& frame, const WallLook& look);

    void Paint();

   private:
    void PaintWall();
    void PaintClash(std::size_t index);
    void PaintZoom(const WallTile& tile);
    void PaintText(std::size_t index);
    void PaintTextOutside(const WallTile& tile, bool withNumber);
    [[nodiscard]] wxFont NumberFont(double height) const;
    [[nodiscard]] double StepAt(std::size_t index) const;
    [[nodiscard]] WallRect FreePart(std::size_t index, double least) const;
    void PaintSeams();
    void PaintSeam(std::size_t index, const WallRect& badge);
    void PaintTray();
    void PaintChip(std::size_t index);
    void PaintCaption();
    void PaintGhost(const WallGhost& ghost);
    void PaintLines(const WallRect& area, const std::vector<std::string>& lines);
    [[nodiscard]] TextRoom RoomIn(const WallRect& area);
    [[nodiscard]] WallRect Badge(std::size_t seam);
    void PaintCautionSign(double x, double y);

    void Rectangle(const WallRect& area, const wxPen& pen, const wxBrush& brush) {
        canvas_.SetPen(pen);
        canvas_.SetBrush(brush);
        canvas_.DrawRectangle(area.left, area.top, area.width, area.height);
    }
    void Small(const wxColour& colour);
    double WidthOf(const wxString& text) {
        double width = 0;
        canvas_.GetTextExtent(text, &width, nullptr);
        return width;
    }
    double HeightOf(const wxString& text) {
        double height = 0;
        canvas_.GetTextExtent(text, nullptr, &height);
        return height;
    }
    [[nodiscard]] bool IsHorizontal() const {
        return picture_.Direction() == SplitDirection::kHorizontal;
    }
    [[nodiscard]] bool IsChosen(WallSpot::Kind kind, std::size_t index) const {
        return look_.chosen == WallSpot{kind, index};
    }
    [[nodiscard]] wxPen ChosenPen() const {
        return {window_.HasFocus() ? highlight_ : ink_,
                window_.FromDIP(window_.HasFocus() ? 3 : 2)};
    }
    [[nodiscard]] wxPen LinePen() const;
    [[nodiscard]] double Dip(int pixels) const { return window_.FromDIP(pixels); }
    [[nodiscard]] double SmallLine() const;

    const wxWindow& window_;
    wxGraphicsContext& canvas_;
    const WallPicture& picture_;
    const WallFrame& frame_;
    const WallLook& look_;
    const wxColour ground_ = SystemColour(wxSYS_COLOUR_WINDOW);
    const wxColour face_ = SystemColour(wxSYS_COLOUR_BTNFACE);
    const wxColour highlight_ = SystemColour(wxSYS_COLOUR_HIGHLIGHT);
    const wxColour ink_ = SystemColour(wxSYS_COLOUR_WINDOWTEXT);
    const wxColour text_;
};

}  // namespace sontaro
