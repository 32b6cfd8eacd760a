#include "widgets/filter_box.h"

#include <wx/sizer.h>
#include <wx/stattext.h>

#include "widgets/fonts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kCharacters = 30;

constexpr LocalText kCaption = {"筛选", "Filter"};
constexpr LocalText kHint = {"标题、名称或数值中的文字", "Heading, name or value"};

}  // namespace

FilterBox::FilterBox(wxWindow* parent, int id) : wxSearchCtrl(parent, id) {
    SetDescriptiveText(ToWx(kHint));
    ShowCancelButton(true);
    SetMinSize(wxSize(kCharacters * LetterWidth(*this), wxDefaultCoord));
    Bind(wxEVT_SEARCH_CANCEL, [this](wxCommandEvent&) { Clear(); });
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_ESCAPE && !IsEmpty())
            Clear();
        else
            event.Skip();
    });
}

wxSizer* FilterBox::WithCaption() {
    auto* caption = new wxStaticText(GetParent(), wxID_ANY, ButtonLabel(kCaption, 'F'));
    caption->MoveBeforeInTabOrder(this);  // its key goes to what follows it
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(caption, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(6)));
    row->Add(this, wxSizerFlags().CentreVertical());
    return row;
}

}  // namespace sontaro
