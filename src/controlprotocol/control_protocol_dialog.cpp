#include "controlprotocol/control_protocol_dialog.h"

#include <fmt/printf.h>
#include <wx/sizer.h>

#include <algorithm>

#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/window_memory.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kName = "control-protocol";  // in the preferences
constexpr int kKeepAliveTimer = 7;
constexpr int kKeepAliveMilliseconds = 2000;
constexpr int kLeavingMilliseconds = 1000;
constexpr std::size_t kMostDigitsShown = 48;

constexpr LocalText kTabs[] = {
    {"点歌机", "KTV"},   {"串口与命令", "Serial"},   {"视频与音频类别", "Types"},
    {"布局", "Layouts"}, {"投影控制", "Projectors"},
};
static_assert(std::size(kTabs) == kControlProtocolGrids);

constexpr LocalText kFilter = {"筛选", "Filter"};
constexpr LocalText kFilterHint = {"名称或数值中包含的文字", "Text in a name or a value"};

struct FileTexts {
    LocalText caption, filter, name;
};
constexpr FileTexts kOpenTexts = {{"打开控制协议文件", "Open ControlProtocol file"},
                                  {"控制协议文件(*.JSON)", "ControlProtocol Flie(*.JSON)"},
                                  InBoth("")};
constexpr FileTexts kSaveTexts = {{"保存控制协议文件", "Save ControlProtocol file"},
                                  kOpenTexts.filter,
                                  {"控制协议", "ControlProtocol"}};
constexpr const char* kExtension = "JSON";

/// In the order of `ControlProtocolRun::State`.
constexpr LocalText kStates[] = {
    {"正在读取播放器的数据…", "Reading the player's data…"},
    {"正在读取播放器的数据…", "Reading the player's data…"},
    {"正在等待播放器的名称列表…", "Waiting for the player's list of names…"},
    {"正在读取控制协议…", "Reading the control protocol…"},
    {"无法连接播放器。请关闭本窗口，检查播放器后重试。",
     "The player cannot be reached. Close this window, check the player and try again."},
    {"播放器返回错误 %d，所示内容未得到播放器确认。",
     "The player has answered with error %d. It does not hold what is shown."},
    {"播放器没有发来可用的控制协议，所示为默认值。",
     "The player has sent no control protocol that can be used. These are the defaults."},
    {"与播放器中的设置一致。", "As the player has sent them."},
    {"有修改尚未发送到播放器。", "There are changes that have not been sent to the player."},
    {"未能发送：无法连接播放器。", "Nothing has been sent: the player cannot be reached."},
    {"正在等待播放器确认…", "Waiting for the player to confirm…"},
    {"已发送，但连接已断开，播放器没有确认。",
     "Sent, but the player has not confirmed: the connection has ended."},
    {"播放器已确认。", "The player has confirmed."},
    {"播放器已确认，正在重启。请关闭本窗口。",
     "The player has confirmed, and restarts. Close this window."},
};

/// In the order of `SerialLineState::Kind`.
constexpr LocalText kLines[] = {
    InBoth(""),
    {"已连接。串口收到的命令会写入所选视频类别的“切换命令”。",
     "Connected. Commands from the serial line go into Send Cmd of the chosen video type."},
    {"已从串口学习 %s，写入视频类别%d。", "Learned %s from the serial line, for Video Type%d."},
    {"串口收到 %s。要学习命令，请先选中一个视频类别的行。",
     "Received %s from the serial line. To learn it, choose a row of a video type."},
    {"串口收到 %s，正在发送设置，未写入。",
     "Received %s from the serial line. Not learned: the settings are being sent."},
    {"未连接", "Not connected"},
};

}  // namespace

CControlProtocol::CControlProtocol(wxWindow* parent, const UiServices& services,
                                   const DeviceRecord& player, ProtocolVariant variant)
    : FeatureDialog(parent, Window::kControlProtocol, services),
      player_{player.ip, player.tcpPort, 0},
      run_(*this, services.Messages(), player.ip, ControlProtocolPath(services.programFolder),
           variant),
      keepAlive_(this, kKeepAliveTimer),
      leaving_(this) {
    LayOut(player);
    BindEvents();
    ShowModel();
    StateChanged();
    CentreOnParent();
    RestoreWindow(*this, nullptr, kName, services.preferences);
    CallAfter([this] {
        FocusGrid();
        run_.Opened();
    });
}

