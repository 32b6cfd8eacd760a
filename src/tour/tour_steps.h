// What the stations of the tour have in common.
#pragma once

#include <wx/listctrl.h>

#include <functional>
#include <string>

#include "base/window_titles.h"
#include "devices/device_list.h"
#include "simulator/player_group.h"
#include "tour/tour.h"

namespace sontaro {

/// Writes steps into a tour. Everything it refers to outlives the tour, and so does it itself.
class TourSteps {
   public:
    TourSteps(Tour& tour, simulator::PlayerGroup& players) : tour_(tour), players_(players) {}

   protected:
    using Check = std::function<bool()>;

    void Step(std::function<void()> act, Check done, const std::string& line,
              const std::string& picture = "") {
        Add({std::move(act), std::move(done), [line] { return line; }, picture});
    }

    static std::function<void()> Pressing(int id) {
        return [id] { Tour::Press(id); };
    }

    static Check InFront(Window window) {
        return [window] { return Tour::FrontTitled(TitleOf(window)) != nullptr; };
    }

    /// Whether a message box is in front that asks something, or one that tells something.
    [[nodiscard]] static bool QuestionInFront();
    [[nodiscard]] static bool NoticeInFront();

    /// A control of the window in front; absent when it has no such one.
    template <class Control>
    static Control* Find(int id) {
        wxWindow* front = FrontWindow();
        return front ? dynamic_cast<Control*>(front->FindWindow(id)) : nullptr;
    }

    /// The list of players while the scan dialog is in front.
    static DeviceList* List();

    /// Ticks the first rows of a list of players as clicks do: a change that the program makes is
    /// told on some systems alone, as the list asks for its rows.
    static void TickFirst(DeviceList& list, long count);

    /// Opens a feature, and chooses the first player for it in the scan dialog.
    void OpenFeature(Window window);

    /// Chooses the first player in the scan dialog, which is open and has found it.
    void ChooseFirstPlayer(const std::string& picture = "");

    /// Leaves the feature in front by Cancel and a Yes.
    void LeaveFeature(const std::string& picture = "");

    /// Has a player have faults from now on; an empty script has none.
    void Fault(std::size_t player, const char* script, const std::string& line);

    simulator::PlayerState State() { return Players().Player(0).State(); }
    std::string Address() { return FormatIpv4(Players().Player(0).Address().address); }

    [[nodiscard]] simulator::PlayerGroup& Players() { return players_; }
    void Add(Tour::Step step) { tour_.Add(std::move(step)); }

   private:
    static wxWindow* FrontWindow();

    Tour& tour_;
    simulator::PlayerGroup& players_;
};

}  // namespace sontaro
