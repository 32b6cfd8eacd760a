#include "videocontrol/video_control_dialog.h"

#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/notebook.h>
#include <wx/statbmp.h>

#include <algorithm>

#include "videocontrol/video_control_buttons.h"
#include "widgets/common_texts.h"
#include "widgets/exchange_texts.h"
#include "widgets/fonts.h"
#include "widgets/front_dialog.h"
#include "widgets/icons.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kPlayButton = 2109;
constexpr const char* kWindowName = "videoControl";

constexpr LocalText kTab = {"视频控制", "Video Control"};
constexpr LocalText kFolder = {"切换类别", "Folder"};
constexpr LocalText kLayout = {"切换布局", "Layout"};
constexpr LocalText kMode = {"播放模式", "Mode"};
constexpr LocalText kVolume = {"音量", "Volume"};
constexpr LocalText kVideo = {"切换视频", "Video"};
constexpr LocalText kPower = {"电源与特效", "Power and effects"};
constexpr LocalText kSwitchTo = {"切换", "Switch"};
constexpr LocalText kPlayer = {"播放器：", "Player:"};

/// Until the player or the user has said how loud it is.
constexpr const char* kUnknownVolume = "-";

constexpr LocalText kStates[] = {
    {"正在等待播放器状态…", "Waiting for the player's state…"},
    {"正在等待布局列表…", "Waiting for the list of layouts…"},
    {"正在等待按钮名称…", "Waiting for the player's buttons…"},
    {"已就绪", "Ready"},
};

struct ButtonIcon {
    int id;
    const char* name;
};
constexpr ButtonIcon kButtonIcons[] = {
    {2109, "play"},  {2110, "pause"}, {2113, "previous"}, {2114, "next"},
    {2120, "power"}, {2121, "power"}, {2124, "previous"}, {2123, "next"},
};

constexpr LocalText kSilent = {"播放器已有 %d 秒没有应答", "The player has been silent for %d s"};
constexpr LocalText kRefused = {"播放器拒绝了命令（代码 %d）",
                                "The player has refused the command (code %d)"};

/// Where something stands in a group box: the box itself keeps no distance.
wxSizerFlags Padded(const wxWindow& window) {
    return wxSizerFlags(1).CentreVertical().Border(wxALL, window.FromDIP(6));
}

void Offer(wxComboBox& choice, const std::vector<std::string>& names) {
    const wxString shown = choice.GetValue();
    wxArrayString items;
    for (const std::string& name : names) items.Add(ToWx(name));
    choice.Set(items);
    choice.ChangeValue(shown);  // a refill must not wipe out what is being typed
}

}  // namespace

CVideoControl::CVideoControl(wxWindow* parent, const DeviceRecord& player,
                             const ExchangeServices& exchange)
    : wxPanel(parent), run_(*this, exchange, {player.ip, player.tcpPort, 0}) {
    const int gap = FromDIP(8);
    const auto row = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    const auto cell = wxSizerFlags(1).Expand().Border(wxRIGHT, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(MakePlayerRow(player), row);
    column->Add(MakePositionRow(), row);
    auto* choices = new wxBoxSizer(wxHORIZONTAL);
    choices->Add(MakeChoiceGroup(kFolder, kFolderChoice, &VideoControlRun::ChooseFolder), cell);
    choices->Add(MakeChoiceGroup(kLayout, kLayoutChoice, &VideoControlRun::ChooseLayout),
                 wxSizerFlags(1).Expand());
    column->Add(choices, row);
    column->Add(MakeButtonGroup(kMode, {2104, 2105, 2106, 2107, 2108}), row);
    column->Add(MakeVideoGroup(), row);
    auto* lower = new wxBoxSizer(wxHORIZONTAL);
    lower->Add(MakeVolumeGroup(), cell);
    lower->Add(MakeButtonGroup(kPower, {2120, 2121, 2126}), wxSizerFlags(1).Expand());
    column->Add(lower, row);
    column->Add(MakeUsbGroup(), row);
    column->AddSpacer(gap);
    SetSizer(column);
}

bool CVideoControl::IsInFront() const { return FrontDialog() == wxGetTopLevelParent(GetParent()); }

wxSizer* CVideoControl::MakePlayerRow(const DeviceRecord& player) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    const auto flags = wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(8));
    row->Add(new wxStaticText(this, wxID_ANY, ToWx(kPlayer)), flags);
    auto* name = new wxStaticText(this, wxID_ANY, ToWx(player.ip + "   " + player.id));
    name->SetFont(name->GetFont().Bold());
    row->Add(name, flags);
    auto* remarks = new wxStaticText(this, wxID_ANY, ToWx(player.remarks), wxDefaultPosition,
                                     wxDefaultSize, wxST_ELLIPSIZE_END | wxST_NO_AUTORESIZE);
    remarks->SetMinSize(wxSize(10 * LetterWidth(*this), wxDefaultCoord));
    row->Add(remarks, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(8)));
    state_ = new wxStaticText(this, wxID_ANY, ToWx(kStates[0]));
    row->Add(state_, wxSizerFlags().CentreVertical());
    return row;
}

