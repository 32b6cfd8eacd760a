#include "devices/device_list.h"

#include <wx/renderer.h>
#include <wx/settings.h>

#include <algorithm>

#include "devices/remarks_dialog.h"
#include "widgets/clipboard.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

struct ColumnHead {
    LocalText caption;
    int characters;  // width at first
};

// In the order of `DeviceColumn`.
constexpr ColumnHead kColumns[] = {
    {{"序号", "No."}, 6},      {{"IP地址", "IP"}, 15},
    {{"MAC地址", "MAC"}, 20},  {{"TCP端口号", "TCP Port"}, 10},
    {{"ID号", "ID"}, 17},      {{"版本信息", "Ver"}, 58},
    {{"备注", "Remarks"}, 20},
};
constexpr int kVersionColumn = static_cast<int>(DeviceColumn::kVersion);
constexpr int kRemarksColumn = static_cast<int>(DeviceColumn::kRemarks);
constexpr int kNarrowestVersion = 16;  // in characters: the player's own version at least

constexpr LocalText kIdCopied = {"ID号已经拷贝到剪切板",
                                 "ID number has been copied to the Clipboard"};
constexpr LocalText kRemarksNotSaved = {"备注没有保存！", "The remarks could not be saved!"};

}  // namespace

DeviceList::DeviceList(wxWindow* parent, int id, const DeviceListStyle& style, ScanRun& run,
                       DeviceRemarks& remarks, Prompts& prompts)
    : wxListView(parent, id, wxDefaultPosition, wxDefaultSize,
                 wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL | wxLC_HRULES),
      style_(style),
      run_(run),
      remarks_(remarks),
      prompts_(prompts) {
    if (IsMultiple()) EnableCheckBoxes();
    AppendColumns();
    BindEvents();
}

void DeviceList::AppendColumns() {
    for (const ColumnHead& column : kColumns)
        AppendColumn(ToWx(column.caption), wxLIST_FORMAT_LEFT,
                     column.characters * LetterWidth(*this));
    ShowSortIndicator(static_cast<int>(DeviceColumn::kNumber), true);
}

void DeviceList::ShowTicks(bool shown) {
    if (IsMultiple() && HasCheckBoxes() != shown) EnableCheckBoxes(shown);
}

void DeviceList::FitColumns() {
    if (style_.fitsContents) return FitContents();
    int others = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
    for (int column = 0; column < GetColumnCount(); ++column)
        if (column != kVersionColumn) others += GetColumnWidth(column);
    const int letter = LetterWidth(*this);
    const int width = std::clamp(GetClientSize().x - others, kNarrowestVersion * letter,
                                 kColumns[kVersionColumn].characters * letter);
    if (width != GetColumnWidth(kVersionColumn)) SetColumnWidth(kVersionColumn, width);
}

/// Players answer one by one, hundreds of them at once: they are measured together.
void DeviceList::FitSoon() {
    constexpr int kMilliseconds = 100;
    if (!fitting_.IsRunning()) fitting_.StartOnce(kMilliseconds);
}

/// The remarks come last. The toolkit does not measure what a list tells only when it is asked.
void DeviceList::FitContents() {
    int others = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
    for (int column = 0; column < kRemarksColumn; ++column) {
        SetColumnWidth(column, FittingWidth(column));
        others += GetColumnWidth(column);
    }
    const int least = kColumns[kRemarksColumn].characters * LetterWidth(*this);
    SetColumnWidth(kRemarksColumn, std::max(GetClientSize().x - others, least));
}

/// The tick boxes have their room, shown or hidden. Of a long list the first rows count.
int DeviceList::FittingWidth(int column) {
    constexpr int kMostMeasured = 100;
    constexpr int kMargins = 2;  // in letters, as those below
    constexpr int kSortIndicator = 3;
    const int letter = LetterWidth(*this);
    int width = GetTextExtent(ToWx(kColumns[column].caption)).x + kSortIndicator * letter;
    for (int row = 0; row < std::min(GetItemCount(), kMostMeasured); ++row)
        width = std::max(width, GetTextExtent(OnGetItemText(row, column)).x);
    if (column == 0 && IsMultiple())
        width += wxRendererNative::Get().GetCheckBoxSize(this).x + letter;
    return width + kMargins * letter;
}

void DeviceList::BindEvents() {
    fitting_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { FitContents(); });
    Bind(wxEVT_LIST_ITEM_CHECKED, [this](wxListEvent& event) {
        run_.SetTicked(static_cast<std::size_t>(event.GetIndex()), true);
        RefreshItem(event.GetIndex());
    });
    Bind(wxEVT_LIST_ITEM_UNCHECKED, [this](wxListEvent& event) {
        run_.SetTicked(static_cast<std::size_t>(event.GetIndex()), false);
        RefreshItem(event.GetIndex());
    });
    Bind(wxEVT_LIST_ITEM_SELECTED, [this](wxListEvent&) { ChooseHighlighted(); });
    Bind(wxEVT_LIST_ITEM_DESELECTED, [this](wxListEvent&) { ChooseHighlighted(); });
    // Not every system reports what a click below the rows does to the highlight.
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        event.Skip();
        CallAfter([this] { ChooseHighlighted(); });
    });
    Bind(wxEVT_LIST_COL_CLICK, [this](wxListEvent& event) { SortByColumn(event.GetColumn()); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        FitColumns();
    });
    Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent& event) { EditRemarks(event.GetIndex()); });
    Bind(wxEVT_LIST_ITEM_RIGHT_CLICK, [this](wxListEvent& event) { CopyId(event.GetIndex()); });
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (!HandleKey(event)) event.Skip();
    });
}

