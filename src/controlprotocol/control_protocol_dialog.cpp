#include "controlprotocol/control_protocol_dialog.h"

#include <fmt/printf.h>
#include <wx/sizer.h>

#include "widgets/exchange_texts.h"
#include "widgets/front_dialog.h"
#include "widgets/json_file_texts.h"
#include "widgets/settings_state_text.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kName = "control-protocol";  // in the preferences
constexpr std::size_t kMostDigitsShown = 48;

constexpr LocalText kTabs[] = {
    {"点歌机", "KTV"},   {"串口与命令", "Serial"},   {"视频与音频类别", "Types"},
    {"布局", "Layouts"}, {"投影控制", "Projectors"},
};
static_assert(std::size(kTabs) == kControlProtocolGrids);

constexpr JsonFileTexts kOpenTexts = {{"打开控制协议文件", "Open ControlProtocol file"},
                                      {"控制协议文件(*.JSON)", "ControlProtocol Flie(*.JSON)"}};
constexpr JsonFileTexts kSaveTexts = {{"保存控制协议文件", "Save ControlProtocol file"},
                                      kOpenTexts.filter,
                                      {"控制协议", "ControlProtocol"}};

/// In the order of `AskingChain::Step`.
constexpr LocalText kSteps[] = {
    {"正在读取播放器的数据…", "Reading the player's data…"},
    {"正在读取播放器的数据…", "Reading the player's data…"},
    {"正在等待播放器的名称列表…", "Waiting for the player's list of names…"},
    {"正在读取控制协议…", "Reading the control protocol…"},
};

constexpr LocalText kLearn = {"从串口学习命令", "Learn from the serial line"};

/// In the order of `SerialLineState::Kind`.
constexpr LocalText kLines[] = {
    InBoth(""),
    {"已连接。串口收到的命令会写入所选视频类别的“切换命令”。",
     "Connected. What is received goes into Send Cmd of the chosen type."},
    {"已从串口学习 %s，写入视频类别%d。", "Learned %s for Video Type%d."},
    {"已从串口学习 %s，写入视频类别%d，替换了 %s。",
     "Learned %s for Video Type%d, in place of %s."},
    {"串口收到 %s。要学习命令，请先选中一个视频类别的行。",
     "Received %s. To learn it, choose a row of a video type."},
    {"串口收到 %s，正在编辑单元格，未写入。", "Received %s. Not learned: a cell is being edited."},
    {"串口收到 %s，未学习。", "Received %s, which was not learned."},
    {"串口收到 %s，正在发送设置，未写入。",
     "Received %s. Not learned: the settings are being sent."},
};

std::string Shortened(const std::string& command) {
    return command.size() > kMostDigitsShown ? command.substr(0, kMostDigitsShown) + "…" : command;
}

}  // namespace

CControlProtocol::CControlProtocol(wxWindow* parent, const UiServices& services,
                                   const DeviceRecord& player, ProtocolVariant variant)
    : FeatureDialog(parent, Window::kControlProtocol, services),
      run_(*this, services.Messages(), Exchange(), {player.ip, player.tcpPort, 0},
           ControlProtocolPath(services.programFolder), variant) {
    LayOut(player);
    BindEvents();
    ShowRows();
    StateChanged();
    CentreOnParent();
    RestorePlace(kName);
    CallAfter([this] {
        grids_->FocusRows();
        asked_ = true;
        run_.Settings().Read();
    });
}

void CControlProtocol::LayOut(const DeviceRecord& player) {
    const int gap = FromDIP(10);
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    grids_ = new TabbedGrids(this, {kProtocolTabs, kProtocolFilter, kProtocolGrid + 1}, kTabs,
                             Services().Messages(),
                             [this](const SettingsEdit& edit) { return run_.Edit(edit); });
    grids_->Head().Prepend(MakeHeading(player, grids_),
                           wxSizerFlags(1).CentreVertical().Border(wxRIGHT, gap));
    column->Add(grids_, wxSizerFlags(line).Proportion(1));
    column->Add(MakeStateRow(state_), line);
    state_->SetId(kProtocolState);
    column->Add(MakeLearningRow(), line);
    wxSizer* foot = MakeFileButtonRow(kOpenProtocol, kSaveProtocol);
    const auto commit = [this] { return grids_->Commit(); };
    undo_.emplace(*this, *foot, run_.Settings(), commit);
    earlier_.emplace(*this, *foot, kOpenProtocol, Services(), player, run_.Settings(), commit,
                     [this] { StateChanged(); });
    column->Add(foot, wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
}

wxSizer* CControlProtocol::MakeLearningRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    line_ = MakeStateLine();
    line_->SetId(kProtocolLine);
    row->Add(line_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(8)));
    learns_ = new wxCheckBox(this, kProtocolLearn, ButtonLabel(kLearn, 'L'));
    learns_->SetValue(true);
    row->Add(learns_, wxSizerFlags().CentreVertical());
    return row;
}

