#include "widgets/picture_control.h"

#include <algorithm>

#include "widgets/colours.h"
#include "widgets/table_drawing.h"

namespace sontaro {

int DragThreshold(const wxWindow& window) {
    constexpr int kLeast = 4;
    return std::max(window.FromDIP(kLeast), wxSystemSettings::GetMetric(wxSYS_DRAG_X, &window));
}

void BindDrag(wxWindow& window, const DragActions& actions) {
    const auto press = [press = actions.press](wxMouseEvent& event) { press(event.GetPosition()); };
    window.Bind(wxEVT_LEFT_DOWN, press);
    window.Bind(wxEVT_LEFT_DCLICK, press);
    window.Bind(wxEVT_MOTION,
                [move = actions.move](wxMouseEvent& event) { move(event.GetPosition()); });
    window.Bind(wxEVT_LEFT_UP, [release = actions.release](wxMouseEvent&) { release(); });
    window.Bind(wxEVT_MOUSE_CAPTURE_LOST,
                [giveUp = actions.giveUp](wxMouseCaptureLostEvent&) { giveUp(); });
}

void DrawFocusFrame(wxDC& canvas, const wxWindow& window) {
    const bool isFocused = window.HasFocus();
    const int width = isFocused ? window.FromDIP(2) : 1;
    canvas.SetPen(*wxTRANSPARENT_PEN);
    canvas.SetBrush(isFocused ? SystemColour(wxSYS_COLOUR_HIGHLIGHT) : TableDrawing::LineColour());
    const wxRect area = window.GetClientSize();
    canvas.DrawRectangle(0, 0, area.width, width);
    canvas.DrawRectangle(0, area.height - width, area.width, width);
    canvas.DrawRectangle(0, 0, width, area.height);
    canvas.DrawRectangle(area.width - width, 0, width, area.height);
}

void DrawCentred(wxGraphicsContext& canvas, const wxString& text, double x, double y) {
    double width = 0;
    double height = 0;
    canvas.GetTextExtent(text, &width, &height);
    canvas.DrawText(text, x - width / 2, y - height / 2);
}

}  // namespace sontaro
