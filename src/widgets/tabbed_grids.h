// Several settings grids on tabs, with one filter for all.
#pragma once

#include <wx/notebook.h>
#include <wx/panel.h>

#include <map>
#include <span>
#include <string>
#include <vector>

#include "base/local_text.h"
#include "widgets/settings_grid.h"

namespace sontaro {

class FilterBox;

/// Control numbers of the parts; the grids' follow one another from `firstGrid` on.
struct TabbedGridsIds {
    int tabs;
    int filter;
    int firstGrid;
};

/// One grid a tab. Each tab says how many of its rows the filter finds; Ctrl with Tab turns the
/// pages, from within a cell as well. A page whose open edit is refused is not left.
/// User-interface thread.
class TabbedGrids : public wxPanel {
   public:
    TabbedGrids(wxWindow* parent, const TabbedGridsIds& ids, std::span<const LocalText> tabs,
                Prompts& prompts, SettingsGrid::EditHandler onEdit);

    /// The line above the tabs: something may be put ahead of the filter.
    [[nodiscard]] wxSizer& Head() { return *head_; }

    /// Shows other rows, one element a grid.
    template <class Grids>
    void Fill(Grids&& rows) {
        for (std::size_t i = 0; i < grids_.size(); ++i) grids_[i]->Fill(std::move(rows[i]));
        Filter();
    }
    /// The same for one grid.
    void Fill(std::size_t grid, SettingsRows rows) {
        grids_[grid]->Fill(std::move(rows));
        Filter();
    }
    /// As in `SettingsGrid`; the key is looked for in every grid.
    void ShowConfirmed(const std::map<std::string, std::string>& values);
    bool Change(const std::string& key, const std::string& text);
    /// Turns to the page of the row with this key, chooses the row, without the filter if that
    /// hides it, and gives it the keyboard. Nothing happens without such a row.
    void ChooseKey(const std::string& key);
    /// Ends every edit that is open. False when one is not accepted.
    [[nodiscard]] bool Commit();

    /// Shows the first `count` tabs, where there were all at first: the grids of the others cease
    /// to be. One that is new has no rows yet, and is turned to.
    void ShowTabs(std::size_t count);
    [[nodiscard]] std::size_t Count() const { return grids_.size(); }

    /// Gives the keyboard to the rows of the page, or to the tabs where a filter has found none.
    void FocusRows();

    [[nodiscard]] std::size_t Page() const;
    [[nodiscard]] SettingsGrid& Grid(std::size_t index) { return *grids_[index]; }

   private:
    void AddGrid();
    void BindEvents();
    void OnKey(wxKeyEvent& event);
    void LeavePage(wxBookCtrlEvent& event);
    void Filter();

    const int firstGrid_;  // control number
    const std::span<const LocalText> titles_;
    Prompts& prompts_;
    const SettingsGrid::EditHandler onEdit_;
    wxSizer* head_ = nullptr;
    FilterBox* filter_ = nullptr;
    wxNotebook* tabs_ = nullptr;
    std::vector<SettingsGrid*> grids_;
};

}  // namespace sontaro
