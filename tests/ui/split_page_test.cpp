#include <gmock/gmock.h>
#include <wx/grid.h>
#include <wx/notebook.h>

#include "app/features.h"
#include "base/json.h"
#include "screensplit/screen_split_wizard_set_param.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kNotApplied = "The order has not been applied yet.";
constexpr const char* kOverlap = "Split/2/Overlap";
const Box kExit = Question("Do you really want to exit?");
const Box kLosing = Question(
    "Do you really want to exit?\nThere are changes that the player has not confirmed. They will "
    "be lost.");
const Box kDone = Notice("Screen split param setup completed");

enum Tab { kSort, kSplit, kZoom, kAdvanced };

/// The wizard over a main window, with two players: the first one has two screens.
struct SplitPageTest : UiTest {
    ~SplitPageTest() override {
        EXPECT_TRUE(PumpUntil([&] { return !window; }));
    }

    /// Opens the wizard, ticks both players, goes on, takes `step`, and leaves with a yes.
    void Run(const std::function<void()>& step) {
        StartPlayers(2);
        for (const int outputs : {2, 1})
            players->Player(static_cast<std::size_t>(2 - outputs)).ChangeState([=](auto& state) {
                state.screens.outputs = outputs;
            });
        window = OpenMainWindow();
        ModalScript script{[&](wxDialog* opened) {
            dialog = opened;
            Press(dialog, kSplitScan);
            auto* list = Find<DeviceList>(dialog, kSplitList);
            ASSERT_TRUE(PumpUntil([&] { return list->GetItemCount() == 2; }));
            Press(dialog, kSplitScan);
            Press(dialog, kSplitSelectAll);
            Press(dialog, wxID_FORWARD);
            step();
            if (!dialog) return;
            prompts.answers = {true};
            Press(dialog, wxID_CANCEL);
        }};
        open = &script;
        wxCommandEvent press(wxEVT_BUTTON, FeatureButton(Window::kSelectDevices));
        window->GetEventHandler()->ProcessEvent(press);
        window->Destroy();
    }
    void Fault(std::size_t player, const char* script) {
        players->Player(player).SetFaults(*simulator::ParseFaultScript(script));
    }

    [[nodiscard]] std::string State() const {
        return FromWx(Find<wxStaticText>(dialog, kSplitState)->GetLabelText());
    }
    void Await(const std::string& state) {
        PumpUntil([&] { return State() == state; });
        EXPECT_EQ(State(), state);
    }
    /// The players have been asked for all that they are asked for before anything is sent.
    void AwaitComparison() {
        Await(kNotApplied);
        EXPECT_TRUE(PumpUntil([&] { return Requests(0, kBlockScreenSplitRead) == 1; }));
        Settle();
    }
    [[nodiscard]] bool Enabled(int id) const { return dialog->FindWindow(id)->IsEnabled(); }
    [[nodiscard]] wxPropertyGrid& Grid(Tab tab) const {
        return *Find<wxPropertyGrid>(dialog, kSplitGrid + tab);
    }
    [[nodiscard]] std::string ValueOf(Tab tab, const char* row) const {
        return Grid(tab).GetPropertyByName(row) ? FromWx(Grid(tab).GetPropertyValueAsString(row))
                                                : "";
    }
    /// Turns to a grid and types into a row there, with an Enter at the end.
    void Type(Tab tab, const char* row, const char* text) {
        Find<wxNotebook>(dialog, kSplitTabs)->SetSelection(tab);
        Settle();
        TypeInCell(Grid(tab), row, text);
        Key(WXK_RETURN);
    }
    void Choose(const char* slot, const std::string& screen) {
        EXPECT_TRUE(Grid(kSort).ChangePropertyValue(slot, ToWx(screen)));
    }
    [[nodiscard]] std::string Address(std::size_t player) const {
        return FormatIpv4(network.Player(player));
    }
    [[nodiscard]] std::string Screen(std::size_t player, int output) const {
        return Address(player) + '-' + std::to_string(output) + "Screen";
    }
    std::vector<Box> Told() { return std::exchange(prompts.boxes, {}); }
    [[nodiscard]] std::ptrdiff_t Requests(std::size_t player, std::uint16_t block) const {
        const auto packets = players->Player(player).ReceivedPackets();
        return std::ranges::count(packets, block,
                                  [](const auto& packet) { return packet.header.subCommand; });
    }
    [[nodiscard]] std::ptrdiff_t Sent(std::size_t player) const {
        return Requests(player, kBlockScreenSplitWrite);
    }
    void AwaitBox() {
        EXPECT_TRUE(PumpUntil([&] { return !prompts.boxes.empty(); }));
    }
    /// Where the second screen begins in what the last player holds.
    [[nodiscard]] int SecondLeft() const {
        const Json::Value wall = *ParseJson(players->Player(1).State().wall);
        return wall["configData"]["channelShowArea"][1]["leftTopX"].asInt();
    }

