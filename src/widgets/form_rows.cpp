#include "widgets/form_rows.h"

#include <wx/button.h>

#include "widgets/common_texts.h"

namespace sontaro {

wxFlexGridSizer* MakeForm(wxWindow* dialog) {
    auto* form = new wxFlexGridSizer(2, dialog->FromDIP(8), dialog->FromDIP(10));
    form->AddGrowableCol(1, 1);
    return form;
}

wxSizer* MakeOkCancelRow(wxWindow* dialog) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* ok = new wxButton(dialog, wxID_OK, ButtonLabel(kOkText, 'O'));
    ok->SetDefault();
    row->AddStretchSpacer();
    row->Add(ok, wxSizerFlags().Border(wxRIGHT, dialog->FromDIP(8)));
    row->Add(new wxButton(dialog, wxID_CANCEL, ButtonLabel(kCancelText, 'C')));
    return row;
}

}  // namespace sontaro
