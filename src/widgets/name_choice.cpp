#include "widgets/name_choice.h"

#include <algorithm>
#include <utility>

#include "base/filter_text.h"
#include "widgets/fonts.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

/// The toolkit takes half a second for ten times as many, and the square of that for more.
constexpr std::size_t kMostShown = 200;

}  // namespace

NameChoice::NameChoice(wxWindow* parent, int id, int letters) : wxComboBox(parent, id) {
    // With a height as well, or the toolkit would measure every name.
    SetMinSize(wxSize(letters * LetterWidth(*parent), GetBestSize().y));
    IgnoreWheel(*this);
    Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
        event.Skip();
        const bool isTyped = GetSelection() == wxNOT_FOUND;
        if (isTyped && names_.size() > kMostShown) ShowNames();
    });
    Bind(wxEVT_COMBOBOX_DROPDOWN, [this](wxCommandEvent&) { isOpen_ = true; });
    Bind(wxEVT_COMBOBOX_CLOSEUP, [this](wxCommandEvent&) {
        CallAfter([this] {  // what has been chosen is told first
            isOpen_ = false;
            if (std::exchange(isLate_, false)) ShowNames();
        });
    });
}

void NameChoice::Offer(std::vector<std::string> names) {
    names_ = std::move(names);
    ShowNames();
}

void NameChoice::ChooseOffered() {
    const wxString text = GetValue();
    const auto isThere = [&](const std::string& name) { return ToWx(name) == text; };
    if (names_.empty() || std::ranges::any_of(names_, isThere)) return;
    ChangeValue(ToWx(names_.front()));
}

wxArrayString NameChoice::NamesToShow() const {
    const bool areFew = names_.size() <= kMostShown;
    const std::string typed = areFew ? "" : FilterForm(FromWx(GetValue()));
    wxArrayString shown;
    for (const bool isFirst : {true, false})
        for (const std::string& name : names_) {
            if (shown.size() == kMostShown) return shown;
            const bool contains = LowerCase(name).find(typed) != std::string::npos;
            if (contains == isFirst) shown.Add(ToWx(name));
        }
    return shown;
}

/// The user goes on typing where the caret is.
void NameChoice::ShowNames() {
    isLate_ = isOpen_;
    if (isOpen_) return;
    const wxArrayString names = NamesToShow();
    if (names == shown_) return;
    shown_ = names;
    const wxString text = GetValue();
    long begin = 0;
    long end = 0;
    GetSelection(&begin, &end);
    const wxEventBlocker quiet(this, wxEVT_TEXT);
    Set(shown_);
    if (GetValue() == text) return;  // some systems clear the text along with the names
    ChangeValue(text);
    SetSelection(begin, end);
}

}  // namespace sontaro
