#include "videocontrol/video_control_tab.h"

#include <wx/button.h>

#include "widgets/common_texts.h"
#include "widgets/modal_dialogs.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr const char* kWindowName = "videoControl";
constexpr LocalText kTab = {"视频控制", "Video Control"};

}  // namespace

CVideoControlTab::CVideoControlTab(wxWindow* parent, const UiServices& services,
                                   const DeviceRecord& player)
    : FeatureDialog(parent, Window::kVideoControl, services) {
    const int gap = FromDIP(10);
    auto* tabs = new TabBook(this, wxID_ANY);
    control_ = new CVideoControl(tabs, player, services.Messages(), Exchange(),
                                 [this] { return size_->Fit(); });
    control_->OnConnection([this](bool connected) { ShowReadAgain(connected); });
    tabs->AddPage(control_, ToWx(kTab));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(tabs, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap));
    wxSizer* buttons = MakeButtonRow(false, kExitText);
    buttons->Prepend(MakeReadAgainButton(this));
    column->Add(buttons, wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
    CentreOnParent();
    size_.emplace(*this, kWindowName, services.preferences);
    Bind(kKeepEvent, [this](wxCommandEvent&) { size_->Remember(); });
    CallAfter([this] { control_->Start(); });
}

CVideoControlTab::~CVideoControlTab() {
    control_->Stop();
    CloseLinks();  // the player would go on reporting its position
    size_->Remember();
}

}  // namespace sontaro
