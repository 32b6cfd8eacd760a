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
#include "base/window_titles.h"
#include "devices/remarks_dialog.h"
#include "simulator/playback.h"
#include "tour/tour_player_control.h"
#include "tour/tour_protocol.h"
#include "tour/tour_screen_split.h"
#include "tour/tour_settings.h"
#include "tour/tour_timeline.h"
#include "tour/tour_video_set.h"
#include "videocontrol/video_control_buttons.h"
#include "videocontrol/video_control_dialog.h"
#include "widgets/front_dialog.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

using simulator::Action;
using simulator::PlayerState;

constexpr int kPowerOff = 2121;

/// A button of the remote control, and what becomes of the player.
struct PlaybackStep {
    int id;
    const char* meaning;
    bool (*done)(const PlayerState& before, const PlayerState& now);
};

template <Action mode>
bool IsIn(const PlayerState&, const PlayerState& now) {
    return now.playMode == mode;
}
template <bool playing>
bool Plays(const PlayerState&, const PlayerState& now) {
    return now.playing == playing;
}
template <bool on>
bool HasPower(const PlayerState&, const PlayerState& now) {
    return now.poweredOn == on;
}
template <bool usb>
bool HasMoved(const PlayerState& before, const PlayerState& now) {
    return now.playingUsb == usb && now.video != before.video;
}
bool HasSwitchedEffect(const PlayerState& before, const PlayerState& now) {
    return now.screenEffect != before.screenEffect;
}

constexpr PlaybackStep kPlayback[] = {
    {2110, "has paused", Plays<false>},
    {2109, "is playing", Plays<true>},
    {2105, "repeats one video", IsIn<Action::kSingleLoop>},
    {2106, "plays one video", IsIn<Action::kSinglePlay>},
    {2107, "plays a folder at random", IsIn<Action::kFolderRandom>},
    {2108, "plays everything at random", IsIn<Action::kAllRandom>},
    {2104, "repeats a folder", IsIn<Action::kFolderLoop>},
    {2114, "plays the next video", HasMoved<false>},
    {2113, "plays the video before", HasMoved<false>},
    {2126, "has switched its effect", HasSwitchedEffect},
    {kPowerOff, "is off", HasPower<false>},
    {2120, "is on", HasPower<true>},
};

