#include "widgets/text_progress.h"

#include <fmt/core.h>
#include <wx/dcbuffer.h>

#include <algorithm>

#include "widgets/colours.h"
#include "widgets/fonts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kName = {"进度", "Progress"};
constexpr double kFrameShare = 0.5;  // of the text's colour: clear to see in any theme
constexpr double kSmallestFont = 1;  // in points
constexpr int kLeastTexts = 3;       // that the bar is long at least

wxString TextOf(double percent) { return ToWx(fmt::format("{:.1f}%", percent)); }

}  // namespace

TextProgress::TextProgress(wxWindow* parent, int id) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, id, wxDefaultPosition, wxDefaultSize,
           long{wxBORDER_NONE} | wxFULL_REPAINT_ON_RESIZE, wxDefaultValidator, ToWx(kName));
    SetLabel(TextOf(percent_));
    SetInitialSize();
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { Paint(); });
}

void TextProgress::SetPercent(double percent) {
    const int filled = FilledWidth();
    percent_ = percent > 0 ? std::min(percent, 100.0) : 0;  // 0 as well where it is no number
    const wxString text = TextOf(percent_);
    const bool isSameText = text == GetLabel();
    if (isSameText && filled == FilledWidth()) return;
    if (!isSameText) SetLabel(text);  // a screen reader hears of every call
    Refresh(false);
}

wxSize TextProgress::DoGetBestClientSize() const {
    return {kLeastTexts * GetTextExtent(TextOf(100)).x, LineHeight(*this) + FromDIP(6)};
}

int TextProgress::FilledWidth() const {
    return static_cast<int>(GetClientSize().x * (percent_ / 100));
}

/// The two halves of the text have colours that the theme has made for each other.
void TextProgress::Paint() {
    wxAutoBufferedPaintDC canvas(this);
    const wxSize size = GetClientSize();
    if (size.x <= 0 || size.y <= 0) return;
    FitFont(canvas, size);
    const int filled = FilledWidth();
    PaintPart(canvas, {0, 0, filled, size.y}, wxSYS_COLOUR_HIGHLIGHT, wxSYS_COLOUR_HIGHLIGHTTEXT);
    PaintPart(canvas, {filled, 0, size.x - filled, size.y}, wxSYS_COLOUR_WINDOW,
              wxSYS_COLOUR_WINDOWTEXT);
    canvas.SetPen(
        Mix(SystemColour(wxSYS_COLOUR_WINDOWTEXT), SystemColour(wxSYS_COLOUR_WINDOW), kFrameShare));
    canvas.SetBrush(*wxTRANSPARENT_BRUSH);
    canvas.DrawRectangle(wxRect(size));
}

void TextProgress::PaintPart(wxDC& canvas, const wxRect& part, wxSystemColour ground,
                             wxSystemColour ink) const {
    if (part.width == 0) return;
    const wxDCClipper clip(canvas, part);
    canvas.SetPen(*wxTRANSPARENT_PEN);
    canvas.SetBrush(SystemColour(ground));
    canvas.DrawRectangle(part);
    canvas.SetTextForeground(SystemColour(ink));
    canvas.DrawLabel(GetLabel(), wxRect(GetClientSize()), wxALIGN_CENTRE);
}

void TextProgress::FitFont(wxDC& canvas, const wxSize& room) const {
    wxFont font = GetFont();
    canvas.SetFont(font);
    const wxSize text = canvas.GetTextExtent(GetLabel());
    const double scale =
        std::min(static_cast<double>(room.x) / text.x, static_cast<double>(room.y) / text.y);
    if (scale >= 1) return;
    font.SetFractionalPointSize(std::max(kSmallestFont, scale * font.GetFractionalPointSize()));
    canvas.SetFont(font);
}

}  // namespace sontaro
