#include "widgets/table_drawing.h"

#include <wx/control.h>
#include <wx/renderer.h>

#include <algorithm>

#include "widgets/colours.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/wrapped_text.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr double kLineShare = 0.16;          // of the text's colour, in the lines between cells
constexpr double kChosenShare = 0.35;        // of the highlight, where the keyboard is elsewhere
constexpr std::size_t kLongestDrawn = 1000;  // in characters: wider than any screen
constexpr std::size_t kLeastDigits = 3;

// For the toolkit's renderer, which takes them as int.
constexpr int kPressed{wxCONTROL_PRESSED};
constexpr int kDisabled{wxCONTROL_DISABLED};
constexpr int kTicked{wxCONTROL_CHECKED};
constexpr int kHalfTicked{wxCONTROL_UNDETERMINED};

/// The toolkit makes its font anew with every setting, whether or not it is another.
void SetInk(wxDC& canvas, const wxColour& colour) {
    if (canvas.GetTextForeground() != colour) canvas.SetTextForeground(colour);
}

}  // namespace

wxColour TableDrawing::LineColour() {
    return Mix(SystemColour(wxSYS_COLOUR_WINDOWTEXT), SystemColour(wxSYS_COLOUR_WINDOW),
               kLineShare);
}

int TableDrawing::RowHeight() const {
    const int box = wxRendererNative::Get().GetCheckBoxSize(&window_).y;
    return std::max(LineHeight(window_) + window_.FromDIP(8), box + window_.FromDIP(4));
}

int TableDrawing::HeaderHeight() const { return RowHeight() + window_.FromDIP(4); }

int TableDrawing::ColumnWidth(int characters, const wxString& caption) const {
    const int letters = characters * LetterWidth(window_);
    return std::max(letters, window_.GetTextExtent(caption).x) + 2 * Space() + 1;
}

int TableDrawing::LabelWidth(std::size_t rows) const {
    const std::size_t digits = std::max(kLeastDigits, std::to_string(rows).size());
    return wxRendererNative::Get().GetCheckBoxSize(&window_).x + MarkWidth() +
           window_.GetTextExtent(wxString('0', digits)).x + 4 * Space();
}

int TableDrawing::WidthOf(const wxString& text, CellKind kind) const {
    const int frame = kind == CellKind::kButton ? 6 * Space() : 2 * Space() + 1;
    return window_.GetTextExtent(text.substr(0, kLongestDrawn)).x + frame;
}

int TableDrawing::MarkWidth() const { return window_.GetTextExtent(ToWx(kCautionMark)).x; }

void TableDrawing::Cell(wxDC& canvas, const wxRect& area, const CellLook& look) const {
    wxColour ground = SystemColour(wxSYS_COLOUR_WINDOW);
    wxColour ink = SystemColour(wxSYS_COLOUR_WINDOWTEXT);
    if (look.chosen && window_.HasFocus()) {
        ground = SystemColour(wxSYS_COLOUR_HIGHLIGHT);
        ink = SystemColour(wxSYS_COLOUR_HIGHLIGHTTEXT);
    } else if (look.chosen) {
        ground = Mix(SystemColour(wxSYS_COLOUR_HIGHLIGHT), ground, kChosenShare);
    }
    canvas.SetPen(*wxTRANSPARENT_PEN);
    canvas.SetBrush(ground);
    canvas.DrawRectangle(area);
    int alignment = look.kind == CellKind::kNumber ? wxALIGN_RIGHT : wxALIGN_LEFT;
    if (look.kind == CellKind::kButton && !look.text.empty()) {
        wxRendererNative::Get().DrawPushButton(&window_, canvas, wxRect(area).Deflate(1),
                                               look.pressed ? kPressed : 0);
        ink = SystemColour(wxSYS_COLOUR_BTNTEXT);
        alignment = wxALIGN_CENTRE_HORIZONTAL;
    }
    SetInk(canvas, ink);
    Text(canvas, area, look.text, alignment);
}

void TableDrawing::Cursor(wxDC& canvas, const wxRect& area, bool chosen) const {
    if (!window_.HasFocus()) return;
    canvas.SetPen(wxPen(SystemColour(chosen ? wxSYS_COLOUR_HIGHLIGHTTEXT : wxSYS_COLOUR_WINDOWTEXT),
                        1, wxPENSTYLE_DOT));
    canvas.SetBrush(*wxTRANSPARENT_BRUSH);
    canvas.DrawRectangle(wxRect(area).Deflate(window_.FromDIP(1)));
}

