// What becomes of a text that the user has entered.
#include "base/row_text.h"
#include "widgets/grid_properties.h"
#include "widgets/settings_grid.h"
#include "widgets/wx_text.h"

#include <wx/textctrl.h>

namespace sontaro {

namespace {

using Outcome = EditAnswer::Outcome;

constexpr LocalText kIgnored = {"输入未被接受，原值保持不变。",
                                "This input is not accepted. The value stays as it was."};
constexpr LocalText kDigitsOnly = {
    "只接受数字 0 到 9，原值保持不变。",
    "Only the digits 0 to 9 are accepted. The value stays as it was."};
constexpr LocalText kDecimalsOnly = {
    "只接受数字 0 到 9 和小数点，原值保持不变。",
    "Only the digits 0 to 9 and a point are accepted. The value stays as it was."};

const LocalText& HintFor(RowKind kind) {
    if (kind == RowKind::kWholeNumber) return kDigitsOnly;
    if (kind == RowKind::kDecimal) return kDecimalsOnly;
    return kIgnored;
}

}  // namespace

void SettingsGrid::OnChanging(wxPropertyGridEvent& event) {
    const RowPlace& place = SettingsGridRows::PlaceOf(*event.GetProperty());
    const wxString name = event.GetPropertyName();
    if (IsOtherColour(*place.row, event.GetValue())) {
        event.Veto();
        CallAfter([this, name] { AskForColour(name); });
        return;
    }
    const std::string text = RowTextOf(*event.GetProperty(), *place.row, event.GetValue());
    const bool isFixed = place.row->kind == RowKind::kReadOnly;
    const EditAnswer answer = isFixed ? EditAnswer{} : onEdit_({place.row->key, text});
    if (answer.outcome == Outcome::kAccepted) {
        accepted_ = answer;
        return;
    }
    event.Veto();
    if (answer.outcome == Outcome::kRefused) {
        event.SetValidationFailureBehavior(wxPG_VFB_BEEP | wxPG_VFB_STAY_IN_PROPERTY);
        if (IsLeft() || telling_ == name) return;
        telling_ = name;
    }
    // Not now: a message box takes the focus away, which would commit the same edit once more.
    CallAfter([this, name, answer] { Reject(name, answer); });
}

/// Whether the keyboard has just gone elsewhere, which tries what was typed as well: a text that is
/// refused stays until the user wants something done with it.
bool SettingsGrid::IsLeft() const {
    return !committing_ && grid_->IsEditorsValueModified() &&
           !grid_->IsDescendant(wxWindow::FindFocus());
}

bool SettingsGrid::Commit() {
    committing_ = true;
    const bool isSettled = grid_->CommitChangesFromEditor();
    committing_ = false;
    return isSettled;
}

/// The row shows the text as it was taken, which may be another form of what was typed.
void SettingsGrid::OnChanged(wxPropertyGridEvent& event) {
    wxPGProperty* property = event.GetProperty();
    RowPlace& place = SettingsGridRows::PlaceOf(*property);
    if (RowTextOf(*property, *place.row, property->GetValue()) != accepted_.text)
        grid_->SetPropertyValue(property, RowValueOf(*property, *place.row, accepted_.text));
    Mark(*property, accepted_.caution);
    MarkChange(*property, accepted_.text);
    place.searched.clear();
    ShowHelp();  // a hint at what was wrong is past
}

void SettingsGrid::Mark(wxPGProperty& property, const std::string& caution) {
    RowPlace& place = SettingsGridRows::PlaceOf(property);
    if (place.caution.empty() != caution.empty())
        grid_->SetPropertyLabel(&property, LabelOf(*place.row, caution));
    place.caution = caution;
}

void SettingsGrid::Reject(const wxString& name, const EditAnswer& answer) {
    if (answer.outcome == Outcome::kRefused) return Refuse(name, answer.text);
    wxPGProperty* property = PropertyNamed(name);
    if (!property) return;
    grid_->RefreshProperty(property);
    const RowPlace& place = SettingsGridRows::PlaceOf(*property);
    help_->ChangeValue(answer.text.empty() ? ToWx(HintFor(place.row->kind)) : ToWx(answer.text));
}

/// What was typed stays in its cell, to be mended there; of what was chosen nothing is left.
void SettingsGrid::Refuse(const wxString& name, const std::string& reason) {
    const auto isTyped = [&] {
        const wxPGProperty* chosen = grid_->GetSelection();
        return chosen != nullptr && chosen->GetName() == name && grid_->IsEditorsValueModified() &&
               grid_->GetEditorTextCtrl() != nullptr;
    };
    wxPGProperty* property = PropertyNamed(name);
    if (property && !isTyped()) grid_->RefreshProperty(property);
    prompts_.Warn(reason);
    telling_.clear();
    if (isTyped()) grid_->GetEditorTextCtrl()->SetFocus();
}

void SettingsGrid::AskForColour(const wxString& name) {
    constexpr std::uint32_t kBlack = 0;
    wxPGProperty* property = PropertyNamed(name);
    if (!property) return;
    grid_->RefreshProperty(property);
    const long shown = property->GetValue().GetLong();
    const auto colour =
        prompts_.ChooseColour(shown < 0 ? kBlack : static_cast<std::uint32_t>(shown));
    property = PropertyNamed(name);  // the question has taken its time
    if (!colour || !property) return;
    const RowPlace& place = SettingsGridRows::PlaceOf(*property);
    const wxVariant value = RowValueOf(*property, *place.row, ColourRowText(*colour));
    grid_->RefreshProperty(property);
    grid_->ChangePropertyValue(property, value);
}

}  // namespace sontaro
