// What dialogs of a few fields are made of.
#pragma once

#include <wx/sizer.h>
#include <wx/stattext.h>

#include "widgets/wx_text.h"

namespace sontaro {

/// Two columns, captions and fields, of which the second takes what room there is.
[[nodiscard]] wxFlexGridSizer* MakeForm(wxWindow* dialog);

/// Adds a field, or a sizer of some, behind its caption.
void AddFormRow(wxFlexGridSizer& form, wxWindow* dialog, const LocalText& caption, auto* field) {
    form.Add(new wxStaticText(dialog, wxID_ANY, ToWx(caption)), wxSizerFlags().CentreVertical());
    form.Add(field, wxSizerFlags(1).Expand());
}

/// The bottom row of a dialog that Enter leaves: OK, the default button, and Cancel.
[[nodiscard]] wxSizer* MakeOkCancelRow(wxWindow* dialog);

}  // namespace sontaro
