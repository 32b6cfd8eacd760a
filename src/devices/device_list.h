// The list of players.
#pragma once

#include <wx/listctrl.h>

#include <functional>

#include "devices/scan_run.h"

namespace sontaro {

/// Shows the devices of a `ScanRun`, one row per player, with tick boxes or with a single chosen
/// row. Sorts by a click on a header; copies a row with Ctrl+C.
class DeviceList : public wxListView {
   public:
    DeviceList(wxWindow* parent, int id, ChoiceMode mode, ScanRun& run);

    /// Shows the devices as they are now.
    void ShowDevices();

    /// The row that the user acts on, or -1.
    [[nodiscard]] long CurrentRow() const { return GetFocusedItem(); }

   private:
    [[nodiscard]] wxString OnGetItemText(long row, long column) const override;
    [[nodiscard]] bool OnGetItemIsChecked(long row) const override;

    void AppendColumns();
    void BindEvents();
    [[nodiscard]] bool HandleKey(int key);
    void ChooseOnly(long row);
    void SortByColumn(int column);
    void CopyRow();

    ChoiceMode mode_;
    ScanRun& run_;
    bool updating_ = false;  // selections made by the program are not the user's
};

}  // namespace sontaro
