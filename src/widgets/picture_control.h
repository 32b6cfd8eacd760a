// What controls that show a picture of their own have in common.
#pragma once

#include <wx/graphics.h>
#include <wx/window.h>

#include <functional>

namespace sontaro {

/// Pixels that a pointer goes before it drags.
[[nodiscard]] int DragThreshold(const wxWindow& window);

/// What dragging by the left button does, in the window's own pixels. The second press of a double
/// click is a press, and a move comes without a press as well.
struct DragActions {
    std::function<void(const wxPoint& at)> press;
    std::function<void(const wxPoint& at)> move;
    std::function<void()> release;
    std::function<void()> giveUp;  ///< the system has taken the mouse away
};
void BindDrag(wxWindow& window, const DragActions& actions);

/// Around all of a window; another one where the keyboard is.
void DrawFocusFrame(wxDC& canvas, const wxWindow& window);

/// In the canvas's font.
void DrawCentred(wxGraphicsContext& canvas, const wxString& text, double x, double y);

}  // namespace sontaro
