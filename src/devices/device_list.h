// The list of players.
#pragma once

#include <wx/listctrl.h>

#include "base/prompts.h"
#include "devices/scan_run.h"

namespace sontaro {

/// Shows the devices of a `ScanRun`, one row per player, with tick boxes or with a single chosen
/// row: the player that is chosen is the one that is highlighted. Sorts by a click on a header;
/// copies a row with Ctrl+C. A row is activated by a double click alone.
class DeviceList : public wxListView {
   public:
    DeviceList(wxWindow* parent, int id, ChoiceMode mode, ScanRun& run, Prompts& prompts);

    /// Shows the devices as they are now.
    void ShowDevices();

    /// Narrows the versions until the remarks are in view, or there is hardly a version left.
    void FitColumns();

    /// Puts a text on the clipboard; false when that is not to be had: the user has been told.
    [[nodiscard]] bool Copy(const wxString& text);

    /// The player in a row; absent when there is no such row.
    [[nodiscard]] const DeviceRecord* PlayerAt(long row) const;

   private:
    [[nodiscard]] wxString OnGetItemText(long row, long column) const override;
    [[nodiscard]] bool OnGetItemIsChecked(long row) const override;

    void AppendColumns();
    void BindEvents();
    [[nodiscard]] bool HandleKey(const wxKeyEvent& event);
    void ActOnFocusedRow();
    void ChooseHighlighted();
    void SortByColumn(int column);
    void CopyRow();

    ChoiceMode mode_;
    ScanRun& run_;
    Prompts& prompts_;
    bool updating_ = false;  // selections made by the program are not the user's
};

}  // namespace sontaro