wxSizer* CVideoControl::MakePositionRow() {
    auto* column = new wxBoxSizer(wxVERTICAL);
    title_ = new wxStaticText(this, kTitleText, wxString::FromUTF8("曲->g"), wxDefaultPosition,
                              wxDefaultSize, wxST_ELLIPSIZE_END | wxST_NO_AUTORESIZE);
    title_->SetMinSize(title_->GetBestSize());  // high enough for either script
    title_->SetLabelText("");
    column->Add(title_, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(4)));
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    progress_ = new wxGauge(this, kProgressBar, 100);
    row->Add(progress_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(8)));
    position_ = new wxStaticText(this, kPositionText, "00:00:00/00:00:00", wxDefaultPosition,
                                 wxDefaultSize, wxALIGN_RIGHT | wxST_NO_AUTORESIZE);
    position_->SetMinSize(position_->GetBestSize());
    position_->SetLabelText("00:00/00:00");
    row->Add(position_, wxSizerFlags().CentreVertical());
    column->Add(row, wxSizerFlags().Expand());
    return column;
}

wxSizer* CVideoControl::MakeVolumeGroup() {
    auto* group = new wxStaticBoxSizer(wxHORIZONTAL, this, ToWx(kVolume));
    wxWindow* box = group->GetStaticBox();
    auto* icon = new wxStaticBitmap(box, wxID_ANY, LineIcon("volume", 20));
    group->Add(icon, wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(8)));
    volume_ = new wxSlider(box, kVolumeSlider, 0, 0, 100);
    group->Add(volume_, wxSizerFlags(1).CentreVertical());
    volumeText_ = new wxStaticText(box, wxID_ANY, kUnknownVolume, wxDefaultPosition,
                                   wxSize(5 * LetterWidth(*this), wxDefaultCoord),
                                   wxALIGN_RIGHT | wxST_NO_AUTORESIZE);
    group->Add(volumeText_, wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(8)));
    volume_->Bind(wxEVT_SLIDER, [this](wxCommandEvent& event) {
        run_.MoveVolume(event.GetInt());
        volumeText_->SetLabelText(wxString::Format("%d", event.GetInt()));
    });
    return group;
}

wxSizer* CVideoControl::MakeVideoGroup() {
    auto* group = new wxStaticBoxSizer(wxHORIZONTAL, this, ToWx(kVideo));
    wxWindow* box = group->GetStaticBox();
    group->Add(MakeButtons(box, {2113, 2109, 2110, 2114}), Padded(*this));
    group->Add(MakeChoice(box, kVideoChoice, &VideoControlRun::ChooseVideo), Padded(*this));
    return group;
}

wxSizer* CVideoControl::MakeUsbGroup() {
    usbBox_ = new wxStaticBox(this, kUsbLabel, ToWx(kUsbVideoLabel));
    auto* group = new wxStaticBoxSizer(usbBox_, wxHORIZONTAL);
    auto* icon = new wxStaticBitmap(usbBox_, wxID_ANY, LineIcon("usb", 20));
    group->Add(icon, wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(8)));
    usbVideo_ = new wxComboBox(usbBox_, kUsbVideo, "", wxDefaultPosition, NameSize(), 0, nullptr,
                               wxCB_READONLY);
    usbVideo_->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent&) {
        run_.ChooseUsbVideo(FromWx(usbVideo_->GetStringSelection()));
    });
    group->Add(usbVideo_, wxSizerFlags(1).CentreVertical());
    group->Add(MakeButtons(usbBox_, {2124, 2123}), Padded(*this));
    return group;
}

wxSizer* CVideoControl::MakeChoiceGroup(const LocalText& label, int id, Chooser chooser) {
    auto* group = new wxStaticBoxSizer(wxHORIZONTAL, this, ToWx(label));
    group->Add(MakeChoice(group->GetStaticBox(), id, chooser), Padded(*this));
    return group;
}

/// Of a drop-down, whatever names it will offer.
wxSize CVideoControl::NameSize() const { return {18 * LetterWidth(*this), wxDefaultCoord}; }

/// A drop-down that sends what is chosen at once, and what is typed at the press of a button.
wxSizer* CVideoControl::MakeChoice(wxWindow* parent, int id, Chooser chooser) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* names = new wxComboBox(parent, id, "", wxDefaultPosition, NameSize());
    auto* button = new wxButton(parent, wxID_ANY, ButtonLabel(kSwitchTo, 'w'));
    row->Add(names, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(6)));
    row->Add(button, wxSizerFlags().CentreVertical());
    const auto send = [this, names, chooser](wxCommandEvent&) {
        (run_.*chooser)(FromWx(names->GetValue()));
    };
    names->Bind(wxEVT_COMBOBOX, [send](wxCommandEvent& event) {
        // Passing a name with an arrow key is not choosing it.
        if (!wxGetKeyState(WXK_UP) && !wxGetKeyState(WXK_DOWN)) send(event);
    });
    button->Bind(wxEVT_BUTTON, send);
    choices_[id] = names;
    return row;
}

