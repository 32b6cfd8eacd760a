#include "widgets/feature_dialog.h"

#include <wx/button.h>
#include <wx/utils.h>

#include "devices/device_rules.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/modal_dialogs.h"
#include "widgets/window_memory.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kOpen = {"打开", "Open"};
constexpr LocalText kSave = {"保存", "Save"};
constexpr LocalText kReadAgain = {"重新读取", "Read again"};
constexpr LocalText kUnsent = {"有修改尚未得到播放器确认，退出后将丢失。",
                               "There are changes that the player has not confirmed. They will be "
                               "lost."};
constexpr LocalText kConnectAgain = {"重新连接", "Connect again"};
constexpr int kHeadingCharacters = 40;

}  // namespace

FeatureDialog::FeatureDialog(wxWindow* parent, Window window, const UiServices& services,
                             Addressing addressing)
    : KeyedDialog(parent, wxID_ANY, ToWx(TitleOf(window)), wxDefaultPosition, wxDefaultSize,
                  wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX),
      services_(services),
      channel_(services_.Directory(), TitleOf(Window::kMain), addressing) {
    RegisterAs(window);
    UseLanguageFont(*this);
    // Without an escape button Escape does nothing, and without a default button neither does
    // Enter: that swallows both where an open cell editor still gets them. A button in focus
    // would take Enter for a press.
    SetEscapeId(wxID_NONE);
    Bind(wxEVT_CHAR_HOOK, &FeatureDialog::OnKey, this);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { ReadAgain(); }, kReadAgainButton);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
        if (!event.CanVeto()) return EndModal(wxID_CANCEL);
        event.Veto();
        if (MayClose()) Leave();
    });
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CANCEL);
    Bind(kKeepEvent, [this](wxCommandEvent&) { RememberPlace(); });
}

void FeatureDialog::RegisterAs(Window window) {
    registration_ = services_.Directory().Register(
        TitleOf(window), [this](WindowMessage& message) { HandleMessage(message); });
}

void FeatureDialog::Rename(Window window) {
    SetTitle(ToWx(TitleOf(window)));
    RegisterAs(window);
}

void FeatureDialog::RestorePlace(const char* name, wxListCtrl* list) {
    placeName_ = name;
    placedList_ = list;
    RestoreWindow(*this, list, name, services_.preferences);
}

void FeatureDialog::RememberPlace() {
    if (placeName_) RememberWindow(*this, placedList_, placeName_, services_.preferences);
}

void FeatureDialog::OnKey(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const bool enter = key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
    const bool onButton = dynamic_cast<wxButton*>(wxWindow::FindFocus()) != nullptr;
    const wxWindow* again = FindWindow(kReadAgainButton);
    if (key == 'R' && event.GetModifiers() == wxMOD_CONTROL && again && again->IsEnabled())
        ReadAgain();
    else if (!enter || !onButton)
        event.Skip();
}

Sending FeatureDialog::BusyChannel::Send(const Target& player, const SharedPacket& packet,
                                         Boxes boxes) {
    const wxBusyCursor busy;
    return MainWindowChannel::Send(player, packet, boxes);
}

wxButton* FeatureDialog::MakeReadAgainButton(wxWindow* parent) {
    auto* button = new wxButton(parent, kReadAgainButton, ButtonLabel(kConnectAgain, 'g'));
    wxSize size = button->GetBestSize();
    button->SetLabel(ButtonLabel(kReadAgain, 'g'));
    size.IncTo(button->GetBestSize());
    button->SetMinSize(size);
    button->SetToolTip("Ctrl+R");
    return button;
}

void FeatureDialog::ShowReadAgain(bool connected) {
    wxWindow* button = FindWindow(kReadAgainButton);
    const wxString label = ButtonLabel(connected ? kReadAgain : kConnectAgain, 'g');
    if (button->GetLabel() != label) button->SetLabel(label);
}

bool FeatureDialog::MayClose() {
    std::string question = Localized(kExitQuestion);
    if (HasUnsentChanges()) question += '\n' + Localized(kUnsent);
    return services_.Messages().Confirm(question);
}

void FeatureDialog::CloseLinks() {
    services_.Directory().Send(TitleOf(Window::kMain),
                               {MessageId::kSendRequest, 0, SendRequest{}, 0});
}

wxSizer* FeatureDialog::MakeButtonRow(bool withOk, const LocalText& cancelText) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->AddStretchSpacer();
    row->AddSpacer(FromDIP(8));  // also where the buttons at the left leave no room
    if (withOk) row->Add(new wxButton(this, wxID_OK, ButtonLabel(kOkText, 'O')));
    row->AddSpacer(FromDIP(8));
    row->Add(new wxButton(this, wxID_CANCEL, ButtonLabel(cancelText, cancelText.english[0])));
    return row;
}

wxSizer* FeatureDialog::MakeFileButtonRow(int openId, int saveId) {
    wxSizer* row = MakeButtonRow(true, kCancelText);
    auto* open = new wxButton(this, openId, ButtonLabel(kOpen, 'p'));
    auto* save = new wxButton(this, saveId, ButtonLabel(kSave, 'S'));
    open->MoveBeforeInTabOrder(FindWindow(wxID_OK));
    save->MoveAfterInTabOrder(open);
    row->Prepend(save);
    row->PrependSpacer(FromDIP(8));
    row->Prepend(open);
    return row;
}

wxStaticText* FeatureDialog::MakeStateLine() {
    auto* line = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                  wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    line->SetMinSize(wxSize(wxDefaultCoord, GetTextExtent(wxString::FromUTF8(kOpen.chinese)).y));
    return line;
}

wxSizer* FeatureDialog::MakeStateRow(wxStaticText*& state) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    state = MakeStateLine();
    row->Add(state, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(8)));
    row->Add(MakeReadAgainButton(this), wxSizerFlags().CentreVertical());
    return row;
}

wxStaticText* FeatureDialog::MakeHeading(const DeviceRecord& player, wxWindow* parent) {
    const wxString text = ToWx(PlayerText(player));
    auto* heading = new wxStaticText(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                     wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    heading->SetFont(heading->GetFont().Bold());
    heading->SetLabelText(text);
    heading->SetToolTip(text);
    wxSize size = heading->GetBestSize();
    size.DecTo(wxSize(kHeadingCharacters * LetterWidth(*this), size.y));
    heading->SetMinSize(size);  // remarks may be longer than a dialog is wide
    return heading;
}

}  // namespace sontaro
