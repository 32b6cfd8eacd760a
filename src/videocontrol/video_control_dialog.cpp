#include "videocontrol/video_control_dialog.h"

#include <fmt/printf.h>
#include <wx/dcclient.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>

#include <algorithm>

#include "videocontrol/video_control_buttons.h"
#include "widgets/caption_button.h"
#include "widgets/exchange_texts.h"
#include "widgets/fonts.h"
#include "widgets/front_dialog.h"
#include "widgets/icons.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kPlayButton = 2109;
constexpr int kPowerOffButton = 2121;

constexpr LocalText kFolder = {"切换类别", "Folder"};
constexpr LocalText kLayout = {"切换布局", "Layout"};
constexpr LocalText kMode = {"播放模式", "Mode"};
constexpr LocalText kVolume = {"音量", "Volume"};
constexpr LocalText kVideo = {"切换视频", "Video"};
constexpr LocalText kPower = {"电源与特效", "Power and effects"};
constexpr LocalText kSwitchTo = {"切换", "Switch"};
constexpr LocalText kPlayer = {"播放器：", "Player:"};

constexpr LocalText kPowerOffQuestion = {"确定要将播放器 %s 关机吗？",
                                         "Do you really want to switch off player %s?"};

/// Until the player or the user has said how loud it is.
constexpr const char* kUnknownVolume = "-";

constexpr LocalText kStates[] = {
    {"正在等待播放器状态…", "Waiting for the player's state…"},
    {"正在等待布局列表…", "Waiting for the list of layouts…"},
    {"正在等待按钮名称…", "Waiting for the player's buttons…"},
    {"已就绪", "Ready"},
};

constexpr LocalText kListUnreadable = {"已就绪，视频列表无法识别",
                                       "Ready, list of videos unreadable"};

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

constexpr const char* kUsualPosition = "00:00:00/00:00:00";

/// Where something stands in a group box: the box itself keeps no distance.
wxSizerFlags Padded(const wxWindow& window) {
    return wxSizerFlags(1).CentreVertical().Border(wxALL, window.FromDIP(6));
}

/// As small as what stands in it: by itself it would not shrink again.
class GroupBox : public wxStaticBox {
   public:
    using wxStaticBox::wxStaticBox;

   private:
    [[nodiscard]] wxSize DoGetBestSize() const override { return {1, 1}; }
};

wxStaticBoxSizer* MakeGroup(wxWindow* parent, int id, const LocalText& label) {
    return new wxStaticBoxSizer(new GroupBox(parent, id, ToWx(label)), wxHORIZONTAL);
}

constexpr int kNameLetters = 20;

/// Of the state, whatever it will be.
wxSize StateSize(const wxWindow& window) {
    constexpr int kSeconds = 8888;
    wxSize size = window.GetTextExtent(wxString::Format(ToWx(kSilent), kSeconds));
    for (const LocalText& state : kStates) size.IncTo(window.GetTextExtent(ToWx(state)));
    return size;
}

}  // namespace

CVideoControl::CVideoControl(wxWindow* parent, const DeviceRecord& player, Prompts& prompts,
                             const ExchangeServices& exchange,
                             std::function<bool()> contentsChanged)
    : wxPanel(parent),
      playerIp_(player.ip),
      prompts_(prompts),
      contentsChanged_(std::move(contentsChanged)),
      run_(*this, exchange, {player.ip, player.tcpPort, 0}) {
    const int gap = FromDIP(8);
    const auto row = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap);
    const auto left = wxSizerFlags(1).Expand();
    const auto right = wxSizerFlags(left).Border(wxLEFT, gap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(MakePlayerRow(player), row);
    column->Add(MakePositionRow(), row);
    auto* choices = new wxBoxSizer(wxHORIZONTAL);
    choices->Add(MakeChoiceGroup(kFolder, kFolderChoice, 'S', &VideoControlRun::ChooseFolder),
                 left);
    choices->Add(MakeChoiceGroup(kLayout, kLayoutChoice, 'w', &VideoControlRun::ChooseLayout),
                 right);
    choices_[kFolderChoice]->Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
        event.Skip();
        run_.NameFolder(FromWx(choices_[kFolderChoice]->GetValue()));
    });
    column->Add(choices, row);
    column->Add(MakeButtonGroup(kMode, {2104, 2105, 2106, 2107, 2108}), row);
    column->Add(MakeVideoGroup(), row);
    auto* lower = new wxBoxSizer(wxHORIZONTAL);
    lower->Add(MakeVolumeGroup(), left);
    lower->Add(MakeButtonGroup(kPower, {2120, 2121, 2126}), right);
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
    state_ = new wxStaticText(this, wxID_ANY, ToWx(kStates[0]), wxDefaultPosition, wxDefaultSize,
                              wxALIGN_RIGHT | wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    state_->SetMinSize(StateSize(*this));
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
    position_ = new wxStaticText(this, kPositionText, "", wxDefaultPosition, wxDefaultSize,
                                 wxALIGN_RIGHT | wxST_NO_AUTORESIZE);
    MakeRoomForPosition(kUsualPosition);
    position_->SetLabelText("00:00/00:00");
    row->Add(position_, wxSizerFlags().CentreVertical());
    column->Add(row, wxSizerFlags().Expand());
    return column;
}