    wxWeakRef<CSontaroDlg> window;
    wxWeakRef<wxDialog> dialog;
    ModalScript* open = nullptr;
};

TEST_F(SplitPageTest, SendsTheWallToAllPlayersAndFetchesItAgain) {
    Run([&] {
        AwaitComparison();
        EXPECT_EQ(ValueOf(kSort, "Sort/3"), Screen(1, 1));
        EXPECT_TRUE(Grid(kSort).GetPropertyByName("Sort")->IsExpanded());
        Press(dialog, kSplitApply);
        Await("Edited, not sent.");
        Type(kSplit, kOverlap, "100");
        Press(dialog, wxID_FORWARD);
        EXPECT_FALSE(Enabled(wxID_FORWARD) || Enabled(wxID_BACKWARD) || Enabled(kSplitApply));
        wxCommandEvent again(wxEVT_BUTTON, wxID_FORWARD);
        dialog->GetEventHandler()->ProcessEvent(again);
        EXPECT_TRUE(dialog->FindWindow(kSplitProgress)->IsShown());
        AwaitBox();
        EXPECT_THAT(Told(), ElementsAre(kDone));
        Await("Sent and confirmed by 2 of 2 players.");
        EXPECT_FALSE(dialog->FindWindow(kSplitProgress)->IsShown());
        EXPECT_FALSE(Grid(kSplit).IsPropertyModified(kOverlap));
        EXPECT_EQ(players->Player(1).State().wall, players->Player(0).State().wall);
        EXPECT_EQ(SecondLeft(), 1820);
        EXPECT_EQ(Sent(0), 1);
        Press(dialog, wxID_BACKWARD);
        EXPECT_TRUE(directory.Find("Select devices"));
        Press(dialog, wxID_FORWARD);
        Await("As fetched.");
        EXPECT_EQ(ValueOf(kSplit, kOverlap), "100");
    });
    EXPECT_THAT(Told(), ElementsAre(kExit));
}

TEST_F(SplitPageTest, OpensAWallThatThePlayersHeldEarlier) {
    Run([&] {
        AwaitComparison();
        Press(dialog, kSplitApply);
        for (const char* overlap : {"100", "50"}) {
            Type(kSplit, kOverlap, overlap);
            Press(dialog, wxID_FORWARD);
            AwaitBox();
            EXPECT_THAT(Told(), ElementsAre(kDone));
        }
        open->Expect([&](wxDialog* earlier) {
            auto* grid = Find<wxGrid>(earlier, kEarlierGrid);
            EXPECT_TRUE(PumpUntil([&] { return grid->GetNumberRows() == 2; }));
            Press(earlier, wxID_OK);
        });
        Press(dialog, kEarlierButton);
        EXPECT_EQ(ValueOf(kSplit, kOverlap), "100");
        Await("Edited, not sent.");
        Press(dialog, kUndoButton);
        EXPECT_EQ(ValueOf(kSplit, kOverlap), "50");
    });
}

TEST_F(SplitPageTest, OffersNoWallOfTheSetBefore) {
    Run([&] {
        AwaitComparison();
        Press(dialog, wxID_FORWARD);
        Await("Sent and confirmed by 2 of 2 players.");
        Type(kSplit, kOverlap, "5");
        EXPECT_TRUE(Enabled(kSplitLastWall));
        Press(dialog, wxID_BACKWARD);
        Fault(1, "bad-json");
        players->Player(0).ChangeState([](auto& state) { state.screens.outputs = 1; });
        Press(dialog, wxID_FORWARD);
        EXPECT_TRUE(PumpUntil([&] { return Enabled(kSplitRetry); }));
        EXPECT_TRUE(Enabled(kSplitApply));
        EXPECT_FALSE(Enabled(kSplitLastWall));
    });
}

