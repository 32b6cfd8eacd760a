#include "widgets/table_grid.h"

#include <wx/dcclient.h>
#include <wx/settings.h>

#include <algorithm>

#include "widgets/caption_button.h"
#include "widgets/common_texts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

/// Selected blocks are looked through for every cell that is drawn.
constexpr std::size_t kMostPieces = 200;
constexpr LocalText kCornerTip = {"勾选或取消勾选所有显示的行",
                                  "Tick all rows shown, or take their ticks away"};

}  // namespace

/// The rows as the toolkit asks for them. It asks whether a cell is empty for every row on the way
/// to the end; none is.
class TableGrid::Cells : public wxGridTableBase {
   public:
    explicit Cells(TableRows& rows) : rows_(rows) {}

   private:
    int GetNumberRows() override { return static_cast<int>(rows_.Count()); }
    int GetNumberCols() override { return static_cast<int>(rows_.Model().Columns().size()); }
    bool IsEmptyCell(int, int) override { return false; }
    bool CanHaveAttributes() override { return false; }
    void SetValue(int, int, const wxString&) override {}
    wxString GetValue(int place, int column) override {
        return ToWx(rows_.Model().Text(rows_.RowAt(static_cast<std::size_t>(place)),
                                       static_cast<std::size_t>(column)));
    }

    TableRows& rows_;
};

class TableGrid::Renderer : public wxGridCellRenderer {
   public:
    explicit Renderer(const TableGrid& table) : table_(table) {}

   private:
    void Draw(wxGrid&, wxGridCellAttr&, wxDC& canvas, const wxRect& area, int place, int column,
              bool) override {
        table_.Drawing().Cell(
            canvas, area,
            table_.LookOf(static_cast<std::size_t>(place), static_cast<std::size_t>(column)));
    }
    wxSize GetBestSize(wxGrid& grid, wxGridCellAttr&, wxDC&, int place, int column) override {
        return {grid.GetColSize(column), grid.GetRowSize(place)};
    }
    [[nodiscard]] wxGridCellRenderer* Clone() const override { return new Renderer(table_); }

    const TableGrid& table_;
};

TableGrid::TableGrid(wxWindow* parent, int id, TableRows& rows, const TableActions& actions,
                     std::function<void()> copy)
    : wxGrid(parent, id, wxDefaultPosition, wxDefaultSize, long{wxWANTS_CHARS} | wxBORDER_THEME),
      rows_(rows),
      actions_(actions),
      copy_(std::move(copy)),
      drawing_(*GetGridWindow()) {
    EnableEditing(false);
    DisableDragRowSize();
    DisableDragGridSize();
    SetMargins(0, 0);
    SetDefaultRenderer(new Renderer(*this));
    SetDefaultRowSize(drawing_.RowHeight(), true);
    SetScrollLineY(drawing_.RowHeight());
    SetColLabelSize(drawing_.HeaderHeight());
    AssignTable(new Cells(rows_), wxGridSelectRows);
    const std::span<const TableColumn> columns = rows_.Model().Columns();
    for (std::size_t column = 0; column < columns.size(); ++column)
        SetColSize(static_cast<int>(column),
                   drawing_.ColumnWidth(columns[column].characters, ToWx(columns[column].caption)));
    GetGridCornerLabelWindow()->SetToolTip(ToWx(kCornerTip));
    TakeColours();
    ShowRows({});
    BindEvents();
    BindMouse();
}

void TableGrid::BindEvents() {
    Bind(wxEVT_KEY_DOWN, &TableGrid::OnKey, this);
    Bind(wxEVT_GRID_LABEL_LEFT_CLICK, &TableGrid::OnLabel, this);
    Bind(wxEVT_GRID_LABEL_LEFT_DCLICK, &TableGrid::OnLabel, this);
    Bind(wxEVT_GRID_SELECT_CELL, [this](wxGridEvent& event) {
        event.Skip();
        const auto place = static_cast<std::size_t>(event.GetRow());
        if (const auto before = CursorPlace()) RefreshPlace(*before);
        RefreshPlace(place);
        if (!updating_) wanted_ = rows_.IdAt(place);
        TellChoice();
    });
    Bind(wxEVT_GRID_RANGE_SELECTED, [this](wxGridRangeSelectEvent& event) {
        event.Skip();
        if (const auto place = CursorPlace()) RefreshPlace(*place);
        TellChoice();
    });
    Bind(wxEVT_GRID_COL_AUTO_SIZE,
         [this](wxGridSizeEvent& event) { WidenToContents(event.GetRowOrCol()); });
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        event.Skip();
        TakeColours();
    });
    GetGridWindow()->Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
        if (rows_.Count() == 0)
            PaintMessage();
        else
            event.Skip();
    });
}

