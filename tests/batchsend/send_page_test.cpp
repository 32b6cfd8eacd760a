// The last page of the wizard over real links, without its window.
#include <gmock/gmock.h>

#include <ctime>

#include "base/file.h"
#include "base/path_text.h"
#include "batchsend/send_page.h"
#include "batchsend/sending_surroundings.h"
#include "batchsend/video_types.h"
#include "simulator/player_group.h"
#include "support/temporary_folder.h"
#include "support/test_network.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// Two players and two videos for both.
struct SendPageTest : testing::Test, SendingSurroundings, SendPageView {
    SendPageTest() {
        for (std::size_t i = 0; i < 2; ++i) {
            simulator::PlayerOptions options;
            options.address = network.Player(i);
            players.push_back(std::make_unique<simulator::PlayerGroup>(
                std::vector<simulator::PlayerOptions>{options}));
            EXPECT_TRUE(players[i]->Start());
            const Endpoint at = players[i]->Player(0).Address();
            set.players.Insert(i, {FormatIpv4(at.address), at.port, "", {}});
        }
        for (const char* name : {"a.mp4", "b.mp4"}) {
            SetVideo video;
            video.path = TextOfPath(folder.Write(name, name));
            video.size = 5;
            set.videos.Insert(set.videos.size(), video);
        }
    }
    void BatchChanged() override {}
    void PlayerChanged(std::size_t) override {}
    void VideoChanged(std::size_t) override {}
    void StateChanged() override {}
    void Pause(std::chrono::milliseconds) override {}

    simulator::SimulatedPlayer& Player(std::size_t i) { return players[i]->Player(0); }
    void Fault(std::size_t player, const char* faults) {
        Player(player).SetFaults(*simulator::ParseFaultScript(faults));
    }
    void Await(SendPhase phase) {
        EXPECT_TRUE(loop.RunUntil([&] { return page.Phase() == phase; }, std::chrono::seconds(20)));
    }
    void Enter() { page.Enter(set), Await(SendPhase::kIdle); }
    /// Until the proof is over, too.
    void AwaitEnd() { Await(SendPhase::kProving), Await(SendPhase::kIdle); }
    [[nodiscard]] SendPlaces Places() const {
        return {folder / "runs", folder / "types.json", [] { return std::chrono::milliseconds(0); },
                std::chrono::system_clock::now};
    }
    [[nodiscard]] std::string Ip(std::size_t player) const {
        return FormatIpv4(network.Player(player));
    }
    [[nodiscard]] PlannedFate Fate(std::size_t player, std::size_t video) const {
        return page.Batch().PairAt(player, video).fate;
    }
    [[nodiscard]] std::vector<std::string> Proofs() const {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < page.Rows().size(); ++i) texts.push_back(page.ProofText(i));
        return texts;
    }

    TestNetwork network;
    TemporaryFolder folder;
    std::vector<std::unique_ptr<simulator::PlayerGroup>> players;
    VideoSet set;
    SendPage page{source, *this, prompts, Exchange(), Places()};
    WindowDirectory::Registration window = directory.Register(
        TitleOf(Window::kBatchSend), [this](auto& message) { page.Handle(message); });
};