TEST_F(SplitPageTest, StopsAtAPlayerWithoutCorrectionUntilRetry) {
    Run([&] {
        Fault(1, "no-correction");
        const std::string failed = "⚠ " + Address(1);
        EXPECT_TRUE(PumpUntil([&] { return State().starts_with(failed); }));
        EXPECT_THAT(Told(),
                    ElementsAre(Warning("Please adjust geometric correction and fusion first")));
        for (const int id :
             {kSplitApply, kSplitAdvanced, kSplitSave, static_cast<int>(wxID_FORWARD)})
            EXPECT_FALSE(Enabled(id)) << id;
        Fault(1, "bad-json");
        Press(dialog, kSplitRetry);
        EXPECT_FALSE(Enabled(kSplitRetry));
        Await(failed + ": the configuration that it has sent cannot be read.");
        EXPECT_TRUE(Enabled(kSplitApply));
        EXPECT_FALSE(Enabled(kSplitAdvanced) || Enabled(wxID_FORWARD));
        Fault(1, "");
        Press(dialog, kSplitRetry);
        Await(kNotApplied);
        EXPECT_TRUE(Enabled(kSplitAdvanced) && Enabled(wxID_FORWARD));
    });
    EXPECT_THAT(Told(), ElementsAre(kExit));
}

TEST_F(SplitPageTest, RefusesAnOrderAndCanBePressedAgain) {
    Run([&] {
        AwaitComparison();
        prompts.whileShown = [&] { EXPECT_FALSE(Enabled(kSplitApply)); };
        Choose("Sort/2", Screen(0, 1));
        Press(dialog, kSplitApply);
        EXPECT_THAT(Told(), ElementsAre(Warning("The screen cannot be reused")));
        prompts.whileShown = [] {};
        EXPECT_TRUE(Enabled(kSplitApply));
        for (const char* slot : {"Sort/1", "Sort/2", "Sort/3"}) Choose(slot, "Invalid");
        Press(dialog, wxID_FORWARD);
        EXPECT_THAT(Told(), ElementsAre(Warning("Please tick the devices!")));
        EXPECT_EQ(Sent(0), 0);
    });
    EXPECT_THAT(Told(), ElementsAre(kLosing));
}

TEST_F(SplitPageTest, UndoesByKeysOverAllGrids) {
    Run([&] {
        AwaitComparison();
        Choose("Sort/3", "Invalid");
        Press(dialog, kSplitApply);
        Type(kSplit, kOverlap, "7");
        Type(kZoom, "Zoom/1/Left", "30");
        Press(dialog, kSplitAdvanced);
        Type(kAdvanced, "varParam/syncMaster", "2");
        Find<wxNotebook>(dialog, kSplitTabs)->SetSelection(kSort);
        dialog->FindWindow(wxID_FORWARD)->SetFocus();
        Key('Z', wxMOD_CONTROL);
        EXPECT_EQ(ValueOf(kAdvanced, "varParam/syncMaster"), "1");
        EXPECT_TRUE(Grid(kAdvanced).IsShownOnScreen());
        Key('Z', wxMOD_CONTROL);
        EXPECT_EQ(ValueOf(kZoom, "Zoom/1/Left"), "0");
        EXPECT_TRUE(Grid(kZoom).IsShownOnScreen());
        Key('Z', wxMOD_CONTROL);
        EXPECT_EQ(ValueOf(kSplit, kOverlap), "0");
        Key('Z', wxMOD_CONTROL), Key('Z', wxMOD_CONTROL);
        EXPECT_EQ(ValueOf(kSort, "Sort/3"), Screen(1, 1));
        EXPECT_FALSE(Enabled(kUndoButton));
        for (int i = 0; i < 5; ++i) Key('Y', wxMOD_CONTROL);
        EXPECT_EQ(ValueOf(kAdvanced, "varParam/syncMaster"), "2");
        EXPECT_EQ(ValueOf(kSplit, kOverlap), "7");
        Press(dialog, wxID_BACKWARD);
        Key('Z', wxMOD_CONTROL);
        Press(dialog, wxID_FORWARD);
        Await("Edited, not sent.");
        EXPECT_EQ(ValueOf(kSplit, kOverlap), "7");
    });
    EXPECT_THAT(Told(), ElementsAre(kLosing));
}

