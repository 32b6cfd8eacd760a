// The grid inside a table.
#pragma once

#include <wx/grid.h>

#include <functional>
#include <optional>
#include <vector>

#include "base/table_rows.h"
#include "widgets/table_drawing.h"

namespace sontaro {

/// What the user does in a table. Any of these may be empty. Rows are those of the model.
struct TableActions {
    std::function<void(std::size_t row)> edit;                       ///< Enter, or a double click
    std::function<void(std::size_t row, std::size_t column)> press;  ///< a cell that is a button
    std::function<void()> insert;                                    ///< Insert
    std::function<void()> remove;                                    ///< Delete
    std::function<void()> choose;  ///< other rows are chosen; once for what comes at a time
    std::function<void()> tick;    ///< rows have been ticked, or no longer are
};

/// Shows rows as the places that a filter leaves them. Chosen are the rows that the user has put
/// together, or else the one with the cursor.
class TableGrid : public wxGrid {
   public:
    /// `rows` and `actions` outlive this object; `copy` is called for Ctrl+C.
    TableGrid(wxWindow* parent, int id, TableRows& rows, const TableActions& actions,
              std::function<void()> copy);

    /// The place of the cursor; none when there are no rows.
    [[nodiscard]] std::optional<std::size_t> CursorPlace() const;
    /// Ascending.
    [[nodiscard]] std::vector<std::size_t> ChosenPlaces() const;

    /// What is chosen, as it is found again when the rows have changed.
    struct Choice {
        std::vector<std::uint64_t> ids;
        std::optional<std::uint64_t> cursor;
        std::size_t row = 0;  // of the model, with the cursor
        bool inView = false;
    };
    [[nodiscard]] Choice CurrentChoice() const;
    /// Shows the rows as they are now. Where the one with the cursor has gone, the next has it.
    void ShowRows(const Choice& choice);

    void Choose(std::size_t place);
    void RefreshPlace(std::size_t place);
    /// What is said in place of rows.
    void SetMessage(const wxString& message);

    [[nodiscard]] CellLook LookOf(std::size_t place, std::size_t column) const;
    [[nodiscard]] const TableDrawing& Drawing() const { return drawing_; }

   private:
    class Renderer;
    class Cells;

    void DrawRowLabel(wxDC& canvas, int place) override;
    void DrawColLabel(wxDC& canvas, int column) override;
    void DrawCornerLabel(wxDC& canvas) override;
    void DrawCellHighlight(wxDC& canvas, const wxGridCellAttr* attributes) override;

    void BindEvents();
    void BindMouse();
    void TakeColours();
    void PaintMessage();

    void OnKey(wxKeyEvent& event);
    [[nodiscard]] bool HandleKey(const wxKeyEvent& event);
    [[nodiscard]] bool HandleShortcut(int key);
    void Activate();
    void OnLabel(wxGridEvent& event);
    void OnDown(wxMouseEvent& event);
    void OnUp(wxMouseEvent& event);
    void OnMove(const wxPoint& position);
    void EndPress();

    void TickChosen();
    void TickTo(std::size_t place, bool range);
    void TickAll();
    void TicksChanged();
    void Press(const wxGridCellCoords& cell);
    void TellChoice();

    void SetRowCount(int count);
    void ChoosePieces(const std::vector<std::size_t>& places);
    void WidenToContents(int column);
    [[nodiscard]] bool IsChosen(int place) const;
    [[nodiscard]] bool IsButton(const wxGridCellCoords& cell) const;
    [[nodiscard]] wxGridCellCoords CellAt(const wxPoint& position) const;
    [[nodiscard]] wxString TooltipOf(const wxGridCellCoords& cell) const;
    [[nodiscard]] CellKind KindOf(int column) const;

    TableRows& rows_;
    const TableActions& actions_;
    std::function<void()> copy_;
    TableDrawing drawing_;
    wxString message_;
    std::optional<std::uint64_t> wanted_;  // whose the cursor is, also while a filter hides it
    std::size_t tickedFrom_ = 0;           // the place that was ticked last
    wxGridCellCoords pressed_;             // the button that is held down
    bool isDown_ = false;                  // whether it is drawn so: the pointer may have left it
    wxGridCellCoords hovered_;             // the cell whose tooltip is set
    bool updating_ = false;                // what changes now is not the user's doing
    bool telling_ = false;                 // of a choice
};

}  // namespace sontaro
