#include "app/main_window.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/statline.h>

#include "app/about_dialog.h"
#include "app/features.h"
#include "base/folders.h"
#include "base/window_titles.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/front_dialog.h"
#include "widgets/icons.h"
#include "widgets/system_menu.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kIconDelayMilliseconds = 150;
constexpr unsigned kAboutCommand = 16;  // in the system menu

constexpr LocalText kAbout = {"关于", "About"};
constexpr LocalText kAboutEntry = {"关于 Sontaro(&A)...", "&About Sontaro..."};
constexpr LocalText kPurpose = {"网络视频播放器的配置与遥控",
                                "Configuration and remote control of networked video players"};
constexpr LocalText kDemonstration = {
    "演示模式：本程序内有 %d 台模拟播放器，没有连接真实设备。",
    "Demonstration: %d simulated player(s) inside this program, no real device is connected."};
constexpr LocalText kNoDevice = {"当前播放器：无", "Current player: none"};
constexpr LocalText kCurrentDevice = {"当前播放器：", "Current player: "};

}  // namespace

CSontaroDlg::CSontaroDlg(const UiServices& services, const MainWindowSetup& setup)
    : wxDialog(nullptr, wxID_ANY, ToWx(TitleOf(Window::kMain)), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxMINIMIZE_BOX | wxDIALOG_NO_PARENT),
      services_(services),
      setup_(setup),
      switchboard_(TitleOf(Window::kMain), services.link, services.hub),
      registration_(services_.Directory().Register(
          TitleOf(Window::kMain),
          [this](WindowMessage& message) { switchboard_.Handle(message); })),
      iconTimer_(this) {
    UseLanguageFont(*this);
    SetEscapeId(wxID_NONE);
    iconTimer_.StartOnce(kIconDelayMilliseconds);  // they are large: the window is painted first
    const int gap = FromDIP(16);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(MakeHeader(), wxSizerFlags().Expand().Border(wxALL, gap));
    column->Add(MakeGroups(), wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, gap));
    column->Add(new wxStaticLine(this), wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, gap));
    column->Add(MakeFooter(), wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
    Centre();
    BindEvents();
}

CSontaroDlg::~CSontaroDlg() {
    services_.Directory().ShutDown();  // before the links close: their threads may be waiting
}

wxSizer* CSontaroDlg::MakeHeader() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticBitmap(this, wxID_ANY, ApplicationPicture(48)),
             wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(12)));
    auto* texts = new wxBoxSizer(wxVERTICAL);
    auto* title = new wxStaticText(this, wxID_ANY, "");
    headingFont_ = title->GetFont().Bold().Scaled(1.2F);
    title->SetFont(headingFont_);
    title->SetLabelText(ToWx(ApplicationTitle()));
    texts->Add(title);
    texts->Add(new wxStaticText(this, wxID_ANY, ToWx(kPurpose)),
               wxSizerFlags().Border(wxTOP, FromDIP(4)));
    if (setup_.demoPlayers > 0) {
        auto* demo = new wxStaticText(this, wxID_ANY,
                                      wxString::Format(ToWx(kDemonstration), setup_.demoPlayers));
        demo->SetFont(demo->GetFont().Bold());
        texts->Add(demo, wxSizerFlags().Border(wxTOP, FromDIP(4)));
    }
    row->Add(texts, wxSizerFlags(1).CentreVertical());
    if (setup_.demoPlayers > 0)
        row->Add(new wxStaticBitmap(this, wxID_ANY, LineIcon("demo", 32)),
                 wxSizerFlags().CentreVertical());
    return row;
}

wxSizer* CSontaroDlg::MakeGroups() {
    const bool chinese = CurrentLanguage() == Language::kChinese;
    const int columns = chinese ? 4 : 2;  // as many as the largest group has buttons
    const wxSize buttonSize((chinese ? 24 : 36) * LetterWidth(*this), FromDIP(72));
    auto* column = new wxBoxSizer(wxVERTICAL);
    for (const FeatureGroupText& group : kFeatureGroups) {
        auto* heading = new wxStaticText(this, wxID_ANY, ToWx(group.text));
        heading->SetFont(headingFont_);
        column->Add(heading, wxSizerFlags().Border(wxBOTTOM, FromDIP(6)));
        auto* grid = new wxGridSizer(columns, FromDIP(wxSize(8, 8)));
        for (const Feature& feature : Features()) {
            if (feature.group != group.group || !feature.IsInLayout()) continue;
            auto* button =
                new wxButton(this, feature.button, ButtonLabel(feature.text, feature.key));
            button->SetBitmap(LineIcon(feature.icon, 32), wxTOP);
            wxSize size = button->GetBestSize();
            size.IncTo(buttonSize);
            button->SetMinSize(size);
            grid->Add(button, wxSizerFlags().Expand());
        }
        column->Add(grid, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(14)));
    }
    return column;
}

