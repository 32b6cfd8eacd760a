#include "widgets/earlier_settings.h"

#include <wx/button.h>
#include <wx/sizer.h>

#include <utility>

#include "widgets/common_texts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kEarlier = {"历史…", "Earlier..."};
constexpr LocalText kTip = {"每次发送前保存的播放器设置（Ctrl+H）",
                            "Settings that the player held before others were sent to it (Ctrl+H)"};
constexpr int kGap = 8;

}  // namespace

EarlierSettings::EarlierSettings(wxWindow& owner, wxSizer& foot, int openId,
                                 const UiServices& services, SettingsBlock block,
                                 EarlierActions actions)
    : owner_(owner),
      services_(services),
      actions_(std::move(actions)),
      keeping_(services.documents, block, actions_.changed) {
    auto* button = new wxButton(&owner, kEarlierButton, ToWx(kEarlier));
    button->SetToolTip(ToWx(kTip));
    button->MoveAfterInTabOrder(owner.FindWindow(openId));
    foot.Insert(1, button, wxSizerFlags().CentreVertical().Border(wxLEFT, owner.FromDIP(kGap)));
    button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Choose(); });
    wxGetTopLevelParent(&owner)->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const bool isMine = event.GetModifiers() == wxMOD_CONTROL && event.GetKeyCode() == 'H' &&
                            owner_.IsShown() && owner_.FindWindow(kEarlierButton)->IsEnabled();
        if (!isMine) return event.Skip();
        Choose();
    });
}

EarlierSettings::EarlierSettings(wxWindow& owner, wxSizer& foot, int openId,
                                 const UiServices& services, const DeviceRecord& player,
                                 SettingsRun& run, std::function<bool()> commit,
                                 std::function<void()> changed)
    : EarlierSettings(owner, foot, openId, services, run.Block(),
                      {[&run, player] {
                           return EarlierQuestion{player, run.Block(), run.Held()};
                       },
                       [&run](const std::string& text) { run.OpenEarlier(text); },
                       std::move(commit), std::move(changed)}) {
    run.KeepBy([this, player](std::string text) { Keep(player, std::move(text)); });
}

void EarlierSettings::Choose() {
    if (!actions_.commit()) return;
    const auto text = ChooseEarlier(&owner_, services_, actions_.question());
    if (text) actions_.open(*text);
}

void EarlierSettings::Enable(bool enabled) { owner_.FindWindow(kEarlierButton)->Enable(enabled); }

std::string EarlierSettings::WithTrouble(std::string text) const {
    if (!keeping_.Trouble().empty()) AddSentence(text, kCautionMark + keeping_.Trouble());
    return text;
}

void EarlierSettings::ShowState(wxStaticText& line, const std::string& text) const {
    const wxString shown = ToWx(WithTrouble(text));
    line.SetLabelText(shown);
    line.SetToolTip(shown);
}

}  // namespace sontaro
