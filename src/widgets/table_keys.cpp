// What the keyboard and the mouse do in a table.
#include "widgets/caption_button.h"
#include "widgets/table_grid.h"
#include "widgets/wx_text.h"

namespace sontaro {

void TableGrid::BindMouse() {
    wxWindow* cells = GetGridWindow();
    cells->Bind(wxEVT_LEFT_DOWN, &TableGrid::OnDown, this);
    cells->Bind(wxEVT_LEFT_DCLICK, &TableGrid::OnDown, this);
    cells->Bind(wxEVT_LEFT_UP, &TableGrid::OnUp, this);
    cells->Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent& event) {
        event.Skip();
        EndPress();
    });
    cells->Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
        if (pressed_ == wxGridNoCellCoords) event.Skip();
        OnMove(event.GetPosition());
    });
    GetGridRowLabelWindow()->Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
        event.Skip();
        OnMove({-1, event.GetY()});
    });
    SetCanFocus(false);  // the cells have the keyboard; not every system passes it on to them
    for (const auto& type : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
        cells->Bind(type, [cells](wxFocusEvent& event) {
            event.Skip();
            cells->Refresh();
        });
}

void TableGrid::OnKey(wxKeyEvent& event) {
    // Without rows the toolkit would move to one all the same.
    const bool moves = event.IsKeyInCategory(WXK_CATEGORY_NAVIGATION);
    if (moves && rows_.Count() == 0) return;
    if (!HandleKey(event)) event.Skip();
}

bool TableGrid::HandleKey(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const bool withShift = event.ShiftDown();
    const bool toAnEnd = event.IsKeyInCategory(WXK_CATEGORY_JUMP);
    if (event.GetModifiers() == wxMOD_CONTROL && !toAnEnd) return HandleShortcut(key);
    if (event.HasModifiers() && !toAnEnd) return false;
    switch (key) {
        case WXK_TAB:
            GetParent()->Navigate(withShift ? wxNavigationKeyEvent::IsBackward
                                            : wxNavigationKeyEvent::IsForward);
            break;
        case WXK_HOME:
        case WXK_NUMPAD_HOME: MoveCursorUpBlock(withShift); break;
        case WXK_END:
        case WXK_NUMPAD_END: MoveCursorDownBlock(withShift); break;
        case WXK_SPACE:
            if (IsButton(GetGridCursorCoords()))
                Press(GetGridCursorCoords());
            else
                TickChosen();
            break;
        case WXK_RETURN:
        case WXK_NUMPAD_ENTER: Activate(); break;
        case WXK_INSERT:
        case WXK_NUMPAD_INSERT:
            if (actions_.insert) actions_.insert();
            break;
        case WXK_DELETE:
        case WXK_NUMPAD_DELETE:
            if (actions_.remove) actions_.remove();
            break;
        default: return false;
    }
    return true;
}

/// With Ctrl.
bool TableGrid::HandleShortcut(int key) {
    switch (key) {
        case 'A':
            if (rows_.Count() > 0) SelectAll();
            return true;
        case 'C':
        case WXK_INSERT: copy_(); return true;
        case WXK_SPACE: return true;  // the toolkit would choose a column
        default: return false;
    }
}

void TableGrid::Activate() {
    const auto place = CursorPlace();
    if (!place) return;
    if (IsButton(GetGridCursorCoords()))
        Press(GetGridCursorCoords());
    else if (actions_.edit)
        actions_.edit(rows_.RowAt(*place));
}

bool TableGrid::IsButton(const wxGridCellCoords& cell) const {
    return cell.GetRow() >= 0 && cell.GetCol() >= 0 &&
           cell.GetRow() < static_cast<int>(rows_.Count()) &&
           KindOf(cell.GetCol()) == CellKind::kButton &&
           !LookOf(static_cast<std::size_t>(cell.GetRow()), static_cast<std::size_t>(cell.GetCol()))
                .text.empty();
}

void TableGrid::Press(const wxGridCellCoords& cell) {
    if (actions_.press)
        actions_.press(rows_.RowAt(static_cast<std::size_t>(cell.GetRow())),
                       static_cast<std::size_t>(cell.GetCol()));
}

wxGridCellCoords TableGrid::CellAt(const wxPoint& position) const {
    const wxPoint place = CalcUnscrolledPosition(position);
    return {YToRow(place.y), position.x < 0 ? -1 : XToCol(place.x)};
}

