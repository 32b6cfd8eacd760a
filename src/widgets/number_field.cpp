#include "widgets/number_field.h"

#include <algorithm>

#include "widgets/fonts.h"

namespace sontaro {

namespace {

bool IsDigit(wxChar character) { return character >= '0' && character <= '9'; }

/// Whether a key would put something into the text that is no digit.
bool IsRefused(const wxKeyEvent& event) {
    const wxChar key = event.GetUnicodeKey();
    return key >= WXK_SPACE && key != WXK_DELETE && !IsDigit(key) && !event.HasModifiers();
}

wxString DigitsOf(const wxString& text) {
    wxString digits;
    for (const wxUniChar character : text)
        if (IsDigit(static_cast<wxChar>(character))) digits += character;
    return digits;
}

}  // namespace

NumberField::NumberField(wxWindow* parent, int id, std::int64_t most, int characters)
    : wxTextCtrl(parent, id, "", wxDefaultPosition, wxDefaultSize, wxTE_RIGHT), most_(most) {
    SetInitialSize(GetSizeFromTextSize(characters * LetterWidth(*parent)));
    Bind(wxEVT_CHAR, [](wxKeyEvent& event) {
        if (!IsRefused(event)) event.Skip();
    });
    Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
        OnText();
        event.Skip();
    });
}

void NumberField::ShowNumber(std::int64_t number) {
    given_ = number;
    ChangeValue(wxString::Format("%lld", static_cast<long long>(number)));
}

std::int64_t NumberField::Number() const {
    const wxString text = GetValue();
    if (text == wxString::Format("%lld", static_cast<long long>(given_))) return given_;
    unsigned long long number = 0;
    if (!text.ToULongLong(&number)) return 0;
    return static_cast<std::int64_t>(std::min(number, static_cast<unsigned long long>(most_)));
}

void NumberField::OnText() {
    const wxString text = GetValue();
    wxString taken = DigitsOf(text);
    unsigned long long number = 0;
    const bool isTooMuch = !taken.empty() && (!taken.ToULongLong(&number) ||
                                              number > static_cast<unsigned long long>(most_));
    if (isTooMuch) taken = wxString::Format("%lld", static_cast<long long>(most_));
    if (taken == text) return;
    ChangeValue(taken);
    SetInsertionPointEnd();
}

}  // namespace sontaro
