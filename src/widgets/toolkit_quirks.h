// What the toolkit would do by itself and our windows do not want.
#pragma once

#include <wx/combobox.h>
#include <wx/notebook.h>

namespace sontaro {

/// Makes the mouse wheel choose nothing in a drop-down: where a choice is sent at once, a turn of
/// the wheel on the way to something else would be one.
void IgnoreWheel(wxComboBox& names);

/// Pages with tabs that go without a complaint of the toolkit while a screen reader listens.
class TabBook : public wxNotebook {
   public:
    using wxNotebook::wxNotebook;
    ~TabBook() override;
};

}  // namespace sontaro
