#include "devices/remarks_dialog.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/modal_dialogs.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kTitle = {"修改备注", "Modify remarks"};
constexpr LocalText kRemarks = {"备注：", "Remarks:"};
constexpr unsigned long kLongestRemarks = 200;

}  // namespace

std::optional<std::string> AskForRemarks(wxWindow* parent, const DeviceRecord& device,
                                         const std::function<void(const std::string&)>& keep) {
    wxDialog dialog(parent, wxID_ANY, ToWx(kTitle));
    UseLanguageFont(dialog);
    const int gap = dialog.FromDIP(10);
    auto* column = new wxBoxSizer(wxVERTICAL);
    const wxString player = ToWx(device.ip + "    " + device.mac + "    " + device.id);
    column->Add(new wxStaticText(&dialog, wxID_ANY, player), wxSizerFlags().Border(wxALL, gap));
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(&dialog, wxID_ANY, ToWx(kRemarks)),
             wxSizerFlags().CentreVertical().Border(wxRIGHT, gap));
    auto* text = new wxTextCtrl(&dialog, kRemarksText, ToWx(device.remarks), wxDefaultPosition,
                                wxSize(45 * LetterWidth(dialog), wxDefaultCoord));
    text->SetMaxLength(
        std::max(kLongestRemarks, static_cast<unsigned long>(text->GetLastPosition())));
    row->Add(text, wxSizerFlags(1));
    column->Add(row, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, gap));
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    auto* ok = new wxButton(&dialog, wxID_OK, ButtonLabel(kOkText, 'O'));
    ok->SetDefault();
    buttons->Add(ok, wxSizerFlags().Border(wxRIGHT, gap));
    buttons->Add(new wxButton(&dialog, wxID_CANCEL, ButtonLabel(kCancelText, 'C')));
    column->Add(buttons, wxSizerFlags().Right().Border(wxALL, gap));
    dialog.Bind(kKeepEvent, [&](wxCommandEvent&) { keep(FromWx(text->GetValue())); });
    dialog.SetSizerAndFit(column);
    dialog.CentreOnParent();
    text->SetFocus();
    text->SelectAll();
    if (dialog.ShowModal() != wxID_OK) return std::nullopt;
    return FromWx(text->GetValue());
}

}  // namespace sontaro