void CControlProtocol::BindEvents() {
    const auto onPress = [this](int id, auto action) {
        Bind(
            wxEVT_BUTTON,
            [this, action](wxCommandEvent&) {
                if (grids_->Commit()) action();
            },
            id);
    };
    onPress(wxID_OK, [this] { run_.Settings().Save(); });
    onPress(kOpenProtocol, [this] { AskForFile(FileQuestion::Purpose::kOpen); });
    onPress(kSaveProtocol, [this] { AskForFile(FileQuestion::Purpose::kSave); });
    learns_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { run_.Learn(event.IsChecked()); });
    grids_->Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, [this](wxBookCtrlEvent& event) {
        event.Skip();
        // What is not seen must not be learned for.
        if (event.GetOldSelection() == static_cast<int>(kCategoryGrid))
            grids_->Grid(kCategoryGrid).ChooseNone();
    });
}

bool CControlProtocol::MayClose() { return !leaving_ && FeatureDialog::MayClose(); }

/// What has just been sent gets its time to leave.
void CControlProtocol::Leave() {
    leaving_ = true;
    Disable();
    run_.Leave([this] { EndUnderNoBox(); });
}

/// A box that has opened meanwhile stands on this dialog's own loop.
void CControlProtocol::EndUnderNoBox() {
    if (FrontDialog() != this) return run_.Leave([this] { EndUnderNoBox(); });
    if (IsModal()) EndModal(wxID_CANCEL);
}

void CControlProtocol::ReadAgain() {
    if (grids_->Commit()) run_.Settings().Read();
}

std::optional<int> CControlProtocol::ChosenCategory() const {
    const SettingsGrid& grid = grids_->Grid(kCategoryGrid);
    if (grids_->Page() != kCategoryGrid || grid.IsOffered()) return std::nullopt;
    const SettingsGroup* group = grid.ChosenGroup();
    return group ? VideoCategoryIn(*group) : std::nullopt;
}

bool CControlProtocol::IsEditingCategory() const { return grids_->Grid(kCategoryGrid).IsEditing(); }

void CControlProtocol::StateChanged() {
    const SettingsRun& settings = run_.Settings();
    earlier_->ShowState(*state_, StateText());
    line_->SetLabelText(LineText());
    ShowReadAgain(settings.IsConnected() || !asked_);
    FindWindow(kReadAgainButton)->Enable(!settings.IsLocked());
    FindWindow(wxID_OK)->Enable(settings.MaySend());
    FindWindow(kOpenProtocol)->Enable(settings.MayOpen());
    earlier_->Enable(settings.MayOpen());
    FindWindow(kSaveProtocol)->Enable(settings.MayKeep());
    undo_->Enable();
}

void CControlProtocol::AskForFile(FileQuestion::Purpose purpose) {
    const bool saves = purpose == FileQuestion::Purpose::kSave;
    const auto path = Services().Messages().ChooseFile(
        JsonFileQuestion(purpose, saves ? kSaveTexts : kOpenTexts));
    if (!path) return;
    if (saves)
        run_.Settings().SaveFile(*path);
    else
        run_.Settings().OpenFile(*path);
}

std::string CControlProtocol::StateText() const {
    const SettingsRun& settings = run_.Settings();
    if (settings.State() != SettingsState::kWaiting || settings.SecondsWithoutAnswer() > 0)
        return StateTextOf(settings);
    return Localized(kSteps[static_cast<std::size_t>(run_.Asking().CurrentStep())]);
}

wxString CControlProtocol::LineText() const {
    if (asked_ && !run_.Settings().IsConnected()) return ToWx(kNotConnected);
    const SerialLineState& line = run_.SerialLine();
    const LocalText& text = kLines[static_cast<std::size_t>(line.kind)];
    return ToWx(fmt::sprintf(Localized(text), Shortened(line.command), line.category + 1,
                             Shortened(line.replaced)));
}

}  // namespace sontaro