wxSizer* CVideoControl::MakeVolumeGroup() {
    wxStaticBoxSizer* group = MakeGroup(this, wxID_ANY, kVolume);
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
    wxStaticBoxSizer* group = MakeGroup(this, wxID_ANY, kVideo);
    wxWindow* box = group->GetStaticBox();
    auto* halves = new wxFlexGridSizer(2);  // of what both have to spare
    halves->AddGrowableCol(0, 1);
    halves->AddGrowableCol(1, 1);
    const auto half = wxSizerFlags().Expand().Border(wxALL, FromDIP(6));
    halves->Add(MakeButtons(box, {2113, 2109, 2110, 2114}), half);
    halves->Add(MakeChoice(box, kVideoChoice, 't', &VideoControlRun::ChooseVideo), half);
    group->Add(halves, wxSizerFlags(1).Expand());
    return group;
}

wxSizer* CVideoControl::MakeUsbGroup() {
    wxStaticBoxSizer* group = MakeGroup(this, kUsbLabel, kUsbVideoLabel);
    usbBox_ = group->GetStaticBox();
    auto* icon = new wxStaticBitmap(usbBox_, wxID_ANY, LineIcon("usb", 20));
    group->Add(icon, wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(8)));
    const wxSize nameSize(kNameLetters * LetterWidth(*this), wxDefaultCoord);
    usbVideo_ = new wxComboBox(usbBox_, kUsbVideo, "", wxDefaultPosition, nameSize, 0, nullptr,
                               wxCB_READONLY);
    IgnoreWheel(*usbVideo_);
    usbVideo_->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent&) {
        run_.ChooseUsbVideo(FromWx(usbVideo_->GetStringSelection()));
    });
    group->Add(usbVideo_, Padded(*this).Border(wxTOP | wxBOTTOM | wxRIGHT, FromDIP(6)));
    group->Add(MakeButtons(usbBox_, {2124, 2123}), Padded(*this));
    usbBox_->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        CutUsbLabel();
    });
    groups_.push_back({group, {2124, 2123}, usbVideo_});
    return group;
}

wxSizer* CVideoControl::MakeChoiceGroup(const LocalText& label, int id, char key, Chooser chooser) {
    wxStaticBoxSizer* group = MakeGroup(this, wxID_ANY, label);
    group->Add(MakeChoice(group->GetStaticBox(), id, key, chooser), Padded(*this));
    return group;
}

/// A drop-down that sends what is chosen at once, and what is typed at the press of a button.
wxSizer* CVideoControl::MakeChoice(wxWindow* parent, int id, char key, Chooser chooser) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* names = new NameChoice(parent, id, kNameLetters);
    auto* button = new wxButton(parent, wxID_ANY, ButtonLabel(kSwitchTo, key));
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
    wxStaticBoxSizer* group = MakeGroup(this, wxID_ANY, label);
    group->Add(MakeButtons(group->GetStaticBox(), ids), Padded(*this));
    groups_.push_back({group, ids, nullptr});
    return group;
}

wxSizer* CVideoControl::MakeButtons(wxWindow* parent, std::initializer_list<int> ids) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    const auto flags = wxSizerFlags(1).Border(wxLEFT | wxRIGHT, FromDIP(3));
    for (int id : ids) row->Add(MakeButton(parent, id), flags);  // those that go take their gap
    return row;
}

