// What controls that show a picture of their own have in common.
#pragma once

#include <wx/graphics.h>
#include <wx/window.h>

namespace sontaro {

/// Pixels that a pointer goes before it drags.
[[nodiscard]] int DragThreshold(const wxWindow& window);

/// Around all of a window; another one where the keyboard is.
void DrawFocusFrame(wxDC& canvas, const wxWindow& window);

/// In the canvas's font.
void DrawCentred(wxGraphicsContext& canvas, const wxString& text, double x, double y);

}  // namespace sontaro
