#include <gmock/gmock.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/grid.h>
#include <wx/listctrl.h>
#include <wx/srchctrl.h>
#include <wx/textctrl.h>
#include <wx/tglbtn.h>

#include "base/file.h"
#include "support/platform.h"
#include "timeline/change_nodes_dialog.h"
#include "timeline/copy_video_dialog.h"
#include "timeline/merge_dialog.h"
#include "timeline/player_time_add.h"
#include "timeline/player_time_control.h"
#include "timeline/shift_dialog.h"
#include "timeline/timeline_document.h"
#include "timeline/timeline_texts.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const Box kDeletion = Question("Do you really want to delete it?");

bool IsTest(const DevicePacket& packet) {
    return packet.header.command == 3 && packet.header.subCommand == 23 &&
           packet.header.argument == 2;
}

struct PlayerTime : FeatureTest {
    void Run(const std::vector<TimeNode>& nodes, const std::function<void()>& step) {
        StartPlayers(1);
        TimelineDocument document;
        document.Apply({{}, {}, nodes});
        Player().ChangeState([&](simulator::PlayerState& state) {
            state.timeline = document.Write();
            state.folders.insert(state.folders.end(), folders.begin(), folders.end());
        });
        RunDialog<CPlayerTimeControl>([&] {
            EXPECT_TRUE(PumpUntil([&] { return dialog->FindWindow(wxID_OK)->IsEnabled(); }));
            dialog->Raise();
            EXPECT_TRUE(PumpUntil([&] { return dialog->IsActive() && Cells().HasFocus(); }));
            step();
        });
    }
    /// What is done in the editor when it opens next.
    void InEditor(const std::function<void()>& step) {
        script.Expect([this, step](wxDialog* opened) {
            editor = opened;
            editor->Raise();
            EXPECT_TRUE(PumpUntil([&] { return editor->IsActive(); }));
            step();
        });
    }

    wxGrid& Grid() { return *Find<wxGrid>(dialog, kTimelineGrid); }
    wxWindow& Cells() { return *Grid().GetGridWindow(); }
    /// Puts what is typed in the place of what a field of the editor has.
    void Type(int id, const char* text) {
        editor->FindWindow(id)->SetFocus();
        dynamic_cast<wxTextEntry*>(editor->FindWindow(id))->SelectAll();
        Settle();
        wxUIActionSimulator().Text(text);
        Settle();
    }
    /// Tells that the user has chosen what a control shows; the system's lists take no keys here.
    static void Choose(wxWindow& control, wxEventType type) {
        wxCommandEvent choice(type, control.GetId());
        choice.SetEventObject(&control);
        control.GetEventHandler()->ProcessEvent(choice);
    }
    void ClickCell(int row, TimelineColumn column) {
        const wxRect cell = Grid().CellToRect(row, static_cast<int>(column));
        wxUIActionSimulator mouse;
        mouse.MouseMove(Cells().ClientToScreen(Grid().CalcScrolledPosition(
            wxPoint(cell.x + cell.width / 2, cell.y + cell.height / 2))));
        mouse.MouseClick();
        Settle();
    }
    std::string Cell(int row, TimelineColumn column) {
        return FromWx(Grid().GetCellValue(row, static_cast<int>(column)));
    }
    std::vector<std::string> Commands() {
        std::vector<std::string> commands;
        for (int row = 0; row < Grid().GetNumberRows(); ++row)
            commands.push_back(Cell(row, TimelineColumn::kCommand));
        return commands;
    }
    TimeNode Held(std::size_t row) {
        TimelineDocument document;
        EXPECT_TRUE(document.Take(Player().State().timeline, TimelineSource::kPlayer).ok());
        return document.NodeAt(row);
    }
    void Upload() {
        Press(dialog, wxID_OK);
        EXPECT_TRUE(PumpUntil(
            [&] { return Says(dialog, "Confirmed and equal: the player holds this timeline."); }));
    }
    wxDialog* editor = nullptr;
    std::vector<simulator::VideoFolder> folders;  // that the player has besides
};

