#include "widgets/settings_grid.h"

#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/wupdlock.h>

#include <algorithm>

#include "base/filter_text.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/grid_properties.h"
#include "widgets/settings_grid_titles.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kFirstColumn = 235;  // device-independent pixels
constexpr int kFirstColumnCharacters = 30;
constexpr int kLeastSecondColumn = 160;
constexpr int kLeastHeight = 120;
constexpr int kHelpLines = 3;

std::string CautionLine(const std::string& caution) {
    return caution.empty() ? "" : '\n' + caution;
}

/// The first column grows with the display and with its texts.
int FirstColumn(const wxWindow& window) {
    return std::max(window.FromDIP(kFirstColumn), kFirstColumnCharacters * LetterWidth(window));
}

}  // namespace

SettingsGrid::SettingsGrid(wxWindow* parent, int id, bool withTitles, Prompts& prompts,
                           EditHandler onEdit)
    : wxPanel(parent), prompts_(prompts), onEdit_(std::move(onEdit)) {
    const int first = FirstColumn(*this);
    const wxSize least(first + FromDIP(kLeastSecondColumn), FromDIP(kLeastHeight));
    grid_ = new SettingsGridRows(this, id, wxDefaultPosition, least,
                                 long{wxPG_BOLD_MODIFIED} | wxBORDER_THEME);
    grid_->SetValidationFailureBehavior(wxPG_VFB_BEEP);  // what is wrong is told in our own words
    grid_->AddActionTrigger(wxPG_ACTION_EDIT, WXK_RETURN);
    grid_->AddActionTrigger(wxPG_ACTION_EDIT, WXK_NUMPAD_ENTER);
    grid_->SetMinSize(least);
    grid_->SetSplitterPosition(first);  // else it would measure every row's name
    grid_->SetCaptionTextColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT));
    grid_->SetVerticalSpacing(grid_->GetVerticalSpacing() +
                              (LineHeight(*this) - GetCharHeight()) / 2);
    if (withTitles) {
        titles_ = new SettingsGridTitles(this);
        titles_->SetMinSize(wxSize(wxDefaultCoord, LineHeight(*this) + FromDIP(8)));
    }
    empty_ = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                              wxALIGN_CENTRE_HORIZONTAL);
    help_ = new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition,
                           wxSize(-1, kHelpLines * LineHeight(*this) + FromDIP(12)),
                           wxTE_MULTILINE | wxTE_READONLY | wxBORDER_THEME);
    help_->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
    LayOut();
    BindEvents();
}

/// The property grid would commit an edit on its way out, to handlers that have gone by then.
SettingsGrid::~SettingsGrid() { grid_->EditorsValueWasNotModified(); }

wxPropertyGrid& SettingsGrid::Properties() { return *grid_; }

void SettingsGrid::LayOut() {
    auto* column = new wxBoxSizer(wxVERTICAL);
    if (titles_) column->Add(titles_, wxSizerFlags().Expand());
    column->Add(grid_, wxSizerFlags(1).Expand());
    emptyArea_ = new wxBoxSizer(wxVERTICAL);
    emptyArea_->AddStretchSpacer();
    emptyArea_->Add(empty_, wxSizerFlags().Expand().Border(wxALL, FromDIP(16)));
    emptyArea_->AddStretchSpacer();
    column->Add(emptyArea_, wxSizerFlags(1).Expand());
    column->Add(help_, wxSizerFlags().Expand().Border(wxTOP, FromDIP(6)));
    SetSizer(column);
    ShowRowsOrText();
}

void SettingsGrid::BindEvents() {
    grid_->Bind(wxEVT_PG_CHANGING, &SettingsGrid::OnChanging, this);
    grid_->Bind(wxEVT_PG_CHANGED, &SettingsGrid::OnChanged, this);
    grid_->Bind(wxEVT_PG_SELECTED, [this](wxPropertyGridEvent&) {
        offered_.clear();
        ShowHelp();
    });
    grid_->Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        event.Skip();
        offered_.clear();
    });
    grid_->Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        CallAfter([this] {
            if (grid_->GetSelection()) return;
            ChooseFirst();
            ShowHelp();
        });
    });
    const auto placeTitles = [this](wxEvent& event) {
        event.Skip();
        CallAfter([this] { PlaceTitles(); });
    };
    const auto keepColumns = [this, placeTitles](wxEvent& event) {
        columnsChosen_ = true;
        placeTitles(event);
    };
    grid_->Bind(wxEVT_SIZE, placeTitles);
    grid_->Bind(wxEVT_PG_COL_DRAGGING, keepColumns);
    grid_->Bind(wxEVT_PG_COL_END_DRAG, keepColumns);
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        if (empty_->IsShown()) WrapEmptyText();
    });
    Bind(wxEVT_CHAR_HOOK, &SettingsGrid::OnKey, this);
}

