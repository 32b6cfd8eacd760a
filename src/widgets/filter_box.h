// A field for the text that rows are filtered by.
#pragma once

#include <wx/srchctrl.h>

class wxSizer;

namespace sontaro {

/// Escape and its button empty it. What is typed is told by wxEVT_TEXT. User-interface thread.
class FilterBox : public wxSearchCtrl {
   public:
    FilterBox(wxWindow* parent, int id);

    /// A row with the caption, whose key leads to the field, and the field.
    [[nodiscard]] wxSizer* WithCaption();
};

}  // namespace sontaro
