// The controls of the remote control.
#pragma once

#include <wx/combobox.h>
#include <wx/gauge.h>
#include <wx/panel.h>
#include <wx/slider.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/prompts.h"
#include "devices/device_record.h"
#include "videocontrol/video_control_ids.h"
#include "videocontrol/video_control_run.h"
#include "widgets/name_choice.h"

class wxStaticBoxSizer;

namespace sontaro {

class CaptionButton;

/// Plays one player from afar, over a `VideoControlRun`.
class CVideoControl : public wxPanel, private VideoControlView {
   public:
    /// `player` is shown above the controls. `contentsChanged` is called when the controls need
    /// more or less room than before, and says whether they are going to get more.
    CVideoControl(wxWindow* parent, const DeviceRecord& player, Prompts& prompts,
                  const ExchangeServices& exchange, std::function<bool()> contentsChanged);

    /// Starts to ask the player for its state.
    void Start();
    /// Sends what is still to be sent; nothing happens by itself from then on.
    void Stop() { run_.Closing(); }
    /// Asks for everything anew.
    void ReadAgain() { run_.ReadAgain(); }
    /// Takes a message that the main window forwards.
    void HandleMessage(WindowMessage& message) { run_.Handle(message); }

    /// Calls `changed` with whether there is a link whenever that may be another.
    void OnConnection(std::function<void(bool)> changed) {
        connectionChanged_ = std::move(changed);
    }

   private:
    /// Buttons in a box.
    struct Group {
        wxStaticBoxSizer* sizer;
        std::vector<int> buttons;
        const wxComboBox* names;  ///< that it also offers; may be absent
    };

    void ShowGroups();
    void FitContents();
    void MakeRoomForPosition(const wxString& text);
    void CutUsbLabel();
    [[nodiscard]] bool MaySwitchOff();

    using Chooser = void (VideoControlRun::*)(const std::string&);

    [[nodiscard]] bool IsInFront() const override;
    void HideButtons() override { shownButtons_.clear(); }
    void ShowButton(int type, const std::string& caption) override;
    void ButtonsChanged() override;
    void ShowPosition(int percent, const std::string& text) override;
    void ShowTitle(const std::string& text) override;
    void ShowVolume(int volume) override;
    void ShowUsbLabel(const std::string& text) override;
    void ShowUsbVideos(const std::vector<std::string>& names) override;
    void OfferFolders(const std::vector<std::string>& names) override;
    void OfferLayouts(const std::vector<std::string>& names) override;
    void OfferVideos(const std::vector<std::string>& names) override;
    void StateChanged() override;
    [[nodiscard]] wxString StateText() const;

    [[nodiscard]] wxSizer* MakePlayerRow(const DeviceRecord& player);
    [[nodiscard]] wxSizer* MakePositionRow();
    [[nodiscard]] wxSizer* MakeVolumeGroup();
    [[nodiscard]] wxSizer* MakeVideoGroup();
    [[nodiscard]] wxSizer* MakeUsbGroup();
    [[nodiscard]] wxSizer* MakeChoiceGroup(const LocalText& label, int id, char key,
                                           Chooser chooser);
    [[nodiscard]] wxSizer* MakeChoice(wxWindow* parent, int id, char key, Chooser chooser);
    [[nodiscard]] wxSizer* MakeButtonGroup(const LocalText& label, std::initializer_list<int> ids);
    [[nodiscard]] wxSizer* MakeButtons(wxWindow* parent, std::initializer_list<int> ids);
    [[nodiscard]] CaptionButton* MakeButton(wxWindow* parent, int id);

    const std::string playerIp_;
    Prompts& prompts_;
    std::function<bool()> contentsChanged_;
    VideoControlRun run_;
    std::function<void(bool)> connectionChanged_ = [](bool) {};
    std::map<int, CaptionButton*> buttons_;
    std::vector<Group> groups_;
    bool buttonsAreKnown_ = false;
    std::set<int> shownButtons_;
    std::map<int, std::string> captions_;  // as they are sent; a label would lose an ampersand
    wxStaticText* state_ = nullptr;
    wxStaticText* title_ = nullptr;
    wxStaticText* position_ = nullptr;
    wxGauge* progress_ = nullptr;
    wxSlider* volume_ = nullptr;
    wxStaticText* volumeText_ = nullptr;
    wxStaticBox* usbBox_ = nullptr;
    wxString usbLabel_;  // as long as it is
    wxComboBox* usbVideo_ = nullptr;
    std::map<int, NameChoice*> choices_;
};

}  // namespace sontaro