void TableDrawing::RowLabel(wxDC& canvas, const wxRect& area, std::size_t number, bool ticked,
                            bool marked) const {
    Header(canvas, area);
    TickBox(canvas, area, ticked ? kTicked : 0);
    const int box = wxRendererNative::Get().GetCheckBoxSize(&window_).x + Space();
    const wxRect rest(area.x + box, area.y, area.width - box, area.height);
    if (marked) Text(canvas, rest, ToWx(kCautionMark), wxALIGN_LEFT);
    Text(canvas, rest, std::to_string(number), wxALIGN_RIGHT);
}

void TableDrawing::ColumnLabel(wxDC& canvas, const wxRect& area, const wxString& caption,
                               CellKind kind) const {
    constexpr int kAlignments[] = {wxALIGN_LEFT, wxALIGN_RIGHT, wxALIGN_CENTRE_HORIZONTAL};
    Header(canvas, area);
    Text(canvas, area, caption, kAlignments[static_cast<int>(kind)]);
}

void TableDrawing::Corner(wxDC& canvas, const wxRect& area, Ticks ticks, bool enabled) const {
    Header(canvas, area);
    int flags = enabled ? 0 : kDisabled;
    if (ticks == Ticks::kAll) flags |= kTicked;
    if (ticks == Ticks::kSome) flags |= kHalfTicked;
    TickBox(canvas, area, flags);
}

void TableDrawing::Message(wxDC& canvas, const wxRect& area, const wxString& text) const {
    const int border = window_.FromDIP(16);
    canvas.SetBackground(SystemColour(wxSYS_COLOUR_WINDOW));
    canvas.Clear();
    canvas.SetFont(window_.GetFont());
    canvas.SetTextForeground(SystemColour(wxSYS_COLOUR_WINDOWTEXT));
    canvas.DrawLabel(WrappedText(window_, text, area.width - 2 * border), area, wxALIGN_CENTRE);
}

/// The ground of a label, with a line to its right and one below.
void TableDrawing::Header(wxDC& canvas, const wxRect& area) {
    canvas.SetPen(*wxTRANSPARENT_PEN);
    canvas.SetBrush(SystemColour(wxSYS_COLOUR_BTNFACE));
    canvas.DrawRectangle(area);
    canvas.SetPen(LineColour());
    canvas.DrawLine(area.GetTopRight(), area.GetBottomRight() + wxPoint(0, 1));
    canvas.DrawLine(area.GetBottomLeft(), area.GetBottomRight() + wxPoint(1, 0));
    SetInk(canvas, SystemColour(wxSYS_COLOUR_BTNTEXT));
}

void TableDrawing::Text(wxDC& canvas, wxRect area, const wxString& text, int alignment) const {
    area.Deflate(Space(), 0);
    if (text.empty() || area.width <= 0) return;
    if (canvas.GetFont() != window_.GetFont()) canvas.SetFont(window_.GetFont());
    wxString shown = text.substr(0, kLongestDrawn);
    wxSize size = canvas.GetTextExtent(shown);
    if (size.x > area.width) {
        shown = wxControl::Ellipsize(shown, canvas, wxELLIPSIZE_END, area.width,
                                     wxELLIPSIZE_FLAGS_NONE);
        size = canvas.GetTextExtent(shown);
    }
    const int rest = std::max(0, area.width - size.x);
    if (alignment == wxALIGN_RIGHT) area.x += rest;
    if (alignment == wxALIGN_CENTRE_HORIZONTAL) area.x += rest / 2;
    canvas.DrawText(shown, area.x, area.y + (area.height - size.y) / 2);
}

void TableDrawing::TickBox(wxDC& canvas, const wxRect& area, int flags) const {
    const wxSize size = wxRendererNative::Get().GetCheckBoxSize(&window_);
    const wxRect box({area.x + Space(), area.y + (area.height - size.y) / 2}, size);
    wxRendererNative::Get().DrawCheckBox(&window_, canvas, box, flags);
}

}  // namespace sontaro