wxSizer* CVideoControl::MakeButtonGroup(const LocalText& label, std::initializer_list<int> ids) {
    auto* group = new wxStaticBoxSizer(wxHORIZONTAL, this, ToWx(label));
    group->Add(MakeButtons(group->GetStaticBox(), ids), Padded(*this));
    return group;
}

wxSizer* CVideoControl::MakeButtons(wxWindow* parent, std::initializer_list<int> ids) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    for (int id : ids) {
        if (!row->IsEmpty()) row->AddSpacer(FromDIP(6));
        row->Add(MakeButton(parent, id), wxSizerFlags(1));
    }
    return row;
}

wxButton* CVideoControl::MakeButton(wxWindow* parent, int id) {
    const VideoButton* entry = &VideoButtonOfControl(id);
    auto* button = new wxButton(parent, id, wxString::FromUTF8(entry->caption));
    const auto* icon = std::ranges::find(kButtonIcons, id, &ButtonIcon::id);
    if (icon != std::end(kButtonIcons)) button->SetBitmap(LineIcon(icon->name, 18));
    buttons_[id] = button;
    captions_[id] = entry->caption;
    button->Bind(wxEVT_BUTTON, [this, id](wxCommandEvent&) { run_.Press(captions_[id]); });
    return button;
}

void CVideoControl::Start() {
    buttons_[kPlayButton]->SetFocus();
    run_.Opened();
}

void CVideoControl::ShowButton(int type, const std::string& caption) {
    const int id = ControlOfVideoButton(type);
    captions_[id] = caption;
    buttons_[id]->SetLabelText(ToWx(caption));
    shownButtons_.insert(id);
}

/// Only now: hiding a button that stays would take the keyboard focus from it.
void CVideoControl::ButtonsChanged() {
    for (const auto& [id, button] : buttons_) button->Show(shownButtons_.contains(id));
    Layout();
    wxWindow* dialog = wxGetTopLevelParent(this);
    wxSize size = dialog->GetSizer()->ComputeFittingWindowSize(dialog);
    size.IncTo(dialog->GetSize());
    size.DecTo(wxGetClientDisplayRect().GetSize());
    dialog->SetSize(size);  // captions may be longer than those of the resource
}

void CVideoControl::ShowPosition(int percent, const std::string& text) {
    progress_->SetValue(percent);
    position_->SetLabelText(ToWx(text));
}

void CVideoControl::ShowTitle(const std::string& text) { title_->SetLabelText(ToWx(text)); }

void CVideoControl::ShowVolume(int volume) {
    volume_->SetValue(volume);
    volumeText_->SetLabelText(wxString::Format("%d", volume));
}

void CVideoControl::ShowUsbLabel(const std::string& text) {
    const wxClientDC measure(usbBox_);
    const int width = usbBox_->GetSize().x - FromDIP(32);
    usbBox_->SetLabelText(wxControl::Ellipsize(ToWx(text), measure, wxELLIPSIZE_MIDDLE, width,
                                               wxELLIPSIZE_FLAGS_NONE));
}

void CVideoControl::ShowUsbVideos(const std::vector<std::string>& names) {
    wxArrayString items;
    for (const std::string& name : names) items.Add(ToWx(name));
    usbVideo_->Set(items);
}

void CVideoControl::OfferFolders(const std::vector<std::string>& names) {
    Offer(*choices_[kFolderChoice], names);
}
void CVideoControl::OfferLayouts(const std::vector<std::string>& names) {
    Offer(*choices_[kLayoutChoice], names);
}
void CVideoControl::OfferVideos(const std::vector<std::string>& names) {
    Offer(*choices_[kVideoChoice], names);
}

void CVideoControl::StateChanged() {
    state_->SetLabelText(StateText());
    connectionChanged_(run_.IsConnected());
    Layout();
}

/// What needs the user most.
wxString CVideoControl::StateText() const {
    using Kind = VideoControlRun::Trouble::Kind;
    const VideoControlRun::Trouble& trouble = run_.LastTrouble();
    if (trouble.kind == Kind::kNotSent) return ToWx(TextOf(trouble.reason));
    if (!run_.IsConnected()) return ToWx(kNotConnected);
    if (trouble.kind == Kind::kRefused) return wxString::Format(ToWx(kRefused), trouble.code);
    if (const int seconds = run_.SecondsOfSilence())
        return wxString::Format(ToWx(kSilent), seconds);
    return ToWx(kStates[static_cast<std::size_t>(run_.CurrentState())]);
}

CVideoControlTab::CVideoControlTab(wxWindow* parent, const UiServices& services,
                                   const DeviceRecord& player)
    : FeatureDialog(parent, Window::kVideoControl, services) {
    const int gap = FromDIP(10);
    auto* tabs = new wxNotebook(this, wxID_ANY);
    control_ = new CVideoControl(tabs, player, Exchange());
    tabs->AddPage(control_, ToWx(kTab));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(tabs, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap));
    column->Add(MakeButtonRow(false, kExitText), wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizerAndFit(column);
    CentreOnParent();
    RestorePlace(kWindowName);
    CallAfter([this] { control_->Start(); });
}

CVideoControlTab::~CVideoControlTab() {
    control_->Stop();
    CloseLinks();  // the player would go on reporting its position
}

}  // namespace sontaro
