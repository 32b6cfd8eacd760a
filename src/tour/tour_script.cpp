#include "tour/tour_script.h"

#include <fmt/core.h>
#include <wx/button.h>
#include <wx/combobox.h>
#include <wx/slider.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <tuple>

#include "app/features.h"
#include "app/main_window.h"
#include "base/json.h"
#include "base/window_titles.h"
#include "devices/remarks_dialog.h"
#include "tour/tour_protocol.h"
#include "tour/tour_settings.h"
#include "videocontrol/video_control_buttons.h"
#include "videocontrol/video_control_dialog.h"
#include "widgets/front_dialog.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

/// The main window, the scan dialog and the remote control.
class TourScript : public TourSteps {
   public:
    using TourSteps::TourSteps;

    void Write() {
        VisitMainWindow();
        VisitScan();
        VisitRemarks();
        ChoosePlayer();
        VisitPlayback();
        VisitChoices();
        LeaveFeature("exit-question");
    }

   private:
    /// Whether the first player has received a remote control command with this text.
    bool Received(int commandId, const char* key, const std::string& text) {
        return std::ranges::any_of(
            Players().Player(0).ReceivedPackets(), [&](const DevicePacket& packet) {
                if (packet.header.command != kCommandVideo || packet.header.subCommand != commandId)
                    return false;
                const auto document = ParseJson(AsText(packet.payload));
                return document && document->isObject() && (*document)[key] == text;
            });
    }

    void VisitMainWindow() {
        Step({}, InFront(Window::kMain), "opened the main window", "main");
        Step(
            Pressing(kAboutButton), [] { return !InFront(Window::kMain)(); },
            "pressed About: name, version, licence and libraries are shown", "about");
        Step(Pressing(wxID_OK), InFront(Window::kMain), "closed About");
        Step(Pressing(FeatureButton(Window::kSetParam)), MessageInFront,
             "pressed Video Set: it says that it is not built yet", "not-built");
        Step(Pressing(wxID_OK), InFront(Window::kMain), "dismissed the message");
    }

    void VisitScan() {
        const auto count = static_cast<int>(Players().Size());
        const auto all = [count] { return List() != nullptr && List()->GetItemCount() == count; };
        Step(Pressing(FeatureButton(Window::kVideoControl)), InFront(Window::kScan),
             "pressed Video Control: the scan dialog is open", "scan-empty");
        Step(Pressing(wxID_OK), MessageInFront, "pressed OK without a player: it asks for one",
             "choose-first");
        Step(Pressing(wxID_OK), InFront(Window::kScan), "dismissed the message");
        Step(Pressing(kScanButton), all, fmt::format("found {} players", count), "scan-running");
        const auto stopped = [] {
            auto* address = Find<wxComboBox>(kScanAddress);
            return address != nullptr && address->IsEnabled();
        };
        Step({}, stopped, "the scan stopped by itself");
    }

    void VisitRemarks() {
        const auto edit = [] {
            wxListEvent activate(wxEVT_LIST_ITEM_ACTIVATED, kScanList);
            activate.SetEventObject(List());
            activate.SetIndex(0);
            List()->GetEventHandler()->AddPendingEvent(activate);
        };
        const std::string remarks =
            CurrentLanguage() == Language::kChinese ? "一号厅左侧" : "Hall 1, left";
        Step(
            edit, [] { return Find<wxTextCtrl>(kRemarksText) != nullptr; },
            "double-clicked a player: its remarks can be edited", "remarks");
        Step([remarks] { Find<wxTextCtrl>(kRemarksText)->SetValue(ToWx(remarks)); },
             [] { return true; }, "typed remarks: " + remarks);
        const auto shown = [remarks] {
            return List() != nullptr &&
                   FromWx(List()->GetItemText(0, static_cast<int>(DeviceColumn::kRemarks))) ==
                       remarks;
        };
        Step(Pressing(wxID_OK), shown, "the list shows the remarks");
    }

    void ChoosePlayer() {
        ChooseFirstPlayer("scan");
        Step(Pressing(wxID_OK), InFront(Window::kVideoControl), "opened the remote control");
        const auto ready = [] {
            const auto* position = Find<wxStaticText>(kPositionText);
            const auto* pause = Find<wxButton>(2110);
            return position != nullptr && pause != nullptr && pause->IsShownOnScreen() &&
                   position->GetLabelText().length() > 11;  // longer than at first
        };
        Step({}, ready, "the player has sent its buttons and where it plays");
    }

