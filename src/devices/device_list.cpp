#include "devices/device_list.h"

#include "widgets/clipboard.h"
#include "widgets/fonts.h"

namespace sontaro {

namespace {

struct ColumnHead {
    LocalText caption;
    int characters;  // width at first
};

// In the order of `DeviceColumn`.
constexpr ColumnHead kColumns[] = {
    {{"序号", "No."}, 8},      {{"IP地址", "IP"}, 16},
    {{"MAC地址", "MAC"}, 21},  {{"TCP端口号", "TCP Port"}, 12},
    {{"ID号", "ID"}, 18},      {{"版本信息", "Ver"}, 58},
    {{"备注", "Remarks"}, 20},
};

}  // namespace

DeviceList::DeviceList(wxWindow* parent, int id, ChoiceMode mode, ScanRun& run)
    : wxListView(parent, id, wxDefaultPosition, wxDefaultSize,
                 wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL | wxLC_HRULES),
      mode_(mode),
      run_(run) {
    if (mode_ == ChoiceMode::kMultiple) EnableCheckBoxes();
    AppendColumns();
    BindEvents();
}

void DeviceList::AppendColumns() {
    for (const ColumnHead& column : kColumns)
        AppendColumn(ToWx(column.caption), wxLIST_FORMAT_LEFT,
                     column.characters * LetterWidth(*this));
    ShowSortIndicator(static_cast<int>(DeviceColumn::kNumber), true);
}

void DeviceList::BindEvents() {
    Bind(wxEVT_LIST_ITEM_CHECKED, [this](wxListEvent& event) {
        run_.SetTicked(static_cast<std::size_t>(event.GetIndex()), true);
        RefreshItem(event.GetIndex());
    });
    Bind(wxEVT_LIST_ITEM_UNCHECKED, [this](wxListEvent& event) {
        run_.SetTicked(static_cast<std::size_t>(event.GetIndex()), false);
        RefreshItem(event.GetIndex());
    });
    Bind(wxEVT_LIST_ITEM_SELECTED, [this](wxListEvent& event) { ChooseOnly(event.GetIndex()); });
    Bind(wxEVT_LIST_COL_CLICK, [this](wxListEvent& event) { SortByColumn(event.GetColumn()); });
    Bind(wxEVT_CHAR, [this](wxKeyEvent& event) {
        if (!HandleKey(event.GetKeyCode())) event.Skip();
    });
}

/// Ctrl+C copies; in a list of one choice, Space and the first Down choose the row in focus.
bool DeviceList::HandleKey(int key) {
    const bool chooses = key == WXK_SPACE || (key == WXK_DOWN && GetFirstSelected() < 0);
    if (key == WXK_CONTROL_C) {
        CopyRow();
    } else if (chooses && mode_ == ChoiceMode::kSingle && CurrentRow() >= 0) {
        Select(CurrentRow());
    } else {
        return false;
    }
    return true;
}

void DeviceList::ShowDevices() {
    const auto& devices = run_.Devices();
    updating_ = true;
    SetItemCount(static_cast<long>(devices.size()));
    if (mode_ == ChoiceMode::kSingle) {
        for (std::size_t row = 0; row < devices.size(); ++row)
            if (IsSelected(static_cast<long>(row)) != devices[row].ticked)
                Select(static_cast<long>(row), devices[row].ticked);
    }
    if (CurrentRow() < 0 && !devices.empty()) Focus(0);  // where the keyboard starts from
    updating_ = false;
    Refresh();
}

wxString DeviceList::OnGetItemText(long row, long column) const {
    const auto index = static_cast<std::size_t>(row);
    if (index >= run_.Devices().size()) return "";
    return ToWx(DeviceCell(run_.Devices()[index], index, static_cast<DeviceColumn>(column)));
}

bool DeviceList::OnGetItemIsChecked(long row) const {
    const auto index = static_cast<std::size_t>(row);
    return index < run_.Devices().size() && run_.Devices()[index].ticked;
}

void DeviceList::ChooseOnly(long row) {
    if (updating_ || mode_ == ChoiceMode::kMultiple) return;
    run_.ChooseOnly(static_cast<std::size_t>(row));
}

void DeviceList::SortByColumn(int column) {
    if (column < 0) return;
    const bool ascending = GetUpdatedAscendingSortIndicator(column);
    ShowSortIndicator(column, ascending);
    run_.SortBy(static_cast<DeviceColumn>(column), ascending);
}

void DeviceList::CopyRow() {
    const long row = CurrentRow();
    if (row < 0) return;
    wxString line;
    for (int column = 0; column < GetColumnCount(); ++column)
        line += (column > 0 ? "\t" : "") + OnGetItemText(row, column);
    CopyToClipboard(line);
}

}  // namespace sontaro
