// The timeline's windows as the tour finds them in front.
#pragma once

#include <wx/grid.h>
#include <wx/textctrl.h>

#include "timeline/player_time_control.h"
#include "timeline/timeline_texts.h"
#include "tour/tour.h"
#include "widgets/front_dialog.h"

namespace sontaro {

/// The table of the timeline; absent while another window is in front.
inline wxGrid* TimelineGrid() {
    wxWindow* dialog = Tour::FrontTitled(TitleOf(Window::kPlayerTimeControl));
    return dialog ? dynamic_cast<wxGrid*>(dialog->FindWindow(kTimelineGrid)) : nullptr;
}

inline std::function<bool()> HavingNodes(int count) {
    return
        [count] { return TimelineGrid() != nullptr && TimelineGrid()->GetNumberRows() == count; };
}

/// A cell of the row with the cursor.
inline wxString ChosenCell(TimelineColumn column) {
    wxGrid* grid = TimelineGrid();
    return grid ? grid->GetCellValue(grid->GetGridCursorRow(), static_cast<int>(column))
                : wxString();
}

/// Clicks on the label of a row, which ticks it or takes its tick away; -1: of all rows.
inline void ClickLabel(wxGrid& grid, int row) {
    wxGridEvent click(grid.GetId(), wxEVT_GRID_LABEL_LEFT_CLICK, &grid, row, -1);
    grid.GetEventHandler()->ProcessEvent(click);
}

/// Of two rows.
inline void ClickLabels() {
    for (const int row : {9, 10}) ClickLabel(*TimelineGrid(), row);
}

/// Types into a field of the dialog in front.
inline void TypeInFront(int id, const char* text) {
    dynamic_cast<wxTextEntry*>(FrontDialog()->FindWindow(id))->SetValue(text);
}

}  // namespace sontaro