wxSizer* CSontaroDlg::MakeFooter() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* about = new wxButton(this, kAboutButton, ButtonLabel(kAbout, 'A'));
    about->SetBitmap(LineIcon("about", 16));
    row->Add(about, wxSizerFlags().CentreVertical());
    currentDevice_ = new wxStaticText(this, wxID_ANY, ToWx(kNoDevice), wxDefaultPosition,
                                      wxDefaultSize, wxST_ELLIPSIZE_END);
    row->Add(currentDevice_,
             wxSizerFlags(1).CentreVertical().Border(wxLEFT | wxRIGHT, FromDIP(12)));
    if (CurrentLanguage() == Language::kEnglish)
        row->Add(new wxButton(this, wxID_OK, ButtonLabel(kOkText, 'O')),
                 wxSizerFlags().Border(wxRIGHT, FromDIP(8)));
    row->Add(new wxButton(this, wxID_CANCEL, ButtonLabel(kExitText, 'E')));
    return row;
}

void CSontaroDlg::BindEvents() {
    for (const Feature& feature : Features())
        Bind(
            wxEVT_BUTTON, [this, &feature](wxCommandEvent&) { OpenFeature(feature); },
            feature.button);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { ShowAbout(); }, kAboutButton);
    Bind(
        wxEVT_BUTTON, [](wxCommandEvent&) { /* OK has never done anything here */ }, wxID_OK);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { AskToExit(); }, wxID_CANCEL);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
        if (!event.CanVeto()) return EndByForce();
        event.Veto();
        AskToExit();
    });
    Bind(wxEVT_TIMER, [this](wxTimerEvent&) { SetIcons(ApplicationIcons()); });
    AddToSystemMenu(*this, kAboutCommand, ToWx(kAboutEntry), [this] { ShowAbout(); });
}

void CSontaroDlg::OpenFeature(const Feature& feature) {
    switchboard_.Links().ForgetShownFailure();
    if (feature.openWizard) {
        feature.openWizard(this, services_, setup_.scan);
        ShowCurrentDevice();
    } else if (ChooseDevice()) {
        feature.open(this, services_, *current_);
    }
}

/// Lets the user choose one player, which becomes the current device.
bool CSontaroDlg::ChooseDevice() {
    ScanSetup setup = setup_.scan;
    setup.current = current_;
    CScanForDevices scan(this, services_, setup, ChoiceMode::kSingle);
    const bool chosen = scan.ShowModal() == wxID_OK;
    if (chosen) {
        current_ = scan.Chosen().front();
        switchboard_.Links().SetCurrentDevice({current_->ip, current_->tcpPort, 0});
    }
    ShowCurrentDevice();
    return chosen;
}

/// Remarks can be edited wherever players are found, without one being chosen.
void CSontaroDlg::ShowCurrentDevice() {
    if (!current_) return;
    setup_.scan.remarks.ApplyTo(*current_);
    const wxString text = ToWx(kCurrentDevice) + ToWx(PlayerText(*current_));
    currentDevice_->SetLabelText(text);
    currentDevice_->SetToolTip(text);
}

void CSontaroDlg::ShowAbout() { AboutDialog(this).ShowModal(); }

void CSontaroDlg::AskToExit() {
    if (fadeOut_.HasStarted() || !services_.Messages().Confirm(Localized(kExitQuestion))) return;
    DeleteContents(setup_.temporaryFolder);
    Disable();
    fadeOut_.Start([this] { Destroy(); });
}

void CSontaroDlg::EndByForce() {
    modalDialogs_.EndAll([this] { Destroy(); });
}

void CSontaroDlg::BringForward() {
    Iconize(false);
    Show();
    Raise();
    if (wxDialog* front = FrontDialog()) front->Raise();
    RequestUserAttention();
}

}  // namespace sontaro