CaptionButton* CVideoControl::MakeButton(wxWindow* parent, int id) {
    const VideoButton* entry = &VideoButtonOfControl(id);
    const auto* icon = std::ranges::find(kButtonIcons, id, &ButtonIcon::id);
    const bool hasIcon = icon != std::end(kButtonIcons);
    auto* button = new CaptionButton(parent, id, entry->caption,
                                     hasIcon ? LineIcon(icon->name, 18) : wxBitmapBundle());
    buttons_[id] = button;
    captions_[id] = entry->caption;
    button->Bind(wxEVT_BUTTON, [this, id](wxCommandEvent&) {
        const std::string caption = captions_[id];  // others may come during the question
        if (id != kPowerOffButton || MaySwitchOff()) run_.Press(caption);
    });
    return button;
}

/// A player that is off cannot be seen in the venue any more, and some are hard to get at.
bool CVideoControl::MaySwitchOff() {
    return prompts_.Confirm(fmt::sprintf(Localized(kPowerOffQuestion), playerIp_));
}

void CVideoControl::Start() {
    buttons_[kPlayButton]->SetFocus();
    run_.Opened();
}

void CVideoControl::ShowButton(int type, const std::string& caption) {
    const int id = ControlOfVideoButton(type);
    captions_[id] = caption;
    buttons_[id]->SetCaption(caption);
    shownButtons_.insert(id);
}

void CVideoControl::ButtonsChanged() {
    buttonsAreKnown_ = true;
    ShowGroups();
}

/// A group without buttons goes, unless its drop-down has something to choose. Nothing that stays
/// is hidden on the way: that would take the keyboard focus from it.
void CVideoControl::ShowGroups() {
    for (const Group& group : groups_) {
        const bool hasButtons = std::ranges::any_of(
            group.buttons, [this](int id) { return shownButtons_.contains(id); });
        const bool shows = hasButtons || (group.names != nullptr && !group.names->IsListEmpty());
        if (group.sizer->GetStaticBox()->IsShown() != shows)
            GetSizer()->Show(group.sizer, shows, true);
    }
    for (const auto& [id, button] : buttons_) button->Show(shownButtons_.contains(id));
    FitContents();
}

void CVideoControl::FitContents() {
    InvalidateBestSize();
    if (!contentsChanged_()) Layout();
}

void CVideoControl::ShowPosition(int percent, const std::string& text) {
    progress_->SetValue(percent);
    MakeRoomForPosition(ToWx(text));
    position_->SetLabelText(ToWx(text));
}

/// A recording may go on for days.
void CVideoControl::MakeRoomForPosition(const wxString& text) {
    wxSize room = position_->GetTextExtent(kUsualPosition);
    room.IncTo(position_->GetTextExtent(text));
    if (room == position_->GetMinSize()) return;
    position_->SetMinSize(room);
    if (GetSizer()) FitContents();
}

void CVideoControl::ShowTitle(const std::string& text) {
    title_->SetLabelText(OneLine(ToWx(text)));
}

void CVideoControl::ShowVolume(int volume) {
    volume_->SetValue(volume);
    volumeText_->SetLabelText(wxString::Format("%d", volume));
}

void CVideoControl::ShowUsbLabel(const std::string& text) {
    usbLabel_ = OneLine(ToWx(text));
    CutUsbLabel();
}

void CVideoControl::CutUsbLabel() {
    if (usbLabel_.empty()) return;
    const wxClientDC measure(usbBox_);
    const int width = usbBox_->GetSize().x - FromDIP(32);
    const wxString label =
        wxControl::Ellipsize(usbLabel_, measure, wxELLIPSIZE_MIDDLE, width, wxELLIPSIZE_FLAGS_NONE);
    if (label != usbBox_->GetLabelText()) usbBox_->SetLabelText(label);
}

void CVideoControl::ShowUsbVideos(const std::vector<std::string>& names) {
    wxArrayString items;
    for (const std::string& name : names) items.Add(ToWx(name));
    usbVideo_->Set(items);
    if (buttonsAreKnown_) ShowGroups();
}

void CVideoControl::OfferFolders(const std::vector<std::string>& names) {
    choices_[kFolderChoice]->Offer(names);
}
void CVideoControl::OfferLayouts(const std::vector<std::string>& names) {
    choices_[kLayoutChoice]->Offer(names);
}
void CVideoControl::OfferVideos(const std::vector<std::string>& names) {
    choices_[kVideoChoice]->Offer(names);
}

void CVideoControl::StateChanged() {
    state_->SetLabelText(StateText());
    connectionChanged_(run_.IsConnected());
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
    if (run_.IsListUnreadable()) return ToWx(kListUnreadable);
    return ToWx(kStates[static_cast<std::size_t>(run_.CurrentState())]);
}

}  // namespace sontaro
