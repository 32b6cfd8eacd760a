// A table of rows that the user chooses, ticks and narrows.
#pragma once

#include <wx/panel.h>

#include <optional>
#include <string>
#include <vector>

#include "base/json_file.h"
#include "base/prompts.h"
#include "base/table_rows.h"
#include "widgets/table_grid.h"

namespace sontaro {

/// Shows the rows of a model, tens of thousands as quickly as ten. Each has a tick box and its
/// number at the left, unless the model has no ticks; the box in the corner ticks all rows shown.
/// The arrows, Page Up and Down, Home and End move the cursor, with Shift they choose rows, Ctrl+A
/// chooses all. Space ticks the chosen rows, a click on a label one, with Shift all from the last
/// one. A button cell is pressed by a click, and by Space or Enter when it has the cursor; Enter
/// and a double click on any other edit the row. Ctrl+C copies the chosen rows, Tab goes on. What
/// is cut or odd is in a tooltip. User-interface thread.
class Table : public wxPanel {
   public:
    /// `id` is the control number of the grid inside. `model` outlives the table. `prompts` tell
    /// when the clipboard cannot be had.
    Table(wxWindow* parent, int id, TableModel& model, TableActions actions, Prompts& prompts);

    /// Rows have come, gone, moved or changed. What is chosen stays chosen as far as it is still
    /// there and shown; does not tell the owner. A choice that is scattered into very many pieces
    /// shrinks to the row with the cursor.
    void RowsChanged();
    /// This row has another text, tick or caution. It stays where it is, whatever the filter.
    void RowChanged(std::size_t row);

    /// Shows the rows that contain `text` in any column, whatever the case of its letters; blanks
    /// at its ends do not count. Empty: all. Hidden rows keep their ticks but are not chosen; the
    /// cursor comes back to its row. Returns how many rows are shown.
    std::size_t Filter(const wxString& text);

    /// Whether the filter leaves this row.
    [[nodiscard]] bool IsListed(std::size_t row) const { return rows_.PlaceOf(row).has_value(); }

    /// What is said while there are no rows: why, and what to press.
    void SetEmptyText(const std::string& text);

    /// Chooses a row alone and scrolls to it; does not tell the owner. A row that the filter hides
    /// is shown in spite of it until the filter or the rows change.
    void Choose(std::size_t row);
    /// The row with the cursor; none when there are none.
    [[nodiscard]] std::optional<std::size_t> ChosenRow() const;
    /// All that are chosen, ascending.
    [[nodiscard]] std::vector<std::size_t> ChosenRows() const;

    /// Gives the columns the widths that are remembered as `name`, and remembers there what the
    /// user makes of them. `preferences` outlives the table.
    void KeepWidths(const std::string& name, JsonFile& preferences);

    /// The grid, whose rows are the ones shown.
    [[nodiscard]] wxGrid& Grid() { return *grid_; }

   private:
    void ShowMessage();
    void Copy();

    TableActions actions_;
    Prompts& prompts_;
    TableRows rows_;
    TableGrid* grid_ = nullptr;
    std::string emptyText_;
};

}  // namespace sontaro