/// The first of several rows that are put together with Ctrl is the one with the cursor.
void TableGrid::OnDown(wxMouseEvent& event) {
    const wxGridCellCoords cell = CellAt(event.GetPosition());
    const bool isPlain = !event.HasModifiers() && !event.ShiftDown();
    if (isPlain && IsButton(cell)) {
        GetGridWindow()->SetFocus();
        ClearSelection();
        SetGridCursor(cell);
        pressed_ = cell;
        isDown_ = true;
        GetGridWindow()->CaptureMouse();
        RefreshPlace(static_cast<std::size_t>(cell.GetRow()));
    } else if (isPlain && event.LeftDClick()) {
        if (cell.GetRow() >= 0 && cell.GetCol() >= 0) Activate();
    } else {
        const auto cursor = CursorPlace();
        if (event.ControlDown() && cursor && !IsSelection()) SelectRow(static_cast<int>(*cursor));
        event.Skip();
    }
}

void TableGrid::OnUp(wxMouseEvent& event) {
    const wxGridCellCoords cell = pressed_;
    if (cell == wxGridNoCellCoords) return event.Skip();
    EndPress();
    if (CellAt(event.GetPosition()) == cell && IsButton(cell)) Press(cell);
}

void TableGrid::EndPress() {
    pressed_ = wxGridNoCellCoords;
    isDown_ = false;
    if (GetGridWindow()->HasCapture()) GetGridWindow()->ReleaseMouse();
    GetGridWindow()->Refresh();
}

/// `position` is in the cells; with a negative x it is beside them, in the label.
void TableGrid::OnMove(const wxPoint& position) {
    const wxGridCellCoords cell = CellAt(position);
    if (pressed_ != wxGridNoCellCoords && isDown_ != (cell == pressed_)) {
        isDown_ = !isDown_;
        RefreshBlock(pressed_, pressed_);
    }
    if (cell == hovered_) return;
    hovered_ = cell;
    wxWindow* window = cell.GetCol() < 0 ? GetGridRowLabelWindow() : GetGridWindow();
    const wxString tip = TooltipOf(cell);
    if (tip.empty())
        window->UnsetToolTip();
    else
        window->SetToolTip(TooltipText(tip));
}

/// A caution, and what a cell has no room for.
wxString TableGrid::TooltipOf(const wxGridCellCoords& cell) const {
    if (cell.GetRow() < 0) return {};
    const TableModel& model = rows_.Model();
    const auto place = static_cast<std::size_t>(cell.GetRow());
    const std::size_t row = rows_.RowAt(place);
    if (cell.GetCol() < 0) return ToWx(model.RowCaution(row));
    const auto column = static_cast<std::size_t>(cell.GetCol());
    const wxString text = LookOf(place, column).text;
    const wxString caution = ToWx(model.CellCaution(row, column));
    const bool isCut = drawing_.WidthOf(text, KindOf(cell.GetCol())) > GetColSize(cell.GetCol());
    if (!isCut) return caution;
    return caution.empty() ? text : text + '\n' + caution;
}

/// A second click in a short time is a click as well.
void TableGrid::OnLabel(wxGridEvent& event) {
    GetGridWindow()->SetFocus();
    if (event.GetRow() >= 0)
        TickTo(static_cast<std::size_t>(event.GetRow()), event.ShiftDown());
    else if (event.GetCol() < 0)
        TickAll();
}

/// As the row with the cursor will be.
void TableGrid::TickChosen() {
    const auto cursor = CursorPlace();
    if (!cursor || !rows_.Model().HasTicks()) return;
    const bool ticked = !rows_.Model().IsTicked(rows_.RowAt(*cursor));
    for (const std::size_t place : ChosenPlaces())
        rows_.Model().SetTicked(rows_.RowAt(place), ticked);
    tickedFrom_ = *cursor;
    TicksChanged();
}

/// A range becomes as the row is where it starts.
void TableGrid::TickTo(std::size_t place, bool range) {
    TableModel& model = rows_.Model();
    const std::size_t from = range ? std::min(tickedFrom_, rows_.Count() - 1) : place;
    const bool ticked = model.IsTicked(rows_.RowAt(from)) == range;
    for (std::size_t other = std::min(from, place); other <= std::max(from, place); ++other)
        model.SetTicked(rows_.RowAt(other), ticked);
    tickedFrom_ = place;
    TicksChanged();
}

void TableGrid::TickAll() {
    if (rows_.Count() == 0) return;
    rows_.TickShown(rows_.ShownTicks() != Ticks::kAll);
    TicksChanged();
}

void TableGrid::TicksChanged() {
    GetGridRowLabelWindow()->Refresh();
    GetGridCornerLabelWindow()->Refresh();
    GetGridWindow()->Refresh();  // a text may say it, too
    if (actions_.tick) actions_.tick();
}

}  // namespace sontaro
