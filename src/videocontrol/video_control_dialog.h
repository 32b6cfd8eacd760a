// The remote control of one player.
#pragma once

#include <wx/combobox.h>
#include <wx/gauge.h>
#include <wx/panel.h>
#include <wx/slider.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "devices/device_record.h"
#include "videocontrol/video_control_run.h"
#include "widgets/feature_dialog.h"

class wxButton;

namespace sontaro {

/// Control numbers of the remote control; its buttons have theirs
/// in video_control_buttons.h.
inline constexpr int kVolumeSlider = 2111;
inline constexpr int kProgressBar = 2115;
inline constexpr int kPositionText = 2116;
inline constexpr int kTitleText = 2118;
inline constexpr int kUsbLabel = 2122;
inline constexpr int kUsbVideo = 2125;
inline constexpr int kFolderChoice = 2131;
inline constexpr int kLayoutChoice = 2132;
inline constexpr int kVideoChoice = 2133;

/// The controls of the remote control, over a `VideoControlRun`.
class CVideoControl : public wxPanel, private VideoControlView {
   public:
    /// `player` is shown above the controls.
    CVideoControl(wxWindow* parent, const DeviceRecord& player, const ExchangeServices& exchange);

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
    [[nodiscard]] wxSize NameSize() const;

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
    [[nodiscard]] wxSizer* MakeChoiceGroup(const LocalText& label, int id, Chooser chooser);
    [[nodiscard]] wxSizer* MakeChoice(wxWindow* parent, int id, Chooser chooser);
    [[nodiscard]] wxSizer* MakeButtonGroup(const LocalText& label, std::initializer_list<int> ids);
    [[nodiscard]] wxSizer* MakeButtons(wxWindow* parent, std::initializer_list<int> ids);
    [[nodiscard]] wxButton* MakeButton(wxWindow* parent, int id);

    VideoControlRun run_;
    std::function<void(bool)> connectionChanged_ = [](bool) {};
    std::map<int, wxButton*> buttons_;
    std::set<int> shownButtons_;
    std::map<int, std::string> captions_;  // as they are sent; a label would lose an ampersand
    wxStaticText* state_ = nullptr;
    wxStaticText* title_ = nullptr;
    wxStaticText* position_ = nullptr;
    wxGauge* progress_ = nullptr;
    wxSlider* volume_ = nullptr;
    wxStaticText* volumeText_ = nullptr;
    wxStaticBox* usbBox_ = nullptr;
    wxComboBox* usbVideo_ = nullptr;
    std::map<int, wxComboBox*> choices_;
};

/// The dialog that hosts the remote control on a tab.
class CVideoControlTab : public FeatureDialog {
   public:
    CVideoControlTab(wxWindow* parent, const UiServices& services, const DeviceRecord& player);
    ~CVideoControlTab() override;

   private:
    void HandleMessage(WindowMessage& message) override { control_->HandleMessage(message); }
    void ReadAgain() override { control_->ReadAgain(); }

    CVideoControl* control_ = nullptr;
};

}  // namespace sontaro
