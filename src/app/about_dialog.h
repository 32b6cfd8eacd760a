// What Sontaro is and what it is made of.
#pragma once

#include <wx/dialog.h>

namespace sontaro {

/// Shows name, version, licence and the libraries that are used.
class AboutDialog : public wxDialog {
   public:
    explicit AboutDialog(wxWindow* parent);
};

}  // namespace sontaro