TEST_F(SplitPageTest, KeepsWhatIsBeingTypedWhenTheDocumentComes) {
    Run([&] {
        AwaitComparison();
        Press(dialog, kSplitApply);
        Fault(1, "unread=12");
        Press(dialog, wxID_BACKWARD);
        Press(dialog, wxID_FORWARD);
        EXPECT_TRUE(PumpUntil([&] { return State().starts_with("Fetching the screen split"); }));
        Find<wxNotebook>(dialog, kSplitTabs)->SetSelection(kSplit);
        TypeInCell(Grid(kSplit), kOverlap, "64");
        Fault(1, "");
        Await("Edited, not sent.");
        EXPECT_EQ(Grid(kSplit).GetEditorTextCtrl()->GetValue(), "64");
        prompts.answers = {true};  // should the other player's settings not be known yet
        Press(dialog, wxID_FORWARD);
        EXPECT_TRUE(PumpUntil([&] { return SecondLeft() == 1856; }));
    });
}

TEST_F(SplitPageTest, TakesOverFromThePlayersFromAFileAndFromTheLastTime) {
    prompts.file = folder / "wall.JSON";
    Run([&] {
        AwaitComparison();
        EXPECT_FALSE(Enabled(kSplitLastWall));
        Press(dialog, kSplitTakeOver);
        Await("As fetched.");
        EXPECT_EQ(ValueOf(kSort, "Sort/1"), Screen(0, 2));
        EXPECT_EQ(ValueOf(kZoom, "Zoom/0/Right"), "24");
        EXPECT_FALSE(Grid(kZoom).IsPropertyModified("Zoom/0/Right"));
        Press(dialog, wxID_FORWARD);
        AwaitBox();
        Press(dialog, kSplitSave);
        EXPECT_FALSE(Enabled(kSplitLastWall));
        Find<wxTextCtrl>(dialog, kSplitOverlap)->SetValue("1920");
        Press(dialog, kSplitSameOverlap);
        EXPECT_EQ(prompts.boxes.back(), Warning("Input out of range"));
        Find<wxTextCtrl>(dialog, kSplitOverlap)->SetValue("16");
        for (const int back : {kSplitLastWall, kSplitOpen, kSplitAsFetched, kUndoButton}) {
            Press(dialog, kSplitSameOverlap);
            EXPECT_EQ(ValueOf(kSplit, "Split/3/Overlap"), "16");
            EXPECT_TRUE(Grid(kSplit).IsPropertyModified("Split/3/Overlap"));
            Press(dialog, back);
            EXPECT_EQ(ValueOf(kSplit, "Split/3/Overlap"), "64") << back;
        }
        Told();
    });
    EXPECT_THAT(Told(), ElementsAre(kExit));
}

TEST_F(SplitPageTest, AsksAboutASilentPlayerAndHearsItWhileTheQuestionStands) {
    Run([&] {
        AwaitComparison();
        Fault(1, "no-ack");
        prompts.whileShown = [&] {
            if (prompts.boxes.size() > 1 || prompts.boxes.back().kind != Box::Kind::kQuestion)
                return;
            players->Player(1).DropConnections();
            Settle();
        };
        Press(dialog, wxID_FORWARD);
        EXPECT_TRUE(PumpUntil([&] { return Enabled(kSplitRetry); }));
        prompts.whileShown = [] {};
        EXPECT_THAT(Told(), ElementsAre(Question(Address(1) + " has not confirmed. Send again?")));
        EXPECT_THAT(State(), HasSubstr(Address(1)));
        EXPECT_EQ(Sent(0), 1);
        Fault(1, "");
        Press(dialog, kSplitRetry);
        AwaitBox();
        EXPECT_THAT(Told(), ElementsAre(kDone));
        EXPECT_EQ(Sent(0), 1);
    });
}

TEST_F(SplitPageTest, IsLeftWhileItFetches) {
    Run([&] {
        Fault(0, "delay=200ms");
        EXPECT_TRUE(PumpUntil([&] { return State().starts_with("Fetching the geometric"); }));
        Press(dialog, wxID_BACKWARD);
        EXPECT_EQ(State(), "");
        PumpUntil([] { return false; }, 400);  // the answer finds nobody
        Press(dialog, wxID_FORWARD);
        EXPECT_TRUE(PumpUntil([&] { return State().starts_with("Fetching the geometric"); }));
    });
    EXPECT_THAT(Told(), ElementsAre(kExit));
    EXPECT_FALSE(directory.Find("Set Param"));
}

TEST_F(SplitPageTest, EndsByForceWhileItSends) {
    Run([&] {
        AwaitComparison();
        Fault(0, "no-ack");
        Press(dialog, wxID_FORWARD);
        EXPECT_TRUE(PumpUntil([&] { return Sent(0) == 1; }));
        window->EndByForce();
        dialog = nullptr;
    });
    EXPECT_THAT(Told(), IsEmpty());
}

}  // namespace
}  // namespace sontaro::test
