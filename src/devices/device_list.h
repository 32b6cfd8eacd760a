// The list of players.
#pragma once

#include <wx/listctrl.h>
#include <wx/timer.h>

#include "base/prompts.h"
#include "devices/scan_run.h"

namespace sontaro {

/// What lists of players differ in.
struct DeviceListStyle {
    ChoiceMode mode{};
    NumberWidths numberWidths{};
    bool fitsContents = false;  ///< all columns but the remarks are as wide as what they show
};

/// Shows the devices of a `ScanRun`, one row per player, with tick boxes or with a single chosen
/// row: the player that is chosen is the one that is highlighted. Sorts by a click on a header;
/// copies a row with Ctrl+C, its ID with a right click. A double click edits the remarks.
class DeviceList : public wxListView {
   public:
    /// `run`, `remarks` and `prompts` outlive the list.
    DeviceList(wxWindow* parent, int id, const DeviceListStyle& style, ScanRun& run,
               DeviceRemarks& remarks, Prompts& prompts);

    /// Shows the devices as they are now.
    void ShowDevices();

    /// Shows or hides the tick boxes of a list that has them; they stay as they are.
    void ShowTicks(bool shown);

    /// Narrows the versions until the remarks are in view, or there is hardly a version left; in a
    /// list that fits its contents the remarks take what is left.
    void FitColumns();

    /// Has the user edit the remarks of the highlighted player; says so when there is none.
    void EditHighlightedRemarks();

    /// The player in a row; absent when there is no such row.
    [[nodiscard]] const DeviceRecord* PlayerAt(long row) const;

   private:
    [[nodiscard]] wxString OnGetItemText(long row, long column) const override;
    [[nodiscard]] bool OnGetItemIsChecked(long row) const override;

    void AppendColumns();
    void BindEvents();
    void FitSoon();
    void FitContents();
    [[nodiscard]] int FittingWidth(int column);
    [[nodiscard]] bool HandleKey(const wxKeyEvent& event);
    void ActOnFocusedRow();
    void ChooseHighlighted();
    void SortByColumn(int column);
    void EditRemarks(long row);
    [[nodiscard]] bool Copy(const wxString& text);
    void CopyId(long row);
    void CopyRow();

    [[nodiscard]] bool IsMultiple() const { return style_.mode == ChoiceMode::kMultiple; }

    const DeviceListStyle style_;
    ScanRun& run_;
    DeviceRemarks& remarks_;
    Prompts& prompts_;
    wxTimer fitting_;
    bool updating_ = false;  // selections made by the program are not the user's
};

}  // namespace sontaro
