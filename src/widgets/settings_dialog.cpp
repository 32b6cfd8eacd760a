#include "widgets/settings_dialog.h"

#include <fmt/printf.h>
#include <wx/button.h>
#include <wx/sizer.h>

#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/settings_state_text.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kOpenCaption = {"打开%s文件", "Open %s file"};
constexpr LocalText kSaveCaption = {"保存%s文件", "Save %s file"};
constexpr LocalText kFilter = {"%s文件(*.JSON)", "%s File(*.JSON)"};
constexpr const char* kExtension = "JSON";

}  // namespace

SettingsDialog::SettingsDialog(wxWindow* parent, const UiServices& services,
                               const SettingsDialogDesign& design, const DeviceRecord& player,
                               std::unique_ptr<SettingsDocument> document)
    : FeatureDialog(parent, design.window, services, design.addressing),
      design_(design),
      document_(std::move(document)),
      run_(design.block, *document_, *this, services.Messages(), Exchange(),
           {player.ip, player.tcpPort, 0}) {
    LayOut(player);
    BindEvents();
    StateChanged();
    CentreOnParent();
    RestorePlace(design_.name);
    CallAfter([this] {
        asked_ = true;
        run_.Read();
    });
}

void SettingsDialog::LayOut(const DeviceRecord& player) {
    const int gap = FromDIP(10);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(MakeHeading(player, this),
                wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap));
    grid_ = new SettingsGrid(this, kSettingsGrid, design_.withTitles, Services().Messages(),
                             [this](const SettingsEdit& edit) { return run_.Edit(edit); });
    grid_->SetMinSize(wxSize(72 * LetterWidth(*this), 30 * GetCharHeight()));
    column->Add(grid_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap));
    column->Add(MakeStateRow(state_),
                wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap));
    wxSizer* foot = MakeFileButtonRow(kOpenSettings, kSaveSettings);
    const auto commit = [this] { return grid_->Commit(); };
    undo_.emplace(*this, *foot, run_, commit);
    earlier_.emplace(*this, *foot, kOpenSettings, Services(), player, run_, commit,
                     [this] { StateChanged(); });
    column->Add(foot, wxSizerFlags().Expand().Border(wxALL, gap));
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

void SettingsDialog::ReadAgain() {
    if (grid_->Commit()) run_.Read();
}

void SettingsDialog::ShowRows() {
    const bool first = !grid_->Properties().IsShown();
    grid_->Fill(document_->Rows());
    if (first) grid_->Properties().SetFocus();
}

void SettingsDialog::ChooseRow(const std::string& key) {
    grid_->ChooseKey(key);
    grid_->Properties().SetFocus();
}

void SettingsDialog::StateChanged() {
    const std::string text = StateTextOf(run_);
    grid_->SetEmptyText(ToWx(text));
    earlier_->ShowState(*state_, text);
    ShowReadAgain(run_.IsConnected() || !asked_);
    FindWindow(wxID_OK)->Enable(run_.MaySend());
    FindWindow(kOpenSettings)->Enable(run_.MayOpen());
    earlier_->Enable(run_.MayOpen());
    FindWindow(kSaveSettings)->Enable(run_.MayKeep());
    undo_->Enable();
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
