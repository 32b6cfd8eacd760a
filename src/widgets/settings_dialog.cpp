#include "widgets/settings_dialog.h"

#include <fmt/printf.h>
#include <wx/button.h>
#include <wx/sizer.h>

#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/window_memory.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kOpenCaption = {"打开%s文件", "Open %s file"};
constexpr LocalText kSaveCaption = {"保存%s文件", "Save %s file"};
constexpr LocalText kFilter = {"%s文件(*.JSON)", "%s File(*.JSON)"};
constexpr const char* kExtension = "JSON";

/// In the order of `SettingsRun::State`.
constexpr LocalText kStates[] = {
    {"正在等待播放器的设置…", "Waiting for the player's settings…"},
    {"无法连接播放器。请关闭本窗口，检查播放器后重试。",
     "The player cannot be reached. Close this window, check the player and try again."},
    {"播放器发来的设置无法使用。", "The settings that the player has sent cannot be used."},
    {"与播放器中的设置一致。", "As the player has sent them."},
    {"有修改尚未发送到播放器。", "There are changes that have not been sent to the player."},
    {"未能发送：无法连接播放器。", "Nothing has been sent: the player cannot be reached."},
    {"正在等待播放器确认…", "Waiting for the player to confirm…"},
    {"播放器已确认。", "The player has confirmed."},
};

}  // namespace

SettingsDialog::SettingsDialog(wxWindow* parent, const UiServices& services,
                               const SettingsDialogDesign& design, const DeviceRecord& player,
                               std::unique_ptr<SettingsDocument> document)
    : FeatureDialog(parent, design.window, services),
      design_(design),
      player_{player.ip, player.tcpPort, 0},
      document_(std::move(document)),
      run_(design.exchange, *document_, *this, services.Messages(), player.ip) {
    LayOut(player);
    BindEvents();
    StateChanged();
    CentreOnParent();
    RestoreWindow(*this, nullptr, design_.name, services.preferences);
    CallAfter([this] { run_.Opened(); });
}

SettingsDialog::~SettingsDialog() {
    RememberWindow(*this, nullptr, design_.name, Services().preferences);
}

void SettingsDialog::LayOut(const DeviceRecord& player) {
    const int gap = FromDIP(10);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(MakeHeading(player), wxSizerFlags().Border(wxLEFT | wxRIGHT | wxTOP, gap));
    grid_ = new SettingsGrid(this, kSettingsGrid, design_.withTitles, Services().Messages(),
                             [this](const SettingsEdit& edit) { return run_.Edit(edit); });
    grid_->SetMinSize(wxSize(72 * LetterWidth(*this), 30 * GetCharHeight()));
    column->Add(grid_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap));
    state_ = MakeStateLine();
    column->Add(state_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap));
    column->Add(MakeFileButtonRow(kOpenSettings, kSaveSettings),
                wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
}

void SettingsDialog::BindEvents() {
    const auto onCommit = [this](int id, auto action) {
        Bind(
            wxEVT_BUTTON,
            [this, action](wxCommandEvent&) {
                if (grid_->Commit()) action();
            },
            id);
    };
    onCommit(wxID_OK, [this] { run_.Save(); });
    onCommit(kSaveSettings, [this] { SaveFile(); });
    onCommit(kOpenSettings, [this] { OpenFile(); });
}

bool SettingsDialog::Send(const DevicePacket& packet) {
    std::vector<Target> targets;
    if (design_.namesItsPlayer) targets.push_back(player_);
    return SendPacket(packet, std::move(targets));
}

void SettingsDialog::ShowRows() {
    grid_->Fill(document_->Rows());
    if (!run_.IsUsable())
        grid_->Properties().SetFocus();  // the first rows: until now it was hidden
}

void SettingsDialog::StateChanged() {
    const wxString text = ToWx(kStates[static_cast<std::size_t>(run_.CurrentState())]);
    grid_->SetEmptyText(text);
    state_->SetLabelText(run_.IsUsable() ? text : wxString());
    for (const int id : {static_cast<int>(wxID_OK), kOpenSettings, kSaveSettings})
        FindWindow(id)->Enable(run_.IsUsable());
}

FileQuestion SettingsDialog::Question(FileQuestion::Purpose purpose) const {
    const bool saves = purpose == FileQuestion::Purpose::kSave;
    const std::string title = TitleOf(design_.window);
    const LocalText& caption = saves ? kSaveCaption : kOpenCaption;
    return {purpose, fmt::sprintf(Localized(caption), title),
            fmt::sprintf(Localized(kFilter), title) + kJsonPatterns,
            saves ? title + "." + kExtension : "", kExtension};
}

void SettingsDialog::OpenFile() {
    const auto path = Services().Messages().ChooseFile(Question(FileQuestion::Purpose::kOpen));
    if (path) run_.OpenFile(*path);
}

void SettingsDialog::SaveFile() {
    const auto path = Services().Messages().ChooseFile(Question(FileQuestion::Purpose::kSave));
    if (path) run_.SaveFile(*path);
}

}  // namespace sontaro
