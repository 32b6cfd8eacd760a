#include "widgets/table.h"

#include <wx/sizer.h>
#include <wx/textbuf.h>

#include "base/filter_text.h"
#include "widgets/caption_button.h"
#include "widgets/clipboard.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/window_memory.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kLeastCharacters = 30;
constexpr int kLeastRows = 4;

std::vector<int> WidthsOf(const wxGrid& grid) {
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(grid.GetNumberCols()));
    for (int column = 0; column < grid.GetNumberCols(); ++column)
        widths.push_back(grid.GetColSize(column));
    return widths;
}

/// A row for other programs: its texts with tabs between them.
wxString LineOf(const TableModel& model, std::size_t row) {
    wxString line;
    const std::span<const TableColumn> columns = model.Columns();
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (columns[column].kind == CellKind::kButton) continue;
        if (column > 0) line += '\t';
        line += OneLine(ToWx(model.Text(row, column)));
    }
    return line;
}

}  // namespace

Table::Table(wxWindow* parent, int id, TableModel& model, TableActions actions, Prompts& prompts)
    : wxPanel(parent), actions_(std::move(actions)), prompts_(prompts), rows_(model) {
    grid_ = new TableGrid(this, id, rows_, actions_, [this] { Copy(); });
    grid_->SetMinSize(wxSize(kLeastCharacters * LetterWidth(*this),
                             kLeastRows * grid_->GetDefaultRowSize() + grid_->GetColLabelSize()));
    auto* area = new wxBoxSizer(wxVERTICAL);
    area->Add(grid_, wxSizerFlags(1).Expand());
    SetSizer(area);
}

void Table::RowsChanged() {
    const TableGrid::Choice choice = grid_->CurrentChoice();
    rows_.Read();
    grid_->ShowRows(choice);
    ShowMessage();
}

void Table::RowChanged(std::size_t row) {
    if (const auto place = rows_.PlaceOf(row)) grid_->RefreshPlace(*place);
}

std::size_t Table::Filter(const wxString& text) {
    const TableGrid::Choice choice = grid_->CurrentChoice();
    if (rows_.Filter(FilterForm(FromWx(text)))) {
        grid_->ShowRows(choice);
        ShowMessage();
    }
    return rows_.Count();
}

void Table::SetEmptyText(const std::string& text) {
    emptyText_ = text;
    ShowMessage();
}

void Table::ShowMessage() {
    const bool hasRows = rows_.Model().RowCount() > 0;
    grid_->SetMessage(hasRows ? ToWx(kNothingFound) : ToWx(emptyText_));
}

void Table::Choose(std::size_t row) {
    if (!rows_.PlaceOf(row)) {
        const TableGrid::Choice choice = grid_->CurrentChoice();
        rows_.Show(row);
        grid_->ShowRows(choice);
    }
    grid_->Choose(*rows_.PlaceOf(row));
}

std::optional<std::size_t> Table::ChosenRow() const {
    const auto place = grid_->CursorPlace();
    return place ? std::optional(rows_.RowAt(*place)) : std::nullopt;
}

std::vector<std::size_t> Table::ChosenRows() const {
    std::vector<std::size_t> chosen = grid_->ChosenPlaces();
    for (std::size_t& row : chosen) row = rows_.RowAt(row);
    return chosen;
}

void Table::Copy() {
    wxString text;
    const std::vector<std::size_t> chosen = ChosenRows();
    if (chosen.empty()) return;
    for (const std::size_t row : chosen)
        text += (text.empty() ? "" : "\n") + LineOf(rows_.Model(), row);
    if (!CopyToClipboard(wxTextBuffer::Translate(text))) prompts_.Warn(Localized(kNotCopied));
}

void Table::KeepWidths(const std::string& name, JsonFile& preferences) {
    const std::vector<int> widths =
        RememberedWidths(*this, rows_.Model().Columns().size(), name, preferences);
    for (std::size_t column = 0; column < widths.size(); ++column)
        grid_->SetColSize(static_cast<int>(column), widths[column]);
    grid_->Bind(wxEVT_GRID_COL_SIZE, [this, name, &preferences](wxGridSizeEvent& event) {
        event.Skip();
        RememberWidths(*this, WidthsOf(*grid_), name, preferences);
    });
}

}  // namespace sontaro