CControlProtocol::~CControlProtocol() {
    RememberWindow(*this, nullptr, kName, Services().preferences);
}

void CControlProtocol::LayOut(const DeviceRecord& player) {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    auto* head = new wxBoxSizer(wxHORIZONTAL);
    head->Add(MakeHeading(player), wxSizerFlags().CentreVertical());
    head->AddStretchSpacer();
    head->Add(MakeFilterRow(), wxSizerFlags().CentreVertical());
    column->Add(head, line);
    column->Add(MakeTabs(), wxSizerFlags(line).Proportion(1));
    state_ = MakeStateLine();
    state_->SetId(kProtocolState);
    column->Add(state_, line);
    line_ = MakeStateLine();
    line_->SetId(kProtocolLine);
    column->Add(line_, line);
    column->Add(MakeFileButtonRow(kOpenProtocol, kSaveProtocol),
                wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
}

wxSizer* CControlProtocol::MakeFilterRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(this, wxID_ANY, ButtonLabel(kFilter, 'F')),
             wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(6)));
    filter_ = new wxSearchCtrl(this, kProtocolFilter);
    filter_->SetDescriptiveText(ToWx(kFilterHint));
    filter_->ShowCancelButton(true);
    filter_->SetMinSize(wxSize(30 * LetterWidth(*this), wxDefaultCoord));
    row->Add(filter_, wxSizerFlags().CentreVertical());
    return row;
}

wxBookCtrlBase* CControlProtocol::MakeTabs() {
    tabs_ = new wxNotebook(this, kProtocolTabs);
    for (std::size_t i = 0; i < grids_.size(); ++i) {
        auto* page = new wxPanel(tabs_);
        auto* grid = new SettingsGrid(page, kProtocolGrid + 1 + static_cast<int>(i), true,
                                      Services().Messages(),
                                      [this](const SettingsEdit& edit) { return run_.Edit(edit); });
        grid->SetMinSize(wxSize(76 * LetterWidth(*this), 26 * GetCharHeight()));
        auto* column = new wxBoxSizer(wxVERTICAL);
        column->Add(grid, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(8)));
        page->SetSizer(column);
        tabs_->AddPage(page, ToWx(kTabs[i]));
        grids_[i] = grid;
    }
    return tabs_;
}

void CControlProtocol::BindEvents() {
    const auto onPress = [this](int id, auto action) {
        Bind(
            wxEVT_BUTTON,
            [this, action](wxCommandEvent&) {
                if (CommitAll()) action();
            },
            id);
    };
    onPress(wxID_OK, [this] { run_.Upload(); });
    onPress(kOpenProtocol, [this] { AskForFile(FileQuestion::Purpose::kOpen); });
    onPress(kSaveProtocol, [this] { AskForFile(FileQuestion::Purpose::kSave); });
    tabs_->Bind(wxEVT_NOTEBOOK_PAGE_CHANGING, [this](wxBookCtrlEvent& event) {
        const int left = event.GetOldSelection();
        if (left >= 0 && !grids_[static_cast<std::size_t>(left)]->Commit()) event.Veto();
    });
    Bind(wxEVT_CHAR_HOOK, &CControlProtocol::OnKey, this);
    filter_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { Filter(); });
    filter_->Bind(wxEVT_SEARCH_CANCEL, [this](wxCommandEvent&) { filter_->Clear(); });
    filter_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_ESCAPE)
            filter_->Clear();
        else
            event.Skip();
    });
    Bind(
        wxEVT_TIMER, [this](wxTimerEvent&) { run_.KeepAlive(); }, kKeepAliveTimer);
    Bind(
        wxEVT_TIMER, [this](wxTimerEvent&) { EndModal(wxID_CANCEL); }, leaving_.GetId());
}

/// Ctrl with Tab turns the pages, from within a cell as well.
void CControlProtocol::OnKey(wxKeyEvent& event) {
    if (event.GetKeyCode() != WXK_TAB || !event.ControlDown()) {
        event.Skip();
        return;
    }
    tabs_->AdvanceSelection(!event.ShiftDown());
    FocusGrid();
}

