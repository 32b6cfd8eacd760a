// Real windows for tests: they are shown, pressed and read.
#pragma once

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/grid.h>
#include <wx/modalhook.h>
#include <wx/propgrid/propgrid.h>
#include <wx/stattext.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>
#include <wx/weakref.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <functional>

#include "app/main_window.h"
#include "simulator/player_group.h"
#include "support/literals.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"
#include "support/test_network.h"
#include "venue/document_keeper.h"
#include "widgets/earlier_settings.h"
#include "widgets/ui_gate.h"
#include "widgets/wx_text.h"

namespace sontaro::test {

/// Runs the event loop until `holds`; false after `limit` milliseconds.
template <class Predicate>
bool PumpUntil(Predicate holds, long limit = 10000) {
    for (const wxStopWatch watch;;) {
        wxTheApp->Yield(true);
        if (holds()) return true;
        if (watch.Time() > limit) return false;
        wxMilliSleep(2);
    }
}

/// Presses a button as a click does; its handler has run when this returns.
inline void Press(wxWindow* window, int id) {
    auto* button = dynamic_cast<wxButton*>(window->FindWindow(id));
    ASSERT_TRUE(button && button->IsShown() && button->IsEnabled()) << "button " << id;
    wxCommandEvent press(wxEVT_BUTTON, id);
    press.SetEventObject(button);
    button->GetEventHandler()->ProcessEvent(press);
}

/// Clicks on the middle of a window with the mouse.
inline void Click(wxWindow* window) {
    const wxSize size = window->GetSize();
    wxUIActionSimulator mouse;
    mouse.MouseMove(window->ClientToScreen(wxPoint(size.x / 2, size.y / 2)));
    mouse.MouseClick();
}

/// Lets the windows do what is due, and what the system does after them.
inline void Settle() {
    PumpUntil([] { return false; }, 150);
}

/// Presses a key, where the keyboard is.
inline void Key(int key, int modifiers = wxMOD_NONE) {
    wxUIActionSimulator().Char(key, modifiers);
    Settle();
}

/// Types into a cell of a grid as a hand does, but for the Enter at the end.
inline void TypeInCell(wxPropertyGrid& grid, const char* row, const char* text) {
    wxGetTopLevelParent(&grid)->Raise();
    grid.SelectProperty(row, true);
    wxTextCtrl* editor = grid.GetEditorTextCtrl();
    editor->SetFocus();
    ASSERT_TRUE(PumpUntil([&] { return editor->HasFocus(); }));
    editor->SelectAll();
    wxUIActionSimulator().Text(text);
    ASSERT_TRUE(PumpUntil([&] { return editor->GetValue() == text; }));
}

/// Turns the mouse wheel over a point of a control.
inline void TurnWheel(wxWindow& control, const wxPoint& at) {
    wxUIActionSimulator().MouseMove(control.ClientToScreen(at));
    Settle();
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): the toolkit's own way to wait
    EXPECT_EQ(std::system("xdotool click 5"), 0);  // never ends under a sanitizer
    Settle();
}

template <class Control>
Control* Find(wxWindow* window, int id) {
    return dynamic_cast<Control*>(window->FindWindow(id));
}

/// Whether one of a window's lines of text says `text`.
// NOLINTNEXTLINE(misc-no-recursion): windows stand within windows
inline bool Says(wxWindow* window, const std::string& text) {
    const auto* line = dynamic_cast<wxStaticText*>(window);
    return (line && line->IsShown() && FromWx(line->GetLabelText()) == text) ||
           std::ranges::any_of(window->GetChildren(),
                               [&](wxWindow* child) { return Says(child, text); });
}

/// What is done in each modal dialog that opens, in order. Dialogs are really shown.
class ModalScript : public wxModalDialogHook {
   public:
    using Step = std::function<void(wxDialog*)>;

