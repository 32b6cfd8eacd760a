#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dnd.h>
#include <wx/srchctrl.h>

#include "batchsend/video_set_files.h"
#include "ui/video_set_support.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

enum PlayerColumn { kMode = 2, kState = 4 };

struct VideoSetPage : VideoSetTest {
    /// A video as it is shown: name as sent, category and code.
    [[nodiscard]] std::string Video(int row) const {
        return Cell(kSetVideos, row, 3) + "|" + Cell(kSetVideos, row, 2) + "|" +
               Cell(kSetVideos, row, 4);
    }
    void Await(int row, PlayerColumn column, const char* text) {
        PumpUntil([&] { return Cell(kSetPlayers, row, column) == text; });
        EXPECT_EQ(Cell(kSetPlayers, row, column), text);
    }
    void AwaitVideos(int count) {
        PumpUntil([&] { return Rows(kSetVideos) == count; });
        EXPECT_EQ(Rows(kSetVideos), count);
    }
    void AwaitAnswers() { Await(1, kState, "Answered"), Await(2, kState, "Answered"); }
    void KeyIn(int id, int key) {
        Grid(id).GetGridWindow()->SetFocus();
        Settle();
        Key(key);
    }
    void Drop(const std::vector<std::filesystem::path>& paths) {
        wxArrayString names;
        for (const auto& path : paths) names.Add(ToWx(TextOfPath(path)));
        auto* target =
            dynamic_cast<wxFileDropTarget*>(Grid(kSetVideos).GetGridWindow()->GetDropTarget());
        ASSERT_TRUE(target);
        target->OnDropFiles(1, 1, names);
    }
    [[nodiscard]] std::ptrdiff_t KeepAlives(std::size_t player) const {
        const auto packets = players->Player(player).ReceivedPackets();
        return std::ranges::count(packets, kCommandSerialData,
                                  [](const auto& packet) { return packet.header.command; });
    }
};

TEST_F(VideoSetPage, ShowsThePlayersAndKeepsTheChosenOneAlive) {
    Run([&] {
        AwaitAnswers();
        EXPECT_EQ(Cell(kSetPlayers, 2, kMode), "Independent");
        KeyIn(kSetPlayers, WXK_DOWN), Key(WXK_DOWN);
        EXPECT_TRUE(PumpUntil([&] { return KeepAlives(1) > 0; }));
        EXPECT_EQ(KeepAlives(0), 0);
        players->Player(1).ChangeState([](auto& state) { state.mode = 2; });
        Press(dialog, kSetAskAgain);
        EXPECT_FALSE(dialog->FindWindow(kSetAskAgain)->IsEnabled());
        Await(2, kMode, "Slave");
        Press(dialog, wxID_BACKWARD);
        const std::ptrdiff_t before = KeepAlives(1);
        PumpUntil([] { return false; }, 2500);
        EXPECT_EQ(KeepAlives(1), before);
    });
    EXPECT_THAT(prompts.boxes, ElementsAre(Question("Do you really want to exit?")));
}

TEST_F(VideoSetPage, TakesFilesAndGivesThemWhatIsChosenBelow) {
    const auto first = folder.Write("01 a.mp4", "one");
    folder.Write("Films/迪斯科/c.mp4", "");
    prompts.files = {first, folder.Write("b.mp4", "")};
    Run([&] {
        AwaitAnswers();
        KeyIn(kSetVideos, WXK_INSERT);
        AwaitVideos(2);
        Drop({folder / "Films"});
        AwaitVideos(3);
        EXPECT_EQ(Video(2), "c.mp4|1  迪斯科|0");
        auto* category = Find<wxChoice>(dialog, kSetCategory);
        KeyIn(kSetVideos, WXK_HOME), Key(WXK_SPACE);
        category->SetSelection(2);
        wxCommandEvent choice(wxEVT_CHOICE, kSetCategory);
        category->GetEventHandler()->ProcessEvent(choice);
        auto* code = Find<wxTextCtrl>(dialog, kSetCode);
        code->SetFocus();
        code->SelectAll();
        Settle();
        wxUIActionSimulator().Text("70");
        Settle();
        EXPECT_EQ(Video(0), "01 a.mp4|3  摇滚|70");
        EXPECT_EQ(code->GetValue(), "70");
        Click(dialog->FindWindow(kSetRemoveNumbers));
        Settle();
        EXPECT_EQ(Video(0), "a.mp4|3  摇滚|70");
        Press(dialog, kSetDown);
        EXPECT_EQ(Video(0), "b.mp4|1  迪斯科|0");
        KeyIn(kSetVideos, WXK_DELETE);
        AwaitVideos(2);
        EXPECT_TRUE(PumpUntil([&] { return Says(dialog, "Videos for every player: 2 (0 B)"); }));
        EXPECT_FALSE(dialog->FindWindow(kSetGiveUp)->IsShown());
    });
}