void CControlProtocol::FocusGrid() {
    wxWindow& rows = grids_[static_cast<std::size_t>(tabs_->GetSelection())]->Properties();
    if (rows.IsShown())
        rows.SetFocus();
    else
        tabs_->SetFocus();  // a filter has found nothing
}

bool CControlProtocol::MayClose() { return !leaving_.IsRunning() && FeatureDialog::MayClose(); }

/// What has just been sent gets its time to leave.
void CControlProtocol::Leave() {
    run_.Closing();
    Disable();
    leaving_.StartOnce(kLeavingMilliseconds);
}

bool CControlProtocol::Send(const DevicePacket& packet) { return SendPacket(packet, {player_}); }

void CControlProtocol::ShowModel() {
    auto rows = run_.Rows();
    for (std::size_t i = 0; i < grids_.size(); ++i) grids_[i]->Fill(std::move(rows[i]));
    Filter();
}

void CControlProtocol::ShowChange(const SettingsEdit& change) {
    for (SettingsGrid* grid : grids_)
        if (grid->Change(change.key, change.text)) return;
}

void CControlProtocol::MarkSaved() {
    for (SettingsGrid* grid : grids_) grid->ForgetChanges();
}

std::optional<int> CControlProtocol::ChosenCategory() const {
    const SettingsGroup* group = grids_[kCategoryGrid]->ChosenGroup();
    return group ? VideoCategoryIn(*group) : std::nullopt;
}

void CControlProtocol::KeepAliveEvery2Seconds(bool wanted) {
    if (!wanted)
        keepAlive_.Stop();
    else if (!keepAlive_.IsRunning())
        keepAlive_.Start(kKeepAliveMilliseconds);
}

void CControlProtocol::StateChanged() {
    state_->SetLabelText(StateText());
    line_->SetLabelText(LineText());
    FindWindow(wxID_OK)->Enable(run_.MayUpload());
    FindWindow(kOpenProtocol)->Enable(run_.MayUseFiles());
    FindWindow(kSaveProtocol)->Enable(run_.MayUseFiles());
}

bool CControlProtocol::CommitAll() {
    return std::ranges::all_of(grids_, [](SettingsGrid* grid) { return grid->Commit(); });
}

/// Every tab says how many of its rows contain the text.
void CControlProtocol::Filter() {
    const wxString text = filter_->GetValue();
    const bool isOn = !text.Strip(wxString::both).empty();
    for (std::size_t i = 0; i < grids_.size(); ++i) {
        const int hits = grids_[i]->Filter(text);
        wxString label = ToWx(kTabs[i]);
        if (isOn) label += wxString::Format(" (%d)", hits);
        if (tabs_->GetPageText(i) == label) continue;
        tabs_->SetPageText(i, label);
        tabs_->Refresh();  // where there was a longer one, it would stay
    }
}

void CControlProtocol::AskForFile(FileQuestion::Purpose purpose) {
    const bool saves = purpose == FileQuestion::Purpose::kSave;
    const FileTexts& texts = saves ? kSaveTexts : kOpenTexts;
    const auto path = Services().Messages().ChooseFile({purpose, Localized(texts.caption),
                                                        Localized(texts.filter) + kJsonPatterns,
                                                        Localized(texts.name), kExtension});
    if (!path) return;
    if (saves)
        run_.SaveFile(*path);
    else
        run_.OpenFile(*path);
}

wxString CControlProtocol::StateText() const {
    const LocalText& text = kStates[static_cast<std::size_t>(run_.CurrentState())];
    return ToWx(fmt::sprintf(Localized(text), run_.LastResult()));
}

wxString CControlProtocol::LineText() const {
    const SerialLineState& line = run_.SerialLine();
    std::string command = line.command;
    if (command.size() > kMostDigitsShown) command = command.substr(0, kMostDigitsShown) + "…";
    const LocalText& text = kLines[static_cast<std::size_t>(line.kind)];
    return ToWx(fmt::sprintf(Localized(text), command, line.category + 1));
}

}  // namespace sontaro