constexpr PlaybackStep kUsbPlayback[] = {
    {2123, "plays the next video of its USB disk", HasMoved<true>},
    {2124, "plays the one before", HasMoved<true>},
};

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
    void VisitMainWindow() {
        Step({}, InFront(Window::kMain), "opened the main window", "main");
        Step(
            Pressing(kAboutButton), [] { return !InFront(Window::kMain)(); },
            "pressed About: name, version, licence and libraries are shown", "about");
        Step(Pressing(wxID_OK), InFront(Window::kMain), "closed About");
    }

    void VisitScan() {
        const auto count = static_cast<int>(Players().Size());
        const auto all = [count] { return List() != nullptr && List()->GetItemCount() == count; };
        Step(Pressing(FeatureButton(Window::kVideoControl)), InFront(Window::kScan),
             "pressed Video Control: the scan dialog is open", "scan-empty");
        Step(Pressing(wxID_OK), NoticeInFront, "pressed OK without a player: it asks for one",
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
             [remarks] { return Find<wxTextCtrl>(kRemarksText)->GetValue() == ToWx(remarks); },
             "typed remarks: " + remarks);
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

    /// Presses a button, and looks at what has become of the player.
    void PressVideoButton(const PlaybackStep& step) {
        const std::string line = std::string("pressed ") + VideoButtonOfControl(step.id).caption +
                                 ": player " + Address() + " " + step.meaning;
        const auto before = std::make_shared<PlayerState>();
        const auto press = [this, before, id = step.id] {
            *before = State();
            Tour::Press(id);
        };
        const auto done = [this, before, done = step.done] { return done(*before, State()); };
        if (step.id != kPowerOff) return Step(press, done, line);
        Step(press, QuestionInFront, "pressed it to switch the player off: it asks", "power-off");
        Step(Pressing(wxID_YES), done, line);
    }

    void VisitPlayback() {
        for (const PlaybackStep& step : kPlayback) PressVideoButton(step);
        PositionMoves();
    }

    void PositionMoves() {
        const auto before = std::make_shared<wxString>();
        Step([before] { *before = Find<wxStaticText>(kPositionText)->GetLabelText(); },
             [before] { return Find<wxStaticText>(kPositionText)->GetLabelText() != *before; },
             "the position moves", "video-control");
    }

    using Chosen = bool (*)(const PlayerState& state, const std::string& name);

    /// Chooses the first name of a drop-down that makes a difference, which `chosen` says.
    void Choose(int id, const std::string& what, Chosen chosen, const std::string& picture = "") {
        const auto name = std::make_shared<std::string>();
        const auto offered = [this, id, name, chosen] {
            const wxArrayString names = Find<wxComboBox>(id)->GetStrings();
            const auto other = std::ranges::find_if(
                names, [&](const wxString& offer) { return !chosen(State(), FromWx(offer)); });
            if (other != names.end()) *name = FromWx(*other);
            return other != names.end();
        };
        Step({}, offered, "the player offers a " + what + " that is not shown");
        const auto choose = [id, name] {
            auto* names = Find<wxComboBox>(id);
            names->SetStringSelection(ToWx(*name));
            wxCommandEvent choice(wxEVT_COMBOBOX, id);
            choice.SetEventObject(names);
            names->GetEventHandler()->AddPendingEvent(choice);
        };
        Add({choose, [=, this] { return chosen(State(), *name); },
             [=, this] {
                 return "chose " + what + " " + *name + ": player " + Address() + " shows it";
             },
             picture});
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
        Choose(kLayoutChoice, "layout", [](const PlayerState& state, const std::string& name) {
            return state.layout == name + ".lay";
        });
        const Chosen fromUsb = [](const PlayerState& state, const std::string& name) {
            return state.playingUsb && CurrentVideo(state)->name == name;
        };
        const auto listed = [this] {
            const wxArrayString folders = Find<wxComboBox>(kFolderChoice)->GetStrings();
            return std::ranges::all_of(State().folders, [&](const auto& folder) {
                return folders.Index(ToWx(folder.name)) != wxNOT_FOUND;
            });
        };
        Step({}, listed, "every folder that the player lists can be chosen");
        Choose(kUsbVideo, "USB video", fromUsb);
        for (const PlaybackStep& step : kUsbPlayback) PressVideoButton(step);
        Choose(kFolderChoice, "folder", [](const PlayerState& state, const std::string& name) {
            return !state.playingUsb && CurrentFolder(state)->name == name;
        });
        Choose(kUsbVideo, "USB video", fromUsb);
        Choose(kVideoChoice, "video", [](const PlayerState& state, const std::string& name) {
            return !state.playingUsb && CurrentVideo(state)->name == name;
        });
        Choose(kUsbVideo, "USB video", fromUsb);
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
        Step(Pressing(wxID_CANCEL), QuestionInFront, "pressed Exit: it asks whether to leave",
             "exit");
        Step(Pressing(wxID_YES), {}, "left Sontaro");
    }
};

}  // namespace

void WriteTourScript(Tour& tour, simulator::PlayerGroup& players,
                     const std::filesystem::path& films) {
    // The steps refer to the stations for as long as the tour walks.
    using Stations = std::tuple<TourScript, TourSettings, TourPlayerControl, TourTimeline,
                                TourScreenSplit, TourVideoSet, TourProtocol, TourExit>;
    static std::unique_ptr<Stations> stations;
    stations = std::make_unique<Stations>(
        TourScript(tour, players), TourSettings(tour, players), TourPlayerControl(tour, players),
        TourTimeline(tour, players), TourScreenSplit(tour, players),
        TourVideoSet(tour, players, films), TourProtocol(tour, players), TourExit(tour, players));
    std::apply([](auto&... station) { (station.Write(), ...); }, *stations);
}

}  // namespace sontaro
