#include "widgets/tabbed_grids.h"

#include <wx/sizer.h>

#include <algorithm>

#include "widgets/filter_box.h"
#include "widgets/fonts.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kGridCharacters = 76;
constexpr int kGridLines = 25;

}  // namespace

TabbedGrids::TabbedGrids(wxWindow* parent, const TabbedGridsIds& ids,
                         std::span<const LocalText> tabs, Prompts& prompts,
                         SettingsGrid::EditHandler onEdit)
    : wxPanel(parent),
      firstGrid_(ids.firstGrid),
      titles_(tabs),
      prompts_(prompts),
      onEdit_(std::move(onEdit)) {
    auto* column = new wxBoxSizer(wxVERTICAL);
    head_ = new wxBoxSizer(wxHORIZONTAL);
    filter_ = new FilterBox(this, ids.filter);
    head_->Add(filter_->WithCaption(), wxSizerFlags().CentreVertical());
    column->Add(head_, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(10)));
    tabs_ = new TabBook(this, ids.tabs);
    while (grids_.size() < tabs.size()) AddGrid();
    column->Add(tabs_, wxSizerFlags(1).Expand());
    SetSizer(column);
    BindEvents();
}

void TabbedGrids::AddGrid() {
    const int id = firstGrid_ + static_cast<int>(grids_.size());
    auto* page = new wxPanel(tabs_);
    auto* grid = new SettingsGrid(page, id, true, prompts_, onEdit_);
    grid->SetMinSize(wxSize(kGridCharacters * LetterWidth(*this), kGridLines * GetCharHeight()));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(grid, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(8)));
    page->SetSizer(column);
    tabs_->AddPage(page, ToWx(titles_[grids_.size()]));
    grids_.push_back(grid);
}

/// A page that is only taken out of the book would not come to life again on some systems.
void TabbedGrids::ShowTabs(std::size_t count) {
    while (grids_.size() > count) {
        grids_.pop_back();
        tabs_->DeletePage(grids_.size());
    }
    if (grids_.size() == count) return;
    while (grids_.size() < count) AddGrid();
    tabs_->SetSelection(count - 1);
}

void TabbedGrids::BindEvents() {
    tabs_->Bind(wxEVT_NOTEBOOK_PAGE_CHANGING, &TabbedGrids::LeavePage, this);
    Bind(wxEVT_CHAR_HOOK, &TabbedGrids::OnKey, this);
    filter_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { Filter(); });
}

void TabbedGrids::LeavePage(wxBookCtrlEvent& event) {
    const auto left = static_cast<std::size_t>(event.GetOldSelection());
    if (left < grids_.size() && !grids_[left]->Commit())  // not a tab that is being done away with
        event.Veto();  // and nothing else: what is skipped counts as allowed
    else
        event.Skip();
}

void TabbedGrids::OnKey(wxKeyEvent& event) {
    if (event.GetKeyCode() != WXK_TAB || !event.ControlDown()) {
        event.Skip();
        return;
    }
    tabs_->AdvanceSelection(!event.ShiftDown());
    FocusRows();
}

void TabbedGrids::FocusRows() {
    wxWindow& rows = grids_[Page()]->Properties();
    if (rows.IsShown())
        rows.SetFocus();
    else
        tabs_->SetFocus();
}

std::size_t TabbedGrids::Page() const { return static_cast<std::size_t>(tabs_->GetSelection()); }

void TabbedGrids::ShowConfirmed(const std::map<std::string, std::string>& values) {
    for (SettingsGrid* grid : grids_) grid->ShowConfirmed(values);
}

bool TabbedGrids::Change(const std::string& key, const std::string& text) {
    return std::ranges::any_of(grids_, [&](SettingsGrid* grid) { return grid->Change(key, text); });
}

void TabbedGrids::ChooseKey(const std::string& key) {
    const auto grid = std::ranges::find_if(grids_, [&](auto* each) { return each->Has(key); });
    if (grid == grids_.end()) return;
    tabs_->SetSelection(static_cast<std::size_t>(grid - grids_.begin()));
    if (!(*grid)->ChooseKey(key)) {
        filter_->Clear();
        (*grid)->ChooseKey(key);
    }
    FocusRows();
}

bool TabbedGrids::Commit() {
    return std::ranges::all_of(grids_, [](SettingsGrid* grid) { return grid->Commit(); });
}

void TabbedGrids::Filter() {
    const wxString text = filter_->GetValue();
    const bool isOn = !text.Strip(wxString::both).empty();
    for (std::size_t i = 0; i < grids_.size(); ++i) {
        const int hits = grids_[i]->Filter(text);
        wxString label = ToWx(titles_[i]);
        if (isOn) label += wxString::Format(" (%d)", hits);
        if (tabs_->GetPageText(i) == label) continue;
        tabs_->SetPageText(i, label);
        tabs_->Refresh();  // where there was a longer one, it would stay
    }
}

}  // namespace sontaro