TEST_F(SendPageTest, PlansAroundPlayersThatAreAbsentOrFullAndSendsWhatIsLeftLater) {
    Fault(0, "refuse");
    Player(1).ChangeState([](auto& state) { state.diskMebibytes = 0; });
    Enter();
    EXPECT_EQ(Fate(0, 0), PlannedFate::kUnreachable);
    EXPECT_EQ(Fate(1, 1), PlannedFate::kDoesNotFit);
    EXPECT_EQ(page.SummaryText(), "1 player has too little room. 1 player cannot be reached.");
    Fault(0, "");
    page.Start();
    AwaitEnd();
    EXPECT_EQ(page.SummaryText(), "1 OK, 1 failed: " + Ip(1) + " (Small disk surplus).");
    EXPECT_THAT(Proofs(), ElementsAre("2 confirmed; the settings before the run are not known",
                                      "nothing to compare"));
    Player(1).ChangeState([](auto& state) { state.diskMebibytes = 100; });
    page.SendFailed();
    page.SendFailed();  // a second press
    EXPECT_EQ(page.Rows().size(), 1U);
    AwaitEnd();
    EXPECT_THAT(Proofs(), ElementsAre("2 confirmed"));
    EXPECT_FALSE(page.MaySendFailed());
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

TEST_F(SendPageTest, StartsWhileItPlansUnlessPlayersHaveToTellWhatTheyHave) {
    Fault(1, "silent");
    set.skipsPresent = true;
    page.Enter(set);
    page.Start();
    EXPECT_EQ(page.Phase(), SendPhase::kPlanning);
    page.SkipPresent(false);
    page.Start();
    EXPECT_TRUE(page.IsRunning());
    EXPECT_EQ(Fate(1, 1), PlannedFate::kNotAsked);
    page.Leave();
    EXPECT_EQ(page.Phase(), SendPhase::kIdle);
    Fault(1, "");
    Enter();
    page.SendFailed();
    AwaitEnd();
    EXPECT_THAT(Proofs(), ElementsAre("2 confirmed", "2 confirmed"));
}

TEST_F(SendPageTest, SaysThatSettingsBeforeARunAreNotKnown) {
    page.Enter(set);
    page.Start();
    AwaitEnd();
    const std::string unknown = "2 confirmed; the settings before the run are not known";
    EXPECT_THAT(Proofs(), ElementsAre(unknown, unknown));
    page.Start();
    AwaitEnd();
    EXPECT_THAT(Proofs(), ElementsAre("2 confirmed", "2 confirmed"));
}

TEST_F(SendPageTest, BeginsAnewWhatWasStoppedAndNothingElse) {
    Enter();
    page.Start();
    page.Stop();
    EXPECT_TRUE(page.MayContinue() && page.StartsAnew());
    page.SendFailed();
    page.Stop();
    EXPECT_TRUE(page.MayContinue() && !page.StartsAnew());
}

TEST_F(SendPageTest, SkipsByWhatFilesAreWhenItStarts) {
    Enter();
    page.Start();
    AwaitEnd();
    page.SkipPresent(true);
    folder.Write("a.mp4", "rendered anew");
    page.Start();
    EXPECT_EQ(page.SummaryText(), "Looking at the files…");
    page.Stop();
    EXPECT_TRUE(page.Phase() == SendPhase::kIdle && page.MayStart());
    page.Start();
    page.Start();  // a second press
    AwaitEnd();
    EXPECT_EQ(page.Rows()[0].player.videos.size(), 1U);
    EXPECT_THAT(Proofs(), ElementsAre("2 confirmed", "2 confirmed"));
}

TEST_F(SendPageTest, SaysWhichPlayersHaveNotToldWhatTheyHave) {
    Fault(0, "bad-list");
    set.skipsPresent = true;
    Enter();
    EXPECT_EQ(Fate(0, 1), PlannedFate::kListUnknown);
    EXPECT_THAT(page.SummaryText(),
                EndsWith("What 1 player has already is not known: it gets everything."));
    EXPECT_TRUE(page.MayStart());
}

TEST_F(SendPageTest, SendsNamesOfCategoriesAgainThatHaveNotArrived) {
    const auto names = ReadCategoryNames(Player(0).State().controlProtocol);
    folder.Write("types.json", VideoTypeDocument(*names));
    Enter();
    Fault(1, "unsupported=1");
    page.Start();
    AwaitEnd();
    EXPECT_EQ(page.SummaryText(), "1 OK, 1 failed: " + Ip(1) +
                                      " (names of categories: The player does not support this).");
    Fault(1, "");
    page.SendFailed();
    ASSERT_EQ(page.Rows().size(), 1U);
    EXPECT_THAT(page.Rows()[0].player.videos, IsEmpty());
    AwaitEnd();
    EXPECT_EQ(page.SummaryText(), "1 OK.");
    EXPECT_FALSE(page.MaySendFailed());
}

TEST_F(SendPageTest, SaysThatTheLatestJournalCannotBeRead) {
    folder.Write("runs/99999999-000000-000.jsonl", "{\"event\"");
    Enter();
    EXPECT_THAT(page.SummaryText(), StartsWith("The latest journal cannot be read. To be sent: "));
    EXPECT_FALSE(page.MaySendFailed() || page.MayExport());
    page.Leave();
    const UploadPlayer earlier{page.Rows()[1].player.target, {{"gone.mp4", "gone.mp4", 0}}};
    std::tm local{};
    local.tm_year = 126, local.tm_mon = 10, local.tm_mday = 22;
    local.tm_hour = 18, local.tm_min = 57, local.tm_isdst = -1;
    const auto time = std::chrono::system_clock::from_time_t(std::mktime(&local));
    JournalWriter(folder / "runs", {earlier}, [time] { return time; });
    SendPage again(source, *this, prompts, Exchange(), Places());
    again.Enter({});
    EXPECT_EQ(again.SummaryText(),
              "The latest journal cannot be read. What can be sent again and exported is that of "
              "an earlier run, of 2026-11-22 18:57.");
    EXPECT_TRUE(again.MaySendFailed() && again.MayExport());
    again.SendFailed();
    EXPECT_THAT(again.SummaryText(), IsEmpty());
}

TEST_F(SendPageTest, SendsAgainWhatFailedWithoutAJournal) {
    folder.Write("runs", "no folder");
    Enter();
    Player(0).ChangeState([](auto& state) { state.diskMebibytes = 0; });
    Fault(1, "withhold=0");
    page.Start();
    const SendPair& inFlight = page.Batch().PairAt(1, 0);
    EXPECT_TRUE(loop.RunUntil([&] { return inFlight.outcome == SendOutcome::kUnderWay; },
                              std::chrono::seconds(20)));
    EXPECT_THAT(page.SummaryText(), StartsWith("The journal cannot be written: "));
    page.Stop();
    page.Leave();
    Fault(1, "");
    Enter();
    page.Export(folder / "runs.csv");
    EXPECT_THAT(folder.Read("runs.csv"), HasSubstr("a.mp4,0,5,failed"));
    page.SendFailed();
    EXPECT_EQ(page.Rows()[0].player.target.ip, Ip(1));
    AwaitEnd();
    EXPECT_THAT(page.SummaryText(),
                EndsWith("1 OK, 1 failed: " + Ip(0) + " (Small disk surplus)."));
}

TEST_F(SendPageTest, TellsWhichSettingsHaveChangedAndKeepsThemAsTheyWere) {
    Enter();
    const std::string before = Player(0).State().controlProtocol;
    page.Start();
    Player(0).ChangeState([](auto& state) {
        state.controlProtocol.replace(state.controlProtocol.find("115200"), 6, "9600");
    });
    AwaitEnd();
    EXPECT_THAT(Proofs()[0], HasSubstr("settings have changed besides the names of categories"));
    EXPECT_EQ(Proofs()[1], "2 confirmed");
    const auto kept = [&] {
        return *ReadFile(BesideJournal(JournalsIn(folder / "runs").front(), Ip(0) + ".json"));
    };
    EXPECT_EQ(kept(), before);
    page.Prove();
    Await(SendPhase::kIdle);
    EXPECT_THAT(Proofs()[0], HasSubstr("settings have changed besides the names of categories"));
    page.Start();
    AwaitEnd();
    EXPECT_EQ(Proofs()[0], "2 confirmed");
    EXPECT_EQ(kept(), Player(0).State().controlProtocol);
}

TEST_F(SendPageTest, SaysWhatIsNotAsItWasSent) {
    Enter();
    Fault(0, "store-short");
    page.Start();
    AwaitEnd();
    EXPECT_THAT(Proofs()[0], HasSubstr("2 not: a.mp4: differs: size"));
    EXPECT_TRUE(page.Batch().PairAt(0, 0).IsTrouble());
    Fault(0, "");
    page.Start();
    AwaitEnd();
    EXPECT_EQ(Proofs()[0], "2 confirmed");
}

}  // namespace
}  // namespace sontaro::test
