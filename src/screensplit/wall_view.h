// The picture of a video wall in a window.
#pragma once

#include <wx/window.h>

#include <functional>

#include "screensplit/split_document.h"

namespace sontaro {

/// The picture of a video wall: screens as tiles to be dragged, seams whose overlap is dragged, the
/// tray of those not used.
class WallView : public wxWindow {
   public:
    /// `document` outlives it. `changed` is called after the user has changed the document here.
    WallView(wxWindow* parent, SplitDocument& document, std::function<void()> changed);
    /// The document has changed: draws it anew; keeps the chosen tile or seam where it still
    /// exists.
    void ShowWall();
    /// While it is not editable nothing can be changed here.
    void SetEditable(bool editable);
};

}  // namespace sontaro