TEST_F(VideoSetPage, TakesACodeFigureByFigureWhateverTheFilterLeaves) {
    prompts.files = {folder.Write("a.mp4", ""), folder.Write("b.mp4", "")};
    Run([&] {
        AwaitAnswers();
        Press(dialog, kSetAddFiles);
        AwaitVideos(2);
        auto* code = Find<wxTextCtrl>(dialog, kSetCode);
        const auto type = [&](const char* text) {
            code->SetFocus();
            code->SelectAll();
            Settle();
            wxUIActionSimulator().Text(text);
            Settle();
        };
        Grid(kSetVideos).SelectAll();
        Settle();
        type("54321");
        Find<wxSearchCtrl>(dialog, kSetFilter)->SetValue("54321");
        KeyIn(kSetVideos, WXK_HOME), Key(WXK_DOWN), Key(WXK_UP);
        type("12");
        EXPECT_EQ(Video(0), "a.mp4|1  迪斯科|12");
        EXPECT_EQ(Video(1), "b.mp4|1  迪斯科|54321");
    });
}

TEST_F(VideoSetPage, IsThereAgainTheNextTimeWithItsNames) {
    prompts.files = {folder.Write("a.mp4", "")};
    Run(
        [&] {
            AwaitAnswers();
            Press(dialog, kSetAddFiles);
            AwaitVideos(1);
            script.Expect([](wxDialog* names) {
                TypeInCell(*Find<wxPropertyGrid>(names, kSetAliases), "Category/1", "Dance");
                Press(names, wxID_OK);
            });
            Press(dialog, kSetCategories);
            EXPECT_EQ(Video(0), "a.mp4|1  Dance|0");
            Press(dialog, wxID_FORWARD);
            EXPECT_TRUE(directory.Find("Batch Send"));
            EXPECT_THAT(folder.Read("Videos/VideoTypeProtocol.Json"), HasSubstr("\"Dance\""));
            Press(dialog, wxID_BACKWARD);
            AwaitAnswers();
            EXPECT_EQ(Video(0), "a.mp4|1  Dance|0");
            std::filesystem::remove(folder / "a.mp4");
        },
        [&] {
            EXPECT_TRUE(PumpUntil([&] {
                return Says(dialog, "⚠ The file cannot be read: " + TextOfPath(folder / "a.mp4"));
            }));
            AwaitAnswers();
            EXPECT_EQ(Video(0), "a.mp4|1  Dance|0");
        });
}

TEST_F(VideoSetPage, KeepsTheChosenCategoryWhenItGoesToAnotherNumber) {
    VideoSet set;
    set.aliases[0] = {"摇滚", true};
    RememberVideoSet(set, preferences);
    Run([&] {
        AwaitAnswers();
        EXPECT_EQ(Find<wxChoice>(dialog, kSetCategory)->GetSelection(), 2);
    });
}

TEST_F(VideoSetPage, EndsByForceWhileItAsksAndLooksForFiles) {
    Run([&] {
        AwaitAnswers();
        KeyIn(kSetPlayers, WXK_DOWN);
        players->Player(0).SetFaults(*simulator::ParseFaultScript("delay=300ms"));
        Press(dialog, kSetAskAgain);
        folder.Write("a.mp4", "");
        Drop({folder.Path()});
        window->EndByForce();
        dialog = nullptr;
    });
    EXPECT_THAT(prompts.boxes, testing::IsEmpty());
}

}  // namespace
}  // namespace sontaro::test