void TableGrid::TakeColours() {
    SetGridLineColour(TableDrawing::LineColour());
    SetDefaultCellBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW));
    SetLabelBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
}

void TableGrid::SetMessage(const wxString& message) {
    message_ = message;
    if (rows_.Count() == 0) GetGridWindow()->Refresh();
}

void TableGrid::PaintMessage() {
    wxPaintDC canvas(GetGridWindow());
    drawing_.Message(canvas, GetGridWindow()->GetClientSize(), message_);
}

std::optional<std::size_t> TableGrid::CursorPlace() const {
    const int place = GetGridCursorRow();
    const bool isShown = place >= 0 && place < static_cast<int>(rows_.Count());
    return isShown ? std::optional(static_cast<std::size_t>(place)) : std::nullopt;
}

std::vector<std::size_t> TableGrid::ChosenPlaces() const {
    std::vector<std::size_t> places;
    for (const wxGridBlockCoords& block : GetSelectedRowBlocks())
        for (int place = block.GetTopRow(); place <= block.GetBottomRow(); ++place)
            places.push_back(static_cast<std::size_t>(place));
    const auto cursor = CursorPlace();
    if (places.empty() && cursor) places.push_back(*cursor);
    return places;
}

TableGrid::Choice TableGrid::CurrentChoice() const {
    Choice choice;
    for (const std::size_t place : ChosenPlaces()) choice.ids.push_back(rows_.IdAt(place));
    choice.cursor = wanted_;
    if (const auto place = CursorPlace()) {
        choice.row = rows_.RowAt(*place);
        choice.inView = IsVisible(static_cast<int>(*place), GetGridCursorCol(), false);
    }
    return choice;
}

void TableGrid::ShowRows(const Choice& choice) {
    updating_ = true;
    EndPress();
    hovered_ = wxGridNoCellCoords;
    tickedFrom_ = 0;
    const int column = std::max(0, GetGridCursorCol());
    {
        const wxGridUpdateLocker lock(this);
        ClearSelection();
        SetRowCount(static_cast<int>(rows_.Count()));
        SetRowLabelSize(rows_.Model().HasTicks() ? drawing_.LabelWidth(rows_.Model().RowCount())
                                                 : 0);
        if (rows_.Count() > 0) {
            std::vector<std::size_t> cursor;
            if (choice.cursor) cursor = rows_.PlacesOf({*choice.cursor});
            SetGridCursor(
                static_cast<int>(cursor.empty() ? rows_.NearestTo(choice.row) : cursor.front()),
                column);
            ChoosePieces(rows_.PlacesOf(choice.ids));
        }
    }
    const auto place = CursorPlace();
    if (place && choice.inView) MakeCellVisible(static_cast<int>(*place), column);
    if (place && !rows_.IsFiltered()) wanted_ = rows_.IdAt(*place);
    GetGridWindow()->Refresh();
    updating_ = false;
}

/// Which rows come or go does not matter: all are drawn anew, and what is chosen is chosen again.
void TableGrid::SetRowCount(int count) {
    const int before = GetNumberRows();
    if (count > before) {
        wxGridTableMessage more(GetTable(), wxGRIDTABLE_NOTIFY_ROWS_APPENDED, count - before);
        ProcessTableMessage(more);
    } else if (count < before) {
        wxGridTableMessage less(GetTable(), wxGRIDTABLE_NOTIFY_ROWS_DELETED, count, before - count);
        ProcessTableMessage(less);
    }
}

/// A row that is chosen by the cursor alone needs no piece.
void TableGrid::ChoosePieces(const std::vector<std::size_t>& places) {
    if (places.empty() || (places.size() == 1 && places.front() == CursorPlace())) return;
    std::vector<std::pair<int, int>> pieces;
    for (const std::size_t row : places) {
        const int place = static_cast<int>(row);
        if (pieces.empty() || pieces.back().second + 1 != place)
            pieces.emplace_back(place, place);
        else
            pieces.back().second = place;
    }
    if (pieces.size() > kMostPieces) return;
    for (const auto& [first, last] : pieces) SelectBlock(first, 0, last, GetNumberCols() - 1, true);
}