    void PressVideoButton(int id, const Check& effect, const std::string& meaning) {
        const std::string caption = VideoButtonOfControl(id).caption;
        Step(
            [this, id] {
                Players().Player(0).ForgetPackets();
                Tour::Press(id);
            },
            [this, caption, effect] {
                return Received(kVideoPlayMode, "playMode", caption) && effect();
            },
            "pressed " + caption + ": player " + Address() + " " + meaning);
    }

    void VisitPlayback() {
        PressVideoButton(
            2110, [this] { return !State().playing; }, "has paused");
        PressVideoButton(
            2109, [this] { return State().playing; }, "is playing");
        PositionMoves();
        for (const VideoButtonControl& button : kVideoButtonControls) {
            if (button.id == 2109 || button.id == 2110 || button.id == 2121) continue;
            PressVideoButton(
                button.id, [] { return true; }, "has taken the command");
        }
        PressVideoButton(
            2121, [this] { return !State().poweredOn; }, "is off");
        PressVideoButton(
            2120, [this] { return State().poweredOn; }, "is on");
        PressVideoButton(
            2109, [this] { return State().playing; }, "is playing");
    }

    void PositionMoves() {
        const auto before = std::make_shared<wxString>();
        Step([before] { *before = Find<wxStaticText>(kPositionText)->GetLabelText(); },
             [before] { return Find<wxStaticText>(kPositionText)->GetLabelText() != *before; },
             "the position moves", "video-control");
    }

    /// Chooses the first name that a drop-down offers.
    void ChooseFirst(int id, int commandId, const char* key, const std::string& what) {
        const auto chosen = std::make_shared<std::string>();
        const auto offered = [id] { return !Find<wxComboBox>(id)->IsListEmpty(); };
        Step({}, offered, "the player offers a " + what);
        const auto choose = [id, chosen] {
            auto* names = Find<wxComboBox>(id);
            names->SetSelection(0);
            *chosen = FromWx(names->GetStringSelection());
            wxCommandEvent choice(wxEVT_COMBOBOX, id);
            choice.SetEventObject(names);
            names->GetEventHandler()->AddPendingEvent(choice);
        };
        Add({choose, [=, this] { return Received(commandId, key, *chosen); },
             [=] { return "chose " + what + " " + *chosen; }, ""});
    }

    void VisitChoices() {
        constexpr int kVolume = 37;
        const auto move = [] {
            auto* slider = Find<wxSlider>(kVolumeSlider);
            slider->SetValue(kVolume);
            wxCommandEvent moved(wxEVT_SLIDER, kVolumeSlider);
            moved.SetEventObject(slider);
            moved.SetInt(kVolume);
            slider->GetEventHandler()->AddPendingEvent(moved);
        };
        Step(
            move, [this] { return State().volume == kVolume; },
            fmt::format("moved the volume: player {} has {}", Address(), kVolume));
        ChooseFirst(kLayoutChoice, kVideoLayout, "layoutName", "layout");
        ChooseFirst(kFolderChoice, kVideoFolder, "type", "folder");
        ChooseFirst(kVideoChoice, kVideoPlayName, "playName", "video");
        ChooseFirst(kUsbVideo, kVideoUsbName, "usbVideoName", "USB video");
        const auto labelled = [] {
            return Find<wxStaticBox>(kUsbLabel)->GetLabelText().length() > 10;
        };
        Step({}, labelled, "the player plays from its USB disk", "video-control-usb");
    }
};

/// The end of the tour.
class TourExit : public TourSteps {
   public:
    using TourSteps::TourSteps;

    void Write() {
        Step(Pressing(wxID_CANCEL), MessageInFront, "pressed Exit: it asks whether to leave",
             "exit");
        Step(Pressing(wxID_YES), {}, "left Sontaro");
    }
};

}  // namespace

void WriteTourScript(Tour& tour, simulator::PlayerGroup& players) {
    // The steps refer to the stations for as long as the tour walks.
    using Stations = std::tuple<TourScript, TourSettings, TourProtocol, TourExit>;
    static std::unique_ptr<Stations> stations;
    stations = std::make_unique<Stations>(TourScript(tour, players), TourSettings(tour, players),
                                          TourProtocol(tour, players), TourExit(tour, players));
    std::apply([](auto&... station) { (station.Write(), ...); }, *stations);
}

}  // namespace sontaro
