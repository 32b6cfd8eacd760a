#include "widgets/ip_field.h"

#include <wx/clipbrd.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "link/socket.h"
#include "widgets/number_field.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kMostOfPart = 255;
constexpr int kDigits = 3;

}  // namespace

IpField::IpField(wxWindow* parent, int id) : wxPanel(parent) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    for (std::size_t part = 0; part < parts_.size(); ++part) {
        if (part > 0)
            row->Add(new wxStaticText(this, wxID_ANY, "."),
                     wxSizerFlags().CentreVertical().Border(wxLEFT | wxRIGHT, FromDIP(3)));
        parts_[part] = new NumberField(this, id + static_cast<int>(part), kMostOfPart, kDigits + 1);
        row->Add(parts_[part], wxSizerFlags().CentreVertical());
        BindPart(part);
    }
    SetSizer(row);
}

void IpField::BindPart(std::size_t part) {
    NumberField* field = parts_[part];
    field->Bind(wxEVT_CHAR, [this, part, field](wxKeyEvent& event) {
        const int key = event.GetKeyCode();
        if (key == '.' || key == WXK_NUMPAD_DECIMAL) {
            if (!field->IsEmpty() && part + 1 < parts_.size()) GoTo(part + 1);
        } else if (key == WXK_BACK && field->IsEmpty() && part > 0) {
            parts_[part - 1]->SetFocus();
            parts_[part - 1]->SetInsertionPointEnd();
        } else {
            event.Skip();
        }
    });
    field->Bind(wxEVT_TEXT, [this, part, field](wxCommandEvent& event) {
        event.Skip();
        const bool isFull = field->GetValue().length() >= kDigits;
        if (isFull && field->HasFocus() && part + 1 < parts_.size()) GoTo(part + 1);
    });
    field->Bind(wxEVT_TEXT_PASTE, [this](wxClipboardTextEvent& event) {
        if (!Paste()) event.Skip();
    });
}

void IpField::GoTo(std::size_t part) {
    parts_[part]->SetFocus();
    parts_[part]->SelectAll();
}

bool IpField::Paste() {
    if (wxTheClipboard->IsOpened()) return false;
    wxTextDataObject text;
    {
        const wxClipboardLocker lock;
        if (!lock || !wxTheClipboard->GetData(text)) return false;
    }
    const std::string pasted = FromWx(text.GetText().Strip(wxString::both));
    if (!ParseIpv4(pasted)) return false;
    ShowAddress(pasted);
    return true;
}

void IpField::ShowAddress(const std::string& ip) {
    const auto address = ParseIpv4(ip);
    for (std::size_t part = 0; part < parts_.size(); ++part)
        if (address)
            parts_[part]->ShowNumber(address->octets[part]);
        else
            parts_[part]->ChangeValue("");
    given_ = ip;
    shown_ = Entered();
}

std::string IpField::Address() const {
    const std::string entered = Entered();
    return entered == shown_ ? given_ : entered;
}

std::string IpField::Entered() const {
    std::string address;
    bool isEmpty = true;
    for (const NumberField* part : parts_) {
        if (part != parts_.front()) address += '.';
        if (part->IsEmpty()) continue;
        address += std::to_string(part->Number());
        isEmpty = false;
    }
    return isEmpty ? "" : address;
}

}  // namespace sontaro