void TableGrid::Choose(std::size_t place) {
    updating_ = true;
    ClearSelection();
    wanted_ = rows_.IdAt(place);
    GoToCell(static_cast<int>(place), std::max(0, GetGridCursorCol()));
    updating_ = false;
}

void TableGrid::TellChoice() {
    if (updating_ || telling_) return;
    telling_ = true;
    CallAfter([this] {
        telling_ = false;
        if (actions_.choose) actions_.choose();
    });
}

void TableGrid::RefreshPlace(std::size_t place) {
    const int row = static_cast<int>(place);
    if (row >= GetNumberRows()) return;
    RefreshBlock(row, 0, row, GetNumberCols() - 1);
    const int top = CalcScrolledPosition(wxPoint(0, GetRowTop(row))).y;
    GetGridRowLabelWindow()->RefreshRect(wxRect(0, top, GetRowLabelSize(), GetRowHeight(row)));
    GetGridCornerLabelWindow()->Refresh();
}

bool TableGrid::IsChosen(int place) const {
    return IsSelection() ? IsInSelection(place, 0) : place == GetGridCursorRow();
}

CellLook TableGrid::LookOf(std::size_t place, std::size_t column) const {
    const TableModel& model = rows_.Model();
    const std::size_t row = rows_.RowAt(place);
    const wxGridCellCoords cell(static_cast<int>(place), static_cast<int>(column));
    const bool isOdd = !model.CellCaution(row, column).empty();
    return {(isOdd ? ToWx(kCautionMark) : wxString()) + OneLine(ToWx(model.Text(row, column))),
            model.Columns()[column].kind, IsChosen(cell.GetRow()), isDown_ && cell == pressed_};
}

CellKind TableGrid::KindOf(int column) const {
    return rows_.Model().Columns()[static_cast<std::size_t>(column)].kind;
}

void TableGrid::DrawRowLabel(wxDC& canvas, int place) {
    const TableModel& model = rows_.Model();
    const std::size_t row = rows_.RowAt(static_cast<std::size_t>(place));
    drawing_.RowLabel(canvas, {0, GetRowTop(place), GetRowLabelSize(), GetRowHeight(place)},
                      row + 1, model.IsTicked(row), !model.RowCaution(row).empty());
}

void TableGrid::DrawColLabel(wxDC& canvas, int column) {
    const TableColumn& head = rows_.Model().Columns()[static_cast<std::size_t>(column)];
    drawing_.ColumnLabel(canvas, {GetColLeft(column), 0, GetColWidth(column), GetColLabelSize()},
                         ToWx(head.caption), head.kind);
}

void TableGrid::DrawCornerLabel(wxDC& canvas) {
    drawing_.Corner(canvas, {0, 0, GetRowLabelSize(), GetColLabelSize()}, rows_.ShownTicks(),
                    rows_.Count() > 0);
}

void TableGrid::DrawCellHighlight(wxDC& canvas, const wxGridCellAttr*) {
    if (!CursorPlace()) return;
    drawing_.Cursor(canvas, CellToRect(GetGridCursorCoords()), IsChosen(GetGridCursorRow()));
}

/// Of the rows in view alone: of all it would take seconds.
void TableGrid::WidenToContents(int column) {
    const auto index = static_cast<std::size_t>(column);
    const TableColumn& head = rows_.Model().Columns()[index];
    int width = drawing_.ColumnWidth(0, ToWx(head.caption));
    const int first = std::max(0, GetFirstFullyVisibleRow() - 1);
    for (int place = first; place < GetNumberRows() && IsVisible(place, column, false); ++place)
        width = std::max(
            width,
            drawing_.WidthOf(LookOf(static_cast<std::size_t>(place), index).text, head.kind));
    SetColSize(column, std::min(width, GetGridWindow()->GetClientSize().x));
    wxGridSizeEvent sized(GetId(), wxEVT_GRID_COL_SIZE, this, column);
    ProcessWindowEvent(sized);
}

}  // namespace sontaro