/// The keys that move choose a row, where the grid's own ones would only scroll.
void SettingsGrid::OnKey(wxKeyEvent& event) {
    const int key = event.HasModifiers() ? WXK_NONE : event.GetKeyCode();
    wxPGProperty* row = grid_->HasFocus() ? grid_->RowAt(key) : nullptr;
    if (key == WXK_TAB) return MoveOn(event.ShiftDown());
    if (!row) return event.Skip();
    offered_.clear();
    grid_->Choose(row);
    ShowHelp();
}

/// By itself the grid would hand the keyboard to a part that cannot take it, and on the way back
/// some systems would pass it by.
void SettingsGrid::MoveOn(bool back) {
    if (back && !grid_->IsDescendant(wxWindow::FindFocus()))
        grid_->SetFocus();
    else
        Navigate(back ? wxNavigationKeyEvent::IsBackward : wxNavigationKeyEvent::IsForward);
}

void SettingsGrid::Fill(SettingsRows groups) {
    const View view = CurrentView();
    {
        const wxWindowUpdateLocker lock(grid_);
        grid_->Clear();
        places_.clear();
        groups_ = std::move(groups);
        for (const SettingsGroup& group : groups_) AppendGroup(nullptr, group);
        const wxPGProperty* typed = view.typing ? PropertyNamed(view.chosen) : nullptr;
        found_ = grid_->Narrow(filter_, view.folded, typed);
    }
    ShowRowsOrText();
    Restore(view);
    ShowHelp();
}

// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
void SettingsGrid::AppendGroup(wxPGProperty* parent, const SettingsGroup& group) {
    auto* category = new wxPropertyCategory(ToWx(group.name), ToWx(group.key));
    category->SetClientData(&places_.emplace_back(RowPlace{&group, nullptr}));
    if (parent)
        grid_->AppendIn(parent, category);
    else
        grid_->Append(category);
    for (const SettingsRow& row : group.rows) {
        wxPGProperty* property = MakeProperty(row).release();
        property->SetClientData(&places_.emplace_back(RowPlace{&group, &row, row.caution}));
        grid_->AppendIn(category, property);
        const auto held = row.takesHeld ? confirmed_.find(row.key) : confirmed_.end();
        if (held != confirmed_.end())
            static_cast<void>(RowValueOf(*property, row, held->second));  // which offers it
        MarkChange(*property, row.value);
        if (row.kind == RowKind::kReadOnly)
            grid_->SetPropertyTextColour(property,
                                         wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
    }
    for (const SettingsGroup& inner : group.groups) AppendGroup(category, inner);
}

/// The toolkit alone would take a point in a name that it does not find for a path of its own.
wxPGProperty* SettingsGrid::PropertyNamed(const wxString& key) const {
    wxPGProperty* property = grid_->GetPropertyByName(key);
    return property && property->GetName() == key ? property : nullptr;
}

SettingsGrid::View SettingsGrid::CurrentView() const {
    View view;
    view.scroll = grid_->GetScrollPos(wxVERTICAL);
    view.folded = grid_->FoldedGroups();
    const wxPGProperty* chosen = grid_->GetSelection();
    if (!chosen) return view;
    view.chosen = chosen->GetName();
    const wxTextCtrl* editor = grid_->GetEditorTextCtrl();
    view.typing = editor != nullptr && grid_->IsEditorsValueModified();
    if (view.typing) view.typed = editor->GetValue();
    return view;
}

/// A frozen grid would have no editor yet that could take the text.
void SettingsGrid::Restore(const View& view) {
    wxPGProperty* chosen = PropertyNamed(view.chosen);
    const bool typing = chosen != nullptr && view.typing;
    if (chosen && chosen->IsVisible())
        grid_->Choose(chosen);
    else if (!view.chosen.empty() || grid_->HasFocus())
        ChooseFirst();
    if (typing) grid_->SelectProperty(chosen, true);
    if (wxTextCtrl* editor = grid_->GetEditorTextCtrl(); editor && typing) {
        editor->SetValue(view.typed);
        editor->SetInsertionPointEnd();
    }
    grid_->Scroll(0, view.scroll);
    if (typing) grid_->Reveal(chosen);  // its row may have moved away
}

/// Only when the user comes to the grid, or had chosen another row: an editor takes its time.
void SettingsGrid::ChooseFirst() {
    if (wxPGProperty* first = grid_->FirstRow()) grid_->Choose(first);
    if (const wxPGProperty* first = grid_->GetSelection()) offered_ = first->GetName();
}

void SettingsGrid::SetEmptyText(const wxString& text) {
    emptyText_ = text;
    ShowRowsOrText();
}

int SettingsGrid::Filter(const wxString& text) {
    const std::string wanted = FilterForm(FromWx(text));
    if (wanted == filter_) return found_;
    const bool settled = KeepsEdit(wanted) || grid_->CommitChangesFromEditor();
    if (const wxPGProperty* chosen = grid_->GetSelection()) chosen_ = chosen->GetName();
    if (filter_.empty()) folded_ = grid_->FoldedGroups();
    filter_ = wanted;
    found_ = grid_->Narrow(filter_, filter_.empty() ? folded_ : std::set<wxString>(),
                           settled ? nullptr : grid_->GetSelection());
    ShowRowsOrText();
    grid_->ChooseShown();
    wxPGProperty* chosen = PropertyNamed(chosen_);
    if (chosen && chosen->IsVisible() && !grid_->GetSelection()) grid_->Choose(chosen);
    ShowHelp();
    return found_;
}

/// Whether the row that is being edited, if there is one, is shown with this filter.
bool SettingsGrid::KeepsEdit(const std::string& filter) const {
    return !grid_->IsEditorsValueModified() ||
           SettingsGridRows::Contains(*grid_->GetSelection(), filter);
}

bool SettingsGrid::Change(const std::string& key, const std::string& text) {
    wxPGProperty* property = PropertyNamed(ToWx(key));
    RowPlace* place = property ? &SettingsGridRows::PlaceOf(*property) : nullptr;
    if (!place || !place->row) return false;
    const wxVariant value = RowValueOf(*property, *place->row, text);
    property->SetModifiedStatus(true);
    MarkChange(*property, text);  // before the value: the editor's font comes with that
    grid_->SetPropertyValue(property, value);
    Mark(*property, "");
    place->searched.clear();
    if (property == grid_->GetSelection()) grid_->EditorsValueWasNotModified();
    if (!SettingsGridRows::IsHidden(*property)) Present(property);
    ShowHelp();
    return true;
}

/// Another row that is being typed into stays chosen.
void SettingsGrid::Present(wxPGProperty* row) {
    if (row == grid_->GetSelection() || grid_->IsEditorsValueModified())
        grid_->Reveal(row);
    else
        grid_->Choose(row);
}

bool SettingsGrid::IsOffered() const {
    const wxPGProperty* chosen = grid_->GetSelection();
    return chosen != nullptr && chosen->GetName() == offered_;
}

const SettingsRow* SettingsGrid::ChosenRow() const {
    const wxPGProperty* chosen = grid_->GetSelection();
    return chosen ? SettingsGridRows::PlaceOf(*chosen).row : nullptr;
}

const SettingsGroup* SettingsGrid::ChosenGroup() const {
    const wxPGProperty* chosen = grid_->GetSelection();
    return chosen ? SettingsGridRows::PlaceOf(*chosen).group : nullptr;
}

bool SettingsGrid::IsEditing() const {
    const wxTextCtrl* editor = grid_->GetEditorTextCtrl();
    return grid_->IsEditorsValueModified() || (editor != nullptr && editor->HasFocus());
}

bool SettingsGrid::Has(const std::string& key) const {
    return !key.empty() && PropertyNamed(ToWx(key)) != nullptr;
}

bool SettingsGrid::ChooseKey(const std::string& key) {
    wxPGProperty* property = Has(key) ? PropertyNamed(ToWx(key)) : nullptr;
    if (!property || SettingsGridRows::IsHidden(*property)) return false;
    offered_.clear();
    grid_->Choose(property);
    ShowHelp();
    return true;
}

void SettingsGrid::ChooseNone() {
    grid_->ClearSelection();
    chosen_.clear();
    ShowHelp();
}

void SettingsGrid::ShowRowsOrText() {
    const bool hasRows = grid_->FirstRow() != nullptr;
    if (!hasRows) WrapEmptyText();
    wxSizer* column = GetSizer();
    if (titles_) column->Show(titles_, hasRows);
    column->Show(grid_, hasRows);
    column->Show(help_, hasRows);
    column->Show(emptyArea_, !hasRows);
    Layout();
}

void SettingsGrid::WrapEmptyText() {
    empty_->SetLabelText(places_.empty() ? emptyText_ : ToWx(kNothingFound));
    empty_->Wrap(GetClientSize().x - FromDIP(32));
}

void SettingsGrid::ShowConfirmed(std::map<std::string, std::string> values) {
    confirmed_ = std::move(values);
    for (const RowPlace& place : places_) {
        if (!place.row) continue;
        wxPGProperty& property = *PropertyNamed(ToWx(place.row->key));
        MarkChange(property, RowTextOf(property, *place.row, property.GetValue()));
    }
    grid_->Refresh();
}

void SettingsGrid::MarkChange(wxPGProperty& property, const std::string& value) {
    if (confirmed_.empty()) return;
    const auto held = confirmed_.find(SettingsGridRows::PlaceOf(property).row->key);
    property.SetModifiedStatus(held == confirmed_.end() || held->second != value);
}

void SettingsGrid::ShowHelp() {
    const SettingsRow* row = ChosenRow();
    std::string text = row ? row->name : "";
    if (row && row->help != row->name) text += '\n' + row->help;
    if (row) text += CautionLine(SettingsGridRows::PlaceOf(*grid_->GetSelection()).caution);
    help_->ChangeValue(ToWx(text));
}

/// A grid that was narrow for a while, as on a page that is not shown yet, gets its column back.
void SettingsGrid::PlaceTitles() {
    if (!columnsChosen_) grid_->SetSplitterPosition(FirstColumn(*this));
    const int first = grid_->GetSplitterPosition();
    if (titles_) titles_->SetWidths(first, grid_->GetClientSize().x - first);
}

}  // namespace sontaro