    ModalScript(std::initializer_list<Step> steps) : steps_(steps) { Register(); }
    /// One more dialog is going to open.
    void Expect(Step step) { steps_.push_back(std::move(step)); }
    ~ModalScript() override { EXPECT_TRUE(steps_.empty()) << "a dialog did not open"; }

   private:
    int Enter(wxDialog* dialog) override {
        if (!open_.empty() && open_.back() == dialog) return wxID_NONE;  // told twice of some
        if (steps_.empty()) {
            ADD_FAILURE() << "unexpected dialog " << FromWx(dialog->GetTitle());
            return wxID_CANCEL;
        }
        open_.push_back(dialog);
        dialog->CallAfter([step = std::move(steps_.front()), dialog] { step(dialog); });
        steps_.pop_front();
        return wxID_NONE;
    }
    void Exit(wxDialog* dialog) override {
        if (!open_.empty() && open_.back() == dialog) open_.pop_back();
    }

    std::deque<Step> steps_;
    std::vector<wxDialog*> open_;
};

/// The services of the program with recorded message boxes, in a network of the test's own.
class UiTest : public testing::Test {
   protected:
    UiTest() { SetApplicationTitle("Sontaro test"); }
    ~UiTest() override {
        directory.ShutDown();
        SetLanguage(Language::kEnglish);
    }

    void StartPlayers(std::size_t count) {
        simulator::LineUpOptions options;
        options.count = count;
        options.baseAddress = network.Player(0);
        players = std::make_unique<simulator::PlayerGroup>(*simulator::LineUp(options));
        ASSERT_TRUE(players->Start());
    }

    [[nodiscard]] ScanSetup Scan() { return {remarks, FormatIpv4(network.Local())}; }

    CSontaroDlg* OpenMainWindow() {
        auto* window = new CSontaroDlg(services, {folder.Path() / "Temp", Scan(), 0});
        window->Show();
        return window;
    }

    TemporaryFolder folder;
    TestNetwork network;
    std::unique_ptr<simulator::PlayerGroup> players;
    UiGate gate;
    WindowDirectory directory{gate};
    RecordingPrompts prompts;
    ThreadGroup threads;
    JsonFile preferences{folder / "preferences.json"};
    DeviceRemarks remarks{folder / "remarks.json"};
    ExchangeHub hub;
    DocumentKeeper documents{folder / "earlier", gate, threads};
    UiServices services{
        {directory, threads, prompts}, hub, gate, preferences, documents, folder.Path()};
};

/// Dialogs of features over a real main window, with a player that is simulated.
struct FeatureTest : UiTest {
    /// Opens one for the player, takes `step` there, and leaves it with a yes.
    template <class Dialog>
    void RunDialog(const std::function<void()>& step) {
        if (!players) StartPlayers(1);
        const wxWeakRef<CSontaroDlg> window = OpenMainWindow();
        script.Expect([&](wxDialog* opened) {
            dialog = opened;
            step();
            prompts.answers = {true};
            Press(dialog, wxID_CANCEL);
        });
        DeviceRecord record;
        record.ip = FormatIpv4(Player().Address().address);
        record.tcpPort = Player().Address().port;
        Dialog(nullptr, services, record).ShowModal();
        window->Destroy();
        EXPECT_TRUE(PumpUntil([&] { return !window; }));
    }
    /// Opens what the player held before it was last written over.
    void OpenEarlier() {
        script.Expect([](wxDialog* earlier) {
            auto* grid = Find<wxGrid>(earlier, kEarlierGrid);
            EXPECT_TRUE(PumpUntil([&] { return grid->GetNumberRows() > 0; }));
            Press(earlier, wxID_OK);
        });
        Press(dialog, kEarlierButton);
    }
    simulator::SimulatedPlayer& Player() { return players->Player(0); }
    /// What the user has been told since the last call.
    std::vector<Box> Told() { return std::exchange(prompts.boxes, {}); }

    ModalScript script{};
    wxDialog* dialog = nullptr;
};

}  // namespace sontaro::test
