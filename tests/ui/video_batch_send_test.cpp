#include <wx/checkbox.h>
#include <wx/dcclient.h>

#include "base/file.h"
#include "batchsend/journal_writer.h"
#include "batchsend/send_page_ids.h"
#include "ui/video_set_support.h"

namespace sontaro::test {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

/// The last page, for two players and two videos.
struct VideoBatchSend : VideoSetTest {
    enum PlayerColumn { kStatus = 3, kNote, kProof };
    enum MatrixColumn { kFirst = 3, kSecond };

    void SetUp() override {
        if (kOnWindows) GTEST_SKIP() << "Wine has no room for a chunk, and gives it up after 5 ms";
    }
    void RunPage(const std::function<void()>& step) {
        prompts.files = {folder.Write("夜场 1.mp4", std::string(9'000'000, 'x')),
                         folder.Write("夜场 2.mp4", "two")};
        Run([&, step] {
            Press(dialog, kSetAddFiles);
            EXPECT_TRUE(PumpUntil([&] { return Rows(kSetVideos) == 2; }));
            Settle();
            Press(dialog, wxID_FORWARD);
            step();
        });
    }
    [[nodiscard]] bool Enabled(int id) const { return dialog->FindWindow(id)->IsEnabled(); }
    [[nodiscard]] std::string Line(int id) const {
        return FromWx(Find<wxStaticText>(dialog, id)->GetLabelText());
    }
    void AwaitSummary(const std::string& text) {
        PumpUntil([&] { return Line(kSendSummary).find(text) != std::string::npos; }, 20000);
        EXPECT_THAT(Line(kSendSummary), HasSubstr(text));
    }
    void AwaitPlan() { AwaitSummary("To be sent: 4 transfers of videos to 2 players"); }
    void AwaitProof() {
        AwaitSummary("OK");
        EXPECT_TRUE(PumpUntil(
            [&] { return Enabled(kSendProve) && !Cell(kSendPlayers, 0, kProof).empty(); }));
    }
    [[nodiscard]] std::string Pair(int video, MatrixColumn player) const {
        return Cell(kSendMatrix, video, player);
    }
    void Fault(std::size_t player, const char* faults) {
        players->Player(player).SetFaults(*simulator::ParseFaultScript(faults));
    }
};

TEST_F(VideoBatchSend, PlansSendsAndComparesWhatHasArrived) {
    RunPage([&] {
        AwaitPlan();
        EXPECT_EQ(Cell(kSendPlayers, 1, kStatus), "Waiting");
        EXPECT_EQ(Pair(0, kSecond), "will be sent");
        EXPECT_TRUE(Enabled(kSendStart) && Enabled(wxID_FORWARD) && !Enabled(kSendStop));
        Press(dialog, kSendStart);
        EXPECT_FALSE(Enabled(kSendStart) || Enabled(wxID_FORWARD) || Enabled(wxID_BACKWARD));
        EXPECT_TRUE(Enabled(kSendStop));
        AwaitProof();
        EXPECT_EQ(Line(kSendLine), "Batch Send OK!");
        EXPECT_EQ(Line(kSendSummary), "2 OK.");
        EXPECT_EQ(Cell(kSendPlayers, 1, kStatus), "OK");
        EXPECT_EQ(Cell(kSendPlayers, 1, kProof), "2 confirmed");
        EXPECT_EQ(Pair(0, kFirst), "confirmed");
        EXPECT_THAT(JournalsIn(folder / "Uploads"), SizeIs(1));
        auto* skip = Find<wxCheckBox>(dialog, kSendSkipPresent);
        Click(skip);
        EXPECT_TRUE(PumpUntil([&] { return skip->GetValue(); }));
        Press(dialog, kSendPlan);
        AwaitSummary("There are no videos to be sent.");
        EXPECT_EQ(Pair(1, kSecond), "there already, skipped");
        Press(dialog, wxID_FORWARD);
        EXPECT_FALSE(dialog && dialog->IsModal());
        dialog = nullptr;
    });
    EXPECT_EQ(prompts.boxes.size(), 1U);  // in which the files were chosen
}

TEST_F(VideoBatchSend, GoesOnWithWhatWasStoppedAndSendsAgainWhatFailed) {
    RunPage([&] {
        AwaitPlan();
        Fault(0, "withhold=2");
        Press(dialog, kSendStart);
        EXPECT_TRUE(PumpUntil([&] { return Pair(0, kFirst) == "being sent"; }));
        PumpUntil([&] { return false; }, 500);
        Press(dialog, kSendStop);
        EXPECT_EQ(Pair(0, kFirst), "failed: Stopped");
        EXPECT_EQ(Pair(1, kSecond), "not sent");
        EXPECT_EQ(FromWx(Find<wxButton>(dialog, kSendStart)->GetLabelText()), "From the beginning");
        Fault(0, "lose-chunk=2");
        Press(dialog, kSendContinue);
        AwaitSummary("1 OK, 1 failed: " + FormatIpv4(network.Player(0)));
        Fault(0, "");
        Press(dialog, kSendFailedAgain);
        EXPECT_EQ(Rows(kSendPlayers), 1);
        AwaitSummary("1 OK.");
        AwaitProof();
        EXPECT_EQ(Pair(1, kFirst), "confirmed");
        EXPECT_FALSE(Enabled(kSendFailedAgain));
        prompts.file = folder / "runs.csv";
        Press(dialog, kSendExport);
        EXPECT_THAT(folder.Read("runs.csv"), HasSubstr("夜场 2.mp4"));
    });
}

TEST_F(VideoBatchSend, TellsInFullWhatFailed) {
    RunPage([&] {
        AwaitPlan();
        Fault(0, "not-supported"), Fault(1, "not-supported");
        Press(dialog, kSendStart);
        AwaitSummary("0 OK, 2 failed: ");
        PumpUntil([&] { return Enabled(kSendProve); });
        Settle();
        auto* summary = Find<wxStaticText>(dialog, kSendSummary);
        const wxSize size = wxClientDC(summary).GetMultiLineTextExtent(summary->GetLabelText());
        EXPECT_LE(size.x, summary->GetSize().x) << FromWx(summary->GetLabelText());
        EXPECT_LE(size.y, summary->GetSize().y);
        summary->SetMaxSize(wxSize(50, -1));
        summary->GetParent()->SendSizeEvent();
        Settle();
        EXPECT_LE(summary->GetLabelText().Freq('\n'), 4U) << Line(kSendSummary);
        EXPECT_THAT(FromWx(summary->GetToolTipText()), testing::HasSubstr("support this)."));
    });
}

TEST_F(VideoBatchSend, EndsByForceWhileItSends) {
    RunPage([&] {
        AwaitPlan();
        Fault(0, "withhold=1");
        Press(dialog, kSendStart);
        EXPECT_TRUE(PumpUntil([&] { return Pair(0, kFirst) == "being sent"; }));
        window->EndByForce();
        dialog = nullptr;
    });
    EXPECT_TRUE(PumpUntil([&] { return !window; }));
    EXPECT_THAT(FailedIn(*LatestJournalIn(folder / "Uploads").journal), SizeIs(2));
}

}  // namespace
}  // namespace sontaro::test