/// Ctrl+C copies; Space, and the first Down in a list of one choice, act on the row in focus. The
/// control itself would take Space and Enter for a double click.
bool DeviceList::HandleKey(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const bool isFirstDown = key == WXK_DOWN && !IsMultiple() && GetFirstSelected() < 0;
    if (key == 'C' && event.GetModifiers() == wxMOD_CONTROL) {
        CopyRow();
    } else if ((key == WXK_SPACE || isFirstDown) && PlayerAt(GetFocusedItem())) {
        ActOnFocusedRow();
    } else {
        return key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
    }
    return true;
}

void DeviceList::ActOnFocusedRow() {
    const long row = GetFocusedItem();
    if (!IsMultiple()) return Select(row);
    if (!HasCheckBoxes()) return;
    run_.SetTicked(static_cast<std::size_t>(row), !PlayerAt(row)->ticked);
    RefreshItem(row);
}

void DeviceList::ShowDevices() {
    const auto& devices = run_.Devices();
    updating_ = true;
    const long before = GetItemCount();
    SetItemCount(static_cast<long>(devices.size()));
    for (long row = 0; !IsMultiple() && row < GetItemCount(); ++row) {
        const bool chosen = PlayerAt(row)->ticked;
        if (IsSelected(row) == chosen) continue;
        Select(row, chosen);
        if (chosen) EnsureVisible(row);
    }
    if (GetFocusedItem() < 0 && !devices.empty()) Focus(0);  // where the keyboard starts from
    updating_ = false;
    if (style_.fitsContents && GetItemCount() > before) FitSoon();
    Refresh();
}

const DeviceRecord* DeviceList::PlayerAt(long row) const {
    const auto& devices = run_.Devices();
    const auto index = static_cast<std::size_t>(row);
    return row >= 0 && index < devices.size() ? &devices[index] : nullptr;
}

wxString DeviceList::OnGetItemText(long row, long column) const {
    const DeviceRecord* player = PlayerAt(row);
    if (!player) return "";
    return ToWx(DeviceCell(*player, static_cast<std::size_t>(row),
                           static_cast<DeviceColumn>(column), style_.numberWidths));
}

bool DeviceList::OnGetItemIsChecked(long row) const {
    const DeviceRecord* player = PlayerAt(row);
    return player != nullptr && player->ticked;
}

void DeviceList::ChooseHighlighted() {
    if (updating_ || IsMultiple()) return;
    const long row = GetFirstSelected();
    if (PlayerAt(row)) {
        run_.ChooseOnly(static_cast<std::size_t>(row));
    } else if (std::ranges::any_of(run_.Devices(), &DeviceRecord::ticked)) {
        run_.ChooseNone();
    }
}

void DeviceList::SortByColumn(int column) {
    if (column < 0) return;
    const bool ascending = GetUpdatedAscendingSortIndicator(column);
    ShowSortIndicator(column, ascending);
    run_.SortBy(static_cast<DeviceColumn>(column), ascending);
}

void DeviceList::EditHighlightedRemarks() {
    const long row = GetFirstSelected();
    if (PlayerAt(row))
        EditRemarks(row);
    else
        prompts_.Warn(Localized(*RefusalOfChoice(ChoiceMode::kSingle, 0)));
}

void DeviceList::EditRemarks(long row) {
    const DeviceRecord* player = PlayerAt(row);
    if (!player) return;
    DeviceRecord device = *player;
    remarks_.Reload();
    remarks_.ApplyTo(device);  // another program may have changed them meanwhile
    const auto keep = [&](const std::string& remarks) {
        const Status kept = remarks_.SetRemarks(device.mac, remarks);
        static_cast<void>(kept);  // there is no one left to tell
    };
    while (const auto remarks = AskForRemarks(wxGetTopLevelParent(this), device, keep)) {
        if (remarks_.SetRemarks(device.mac, *remarks)) {
            run_.RemarksChanged();
            return;
        }
        prompts_.Warn(Localized(kRemarksNotSaved));
        device.remarks = *remarks;  // what was typed is not lost with the attempt
    }
}

void DeviceList::CopyId(long row) {
    const DeviceRecord* player = PlayerAt(row);
    if (player != nullptr && Copy(ToWx(player->id))) prompts_.Inform(Localized(kIdCopied));
}

/// False when the clipboard is not to be had: the user has been told.
bool DeviceList::Copy(const wxString& text) {
    const bool copied = CopyToClipboard(text);
    if (!copied) prompts_.Warn(Localized(kNotCopied));
    return copied;
}

void DeviceList::CopyRow() {
    const long row = GetFocusedItem();
    const DeviceRecord* player = PlayerAt(row);
    if (!player) return;
    wxString line;
    for (int column = 0; column < GetColumnCount(); ++column)
        line += (column > 0 ? "\t" : "") + ToWx(DeviceCell(*player, static_cast<std::size_t>(row),
                                                           static_cast<DeviceColumn>(column)));
    static_cast<void>(Copy(line));
}

}  // namespace sontaro
