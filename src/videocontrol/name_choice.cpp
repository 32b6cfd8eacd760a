#include "videocontrol/name_choice.h"

#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

NameChoice::NameChoice(wxWindow* parent, int id, const wxSize& size)
    : wxComboBox(parent, id, "", wxDefaultPosition, size) {
    IgnoreWheel(*this);
    Bind(wxEVT_COMBOBOX_DROPDOWN, [this](wxCommandEvent&) { isOpen_ = true; });
    Bind(wxEVT_COMBOBOX_CLOSEUP, [this](wxCommandEvent&) {
        CallAfter([this] {  // what has been chosen is told first
            isOpen_ = false;
            if (const auto names = std::exchange(next_, std::nullopt)) Offer(*names);
        });
    });
}

void NameChoice::Offer(const std::vector<std::string>& names) {
    if (isOpen_) {
        next_ = names;
        return;
    }
    const wxString shown = GetValue();
    wxArrayString items;
    for (const std::string& name : names) items.Add(ToWx(name));
    Set(items);
    ChangeValue(shown);
}

}  // namespace sontaro