TEST_F(PlayerTime, AddsWhatIsTypedOnceNothingIsWrongWithIt) {
    Run({}, [&] {
        InEditor([&] {
            Type(kNodeSeconds, "60x");
            Key(WXK_RETURN);
            Type(kNodeSeconds, "5");
            Find<wxChoice>(editor, kNodePort)->SetSelection(kPortUdp);
            Press(editor, wxID_OK);
            Type(kNodeIp, "192168.7.3009");  // the third digit leads on as a point does
            Press(editor, wxID_OK);
            Type(kNodeCommand, "a5 0");
            Press(editor, wxID_OK);
            Type(kNodePeerPort, "70000");
            EXPECT_EQ(Find<wxTextCtrl>(editor, kNodePeerPort)->GetValue(), "65535");
            Type(kNodeText, "\\x0b\\r");
            Key(WXK_RETURN);
        });
        Key(WXK_INSERT);
        EXPECT_THAT(
            Told(),
            ElementsAre(Warning("Time node: There is an issue with the second setting <60!"),
                        Warning("IP parameters are problematic!"), Warning("Cmd not input!"),
                        Warning("Cmd input error!")));
        Upload();
        TimeNode node = Held(0);
        EXPECT_FALSE(std::exchange(node.typeName, "").empty());  // the first on offer
        EXPECT_FALSE(std::exchange(node.videoName, "").empty());
        EXPECT_EQ(node, (TimeNode{0, "", "", 5000, kPortUdp, "192.168.7.255", 65'535, "0B0D"}));
        EXPECT_THAT(Told(), ElementsAre(Notice("Changes have been saved!")));
    });
}

TEST_F(PlayerTime, AnEditedNodeKeepsWhatIsNotOffered) {
    const TimeNode odd{70'000, "gone", "lost.mp4", 1500, 9, "nowhere", -3, "A5"};
    Run({odd, {0, "gone", "lost.mp4", 0, kPortSerial0, "", 0, "01"}}, [&] {
        InEditor([&] {
            EXPECT_EQ(editor->GetTitle(), "Edit time node");
            Type(kNodeSeconds, "2");
            Press(editor, wxID_OK);
        });
        Key(WXK_END);
        Key(WXK_RETURN);
        EXPECT_EQ(Cell(1, TimelineColumn::kTime), "2.500");
        EXPECT_EQ(Grid().GetGridCursorRow(), 1);
        Upload();
        TimeNode moved = odd;
        moved.time = 2500;
        EXPECT_EQ(Held(1), moved);
    });
}

TEST_F(PlayerTime, OffersWhatTheChosenPlayerHas) {
    Run({{0, "gone", "lost.mp4", 0, 0, "", 0, "A5"}}, [&] {
        InEditor([&] {
            auto* type = Find<wxComboBox>(editor, kNodeType);
            auto* video = Find<wxComboBox>(editor, kNodeVideo);
            EXPECT_TRUE(video->IsListEmpty());
            type->SetSelection(0);
            Choose(*type, wxEVT_COMBOBOX);
            EXPECT_EQ(type->GetValue(), type->GetString(0));
            EXPECT_EQ(video->GetValue(), video->GetString(0));
            Find<wxTextCtrl>(editor, kNodeCommand)->SetValue("01 06 00 01 00 17");
            auto* checksum = Find<wxChoice>(editor, kNodeChecksum);
            checksum->SetSelection(3);
            Choose(*checksum, wxEVT_CHOICE);
            Press(editor, kAppendChecksum);
            EXPECT_EQ(Find<wxTextCtrl>(editor, kNodeCommand)->GetValue(), "0106000100179804");
            Press(editor, wxID_CANCEL);
        });
        Press(dialog, kEditNode);
        EXPECT_THAT(Commands(), ElementsAre("A5"));
    });
}

TEST_F(PlayerTime, ATurnOfTheWheelChoosesNoOtherPort) {
    if (kOnWindows) GTEST_SKIP() << "nothing turns a wheel there";
    Run({}, [&] {
        InEditor([&] {
            auto* port = Find<wxChoice>(editor, kNodePort);
            TurnWheel(*port, wxPoint(20, 12));
            EXPECT_EQ(port->GetSelection(), kPortSerial0);
            Press(editor, wxID_CANCEL);
        });
        Press(dialog, kAddNode);
    });
}

TEST_F(PlayerTime, DeletesTickedNodesAloneAndBringsThemBack) {
    const auto node = [&](const char* command) {
        return TimeNode{0, "t", "v", 0, 0, "", 0, command};
    };
    Run({node("01"), node("02"), node("03")}, [&] {
        Key(WXK_DELETE);
        EXPECT_THAT(Told(), ElementsAre(Warning("Check before deleting!")));
        Key(WXK_SPACE);
        Key(WXK_DOWN);
        prompts.answers = {true};
        Key(WXK_DELETE);
        EXPECT_THAT(Told(), ElementsAre(kDeletion));
        EXPECT_THAT(Commands(), ElementsAre("02", "03"));
        Key('Z', wxMOD_CONTROL);
        EXPECT_THAT(Commands(), ElementsAre("01", "02", "03"));
        Find<wxSearchCtrl>(dialog, kTimelineFilter)->SetValue("03");
        Press(dialog, kDeleteNodes);  // the one that is back is ticked, and hidden
        EXPECT_THAT(Told(), ElementsAre(Question("Do you really want to delete it?\nThe filter "
                                                 "hides 1 of the ticked commands.")));
        Cells().SetFocus();
        Key('Y', wxMOD_CONTROL);
        Find<wxSearchCtrl>(dialog, kTimelineFilter)->SetValue("");
        EXPECT_THAT(Commands(), ElementsAre("02", "03"));
    });
    EXPECT_THAT(Told().back().text, HasSubstr("the player has not confirmed"));
}

TEST_F(PlayerTime, TestsTheNodeWhoseCellIsClickedAndTheChosenOne) {
    Run({{0, "t", "v", 0, 0, "", 0, "A501"}, {0, "t", "v", 0, 0, "", 0, ""}}, [&] {
        ClickCell(0, TimelineColumn::kTest);
        const auto sent = Player().WaitForPacket(IsTest, std::chrono::seconds(5));
        ASSERT_TRUE(sent);
        EXPECT_THAT(std::string(AsText(sent->payload)), HasSubstr("A501"));
        Key(WXK_DOWN);
        Key('T', wxMOD_CONTROL);
        EXPECT_THAT(Told(), ElementsAre(Notice("Send a single command!"),
                                        Warning("Command cannot be empty!")));
    });
    EXPECT_THAT(Told(), ElementsAre(Question("Do you really want to exit?")));
}

TEST_F(PlayerTime, ShiftsAllChosenNodesOrNone) {
    const auto node = [](std::int64_t time) { return TimeNode{0, "t", "v", time, 0, "", 0, "01"}; };
    const auto shiftBy = [&](const char* seconds) {
        InEditor([&, seconds] {
            Type(kShiftSeconds, "soon");
            Key(WXK_RETURN);
            Type(kShiftSeconds, seconds);
            Key(WXK_RETURN);
        });
        Press(dialog, kShiftNodes);
    };
    Run({node(1000), node(3000)}, [&] {
        Key('A', wxMOD_CONTROL);
        shiftBy("-1.001");
        EXPECT_THAT(Told().back().text, HasSubstr("Nothing has been moved."));
        EXPECT_EQ(Cell(1, TimelineColumn::kTime), "3.000");
        shiftBy("-0.75");
        EXPECT_EQ(Cell(0, TimelineColumn::kTime), "0.250");
        EXPECT_EQ(Cell(1, TimelineColumn::kTime), "2.250");
        EXPECT_THAT(Told(),
                    ElementsAre(Warning("Type seconds with up to three decimals, such as -2.5.")));
    });
}

TEST_F(PlayerTime, AFindingLeadsToItsRowThoughTheFilterHidesIt) {
    const auto node = [](const char* command) {
        return TimeNode{0, "gone", "v", 0, 0, "", 0, command};
    };
    Run({node("01"), node("02")}, [&] {
        auto* button = Find<wxToggleButton>(dialog, kChecks);
        EXPECT_TRUE(PumpUntil([&] { return button->GetLabelText().EndsWith("2 findings"); }));
        Find<wxSearchCtrl>(dialog, kTimelineFilter)->SetValue("01");
        Click(button);
        auto* findings = Find<wxListView>(dialog, kChecks + 1);
        EXPECT_TRUE(PumpUntil([&] { return findings->IsShownOnScreen(); }));
        findings->SetFocus();
        findings->Focus(1);
        findings->Select(1);
        EXPECT_EQ(Cell(Grid().GetGridCursorRow(), TimelineColumn::kCommand), "02");
        Key(WXK_RETURN);
        EXPECT_TRUE(Cells().HasFocus());
        Key(WXK_UP);
        EXPECT_EQ(findings->GetFirstSelected(), -1);  // a click leads there again
    });
}

TEST_F(PlayerTime, ChangesInAllTickedWhatIsEnteredOnceNothingIsWrongWithIt) {
    const auto node = [](std::int32_t port) { return TimeNode{0, "t", "v", 0, port, "", 0, "01"}; };
    Run({node(kPortSerial0), node(kPortRs485), node(kPortDmx512)}, [&] {
        Press(dialog, kChangeNodes);
        Key(WXK_SPACE);
        Key(WXK_DOWN);
        Key(WXK_SPACE);
        InEditor([&] {
            Key(WXK_RETURN);
            auto* player = Find<wxChoice>(editor, kChangePlayer);
            player->SetSelection(1);
            Choose(*player, wxEVT_CHOICE);
            auto* port = Find<wxChoice>(editor, kChangePort);
            port->SetSelection(kPortTcp);
            Choose(*port, wxEVT_CHOICE);
            Press(editor, wxID_OK);
            Type(kChangeIp, "10.0.0.9");
            Key(WXK_RETURN);
        });
        Press(dialog, kChangeNodes);
        EXPECT_THAT(Told(), ElementsAre(Warning("Tick the commands to be changed first."),
                                        Warning("Tick what is to be changed."),
                                        Warning("IP parameters are problematic!")));
        Upload();
        EXPECT_EQ(Held(0), node(kPortDmx512));
        EXPECT_EQ(Held(2), (TimeNode{1, "t", "v", 0, kPortTcp, "10.0.0.9", 0, "01"}));
    });
}

TEST_F(PlayerTime, KeepsItsDialogsNarrowForLongNames) {
    const std::string longName(255, 'w');
    folders = {{longName, {{longName}}}};
    Run({{0, longName, longName, 1000, 0, "", 0, "01"}}, [&] {
        ClickCell(0, TimelineColumn::kCommand);
        Key(WXK_SPACE);
        const std::pair<int, int> dialogs[] = {
            {kEditNode, kNodePlayer}, {kChangeNodes, kChangePlayer}, {kCopyVideo, kCopyPlayer}};
        for (const auto& [id, firstField] : dialogs) {
            InEditor([&, firstField = firstField, id = id] {
                auto* videos = Find<wxComboBox>(editor, firstField + 2);
                EXPECT_TRUE(PumpUntil([&] { return videos->FindString(longName) >= 0; }));
                EXPECT_LT(editor->GetSize().x, 1000) << id;
                Press(editor, wxID_CANCEL);
            });
            Press(dialog, id);
        }
    });
}

TEST_F(PlayerTime, MergesTickedVideosIntoThoseTheyAreMappedTo) {
    const auto node = [](const char* type, const char* command) {
        return TimeNode{0, type, "v", 0, 0, "", 0, command};
    };
    Run({node("a", "01"), node("b", "02")}, [&] {
        prompts.file = folder / "kept.JSON";
        Press(dialog, kSaveTimeline);
        InEditor([&] {
            auto* rows = Find<wxGrid>(editor, kMergeGrid);
            EXPECT_TRUE(PumpUntil([&] { return rows->GetGridWindow()->HasFocus(); }));
            Key(WXK_SPACE);
            Key(WXK_DOWN);
            auto* player = Find<wxChoice>(editor, kMergePlayer);
            player->SetSelection(1);
            Choose(*player, wxEVT_CHOICE);
            Type(kMergePlayer + 2, "new");
            Key(WXK_RETURN);
        });
        Press(dialog, kMergeTimeline);
        Upload();
        EXPECT_EQ(Held(2), (TimeNode{1, "b", "new", 0, 0, "", 0, "02"}));
        EXPECT_THAT(Commands(), ElementsAre("01", "02", "02"));
        EXPECT_TRUE(WriteFileAtomically(*prompts.file, R"({"cmdInfos": []})").ok());
        Press(dialog, kMergeTimeline);
        EXPECT_THAT(Told().back().text, HasSubstr("it has no commands."));
    });
}

TEST_F(PlayerTime, OpensTheTimelineThatWasThereBeforeTheUpload) {
    Run({{0, "t", "v", 0, 0, "", 0, "01"}}, [&] {
        Press(dialog, kDuplicateNodes);
        Upload();
        OpenEarlier();
        EXPECT_THAT(Commands(), ElementsAre("01"));
        Press(dialog, kUndoTimeline);
        EXPECT_THAT(Commands(), ElementsAre("01", "01"));
    });
}

TEST_F(PlayerTime, ExportsATableAndTakesItBackWholeOrNotAtAll) {
    Run({{0, "t", "v", 1500, 0, "", 0, "A501"}}, [&] {
        prompts.file = folder / "table.csv";
        Press(dialog, kExportCsv);
        Press(dialog, kImportCsv);  // No: added
        EXPECT_THAT(Commands(), ElementsAre("A501", "A501"));
        prompts.answers = {true};
        Press(dialog, kImportCsv);
        EXPECT_THAT(Commands(), ElementsAre("A501"));
        Told();
        EXPECT_TRUE(WriteFileAtomically(*prompts.file, "Player,Type\n1,t\n").ok());
        Press(dialog, kImportCsv);
        EXPECT_THAT(Told().back().text, HasSubstr("\"table.csv\" cannot be imported"));
        EXPECT_THAT(Commands(), ElementsAre("A501"));
    });
}

}  // namespace
}  // namespace sontaro::test
