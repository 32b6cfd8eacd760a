#include "screensplit/split_run.h"

#include <gmock/gmock.h>

#include "screensplit/split_memory.h"
#include "screensplit/split_rows.h"
#include "screensplit/split_samples.h"
#include "support/fake_player_channel.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;
using Why = SplitFailure::Why;
using Kind = SplitStatus::Kind;

const Box kCompleted = Notice("Screen split param setup completed");
const Box kAgain21 = Question("192.168.1.21 has not confirmed. Send again?");
const Box kSameForAll = Question(
    "Please note: the advanced and fixed values of 192.168.1.22 go to all 2 players. Continue?");

/// A wizard's page with two players of three screens; what is sent is written down with the last
/// octet of the player's address.
struct SplitPage : testing::Test, ExchangeBench, SplitView {
    SplitPage() {
        channel.sent = [this](const PacketHeader& header) {
            channel.log += channel.to.ip.substr(10) + ':';
            channel.log += fmt::format("{}.{}; ", header.command, header.subCommand);
        };
        run.Enter({PlayerAt(21), PlayerAt(22)});
    }
    void ShowWall() override { shown = document.Names(); }
    void StateChanged() override { EXPECT_EQ(shown, document.Names()); }

    void From(int lastOctet) { player.ip = PlayerAt(lastOctet).ip; }
    void Block(int lastOctet, const ParameterBlock& block) {
        From(lastOctet);
        WindowMessage message = Message(MessageId::kParameterBlock, kCommandParameterBlock, 0);
        message.record = std::make_unique<ParameterBlock>(block);
        run.Handle(message);
    }
    void Settings(int lastOctet, std::uint16_t block, std::string_view text,
                  std::uint32_t argument = 0) {
        From(lastOctet);
        WindowMessage message =
            Message(MessageId::kScreenSplit, kCommandSettings, block | argument << 16, text);
        run.Handle(message);
    }
    void Document(int lastOctet, const std::string& text = Configuration()) {
        Settings(lastOctet, kBlockScreenSplitRead, text);
    }
    void Confirm(int lastOctet) { Settings(lastOctet, kBlockScreenSplitWrite, ""); }
    void Blocks() { Block(21, BlockOf(2)), Block(22, BlockOf(1)); }
    void Fetch() { Blocks(), Document(22), Document(21), Log(); }
    void Lose(int lastOctet) {
        From(lastOctet);
        LoseLink();
    }
    void ExpectStopped(SplitTask task, std::size_t device, Why why, End how = End::kReply) {
        ASSERT_TRUE(run.Failure() && run.MayRetry());
        EXPECT_EQ(run.Failure()->task, task);
        EXPECT_EQ(run.Failure()->device, device);
        EXPECT_EQ(run.Failure()->why, why);
        EXPECT_EQ(run.Failure()->ended.how, how);
        EXPECT_EQ(run.StepState(), SplitStepState::kEnded);
        EXPECT_FALSE(run.IsBusy() || run.Progress());
    }
    void ExpectStatus(Kind kind, const std::vector<std::string>& unconfirmed = {}) {
        EXPECT_EQ(run.Status().kind, kind);
        EXPECT_EQ(run.Status().unconfirmed, unconfirmed);
    }
    std::string Log() { return channel.Log(); }
    std::vector<Box> Boxes() { return std::exchange(prompts.boxes, {}); }

    TemporaryFolder folder;
    RecordingPrompts prompts;
    JsonFile preferences{folder / "preferences.json"};
    SplitDocument document;
    std::vector<ScreenName> shown;
    SplitRun run{document, *this, prompts, preferences, exchange};
};

TEST_F(SplitPage, ClosesAllLinksThenAsksForEachBlockAndTheLastPlayersDocument) {
    EXPECT_EQ(Log(), "close; 21:54.0; ");
    EXPECT_EQ(run.StepState(), SplitStepState::kRunning);
    Block(22, BlockOf(1));
    EXPECT_EQ(Log(), "");
    Block(21, BlockOf(2));
    EXPECT_EQ(Log(), "22:54.0; ");
    EXPECT_EQ(run.Progress()->position, 1U);
    Block(22, BlockOf(1));
    EXPECT_EQ(Log(), "22:3.12; ");
    EXPECT_EQ(document.Names().size(), 3U);
    EXPECT_EQ(run.StepState(), SplitStepState::kQueued);
    EXPECT_FALSE(run.MayFinish());
    Document(22);
    EXPECT_EQ(run.StepState(), SplitStepState::kEnded);
    EXPECT_TRUE(run.MayFinish() && !run.Progress());
    ExpectStatus(Kind::kNotApplied);
}

TEST_F(SplitPage, SendsTheSameDocumentToOneAfterAnother) {
    Fetch();
    run.Finish();
    EXPECT_EQ(Log(), "21:3.13; ");
    const std::string sent = channel.payload;
    EXPECT_EQ(run.StepState(), SplitStepState::kQueued);
    document.SetOverlap(0, 5);
    Confirm(22);
    EXPECT_EQ(Log(), "");
    Confirm(21);
    EXPECT_EQ(Log(), "22:3.13; ");
    EXPECT_EQ(channel.payload, sent);
    ExpectStatus(Kind::kEdited);
    document.Undo();
    ExpectStatus(Kind::kSent, {"192.168.1.22"});
    document.Redo();
    Confirm(22);
    EXPECT_EQ(RememberedWall(document, preferences)->seams[0].x, 0);
    document.Undo();
    ExpectStatus(Kind::kSent);
    document.PutBackFetched();
    ExpectStatus(Kind::kEdited);
    EXPECT_THAT(Boxes(), ElementsAre(kCompleted));
    EXPECT_FALSE(run.IsBusy());
}

TEST_F(SplitPage, GivesAwayWhatEveryPlayerHoldsThatHasSaidSo) {
    std::vector<std::string> kept;
    run.KeepBy([&](const DeviceRecord& from, const std::string& text) {
        kept.push_back(from.ip.substr(10) + text);
    });
    const std::string other = Configuration(R"([{"keyVal":"a"}])");
    Blocks(), Document(22);  // and the other one has not answered yet
    prompts.answers = {true};
    run.Finish(), Confirm(21);
    EXPECT_THAT(kept, ElementsAre("22" + Configuration()));
    Confirm(22), kept.clear();
    const std::string sent = channel.payload;
    EXPECT_EQ(run.HeldByLast(), sent);
    run.Enter({PlayerAt(21), PlayerAt(22)});
    Blocks(), Document(22), Document(21, other);
    prompts.answers = {true};
    run.Finish(), Lose(21), run.Retry(), Confirm(21);
    EXPECT_THAT(kept, ElementsAre("21" + other, "22" + Configuration())) << "each of them once";
}

TEST_F(SplitPage, APlayerWithoutCorrectionOrWithoutADocumentEndsTheFetch) {
    Block(21, BlockOf(2));
    Block(22, ParameterBlock{});
    ExpectStopped(SplitTask::kFetchBlocks, 1, Why::kNotCorrected);
    EXPECT_THAT(Boxes(),
                ElementsAre(Warning("Please adjust geometric correction and fusion first")));
    ParameterBlock corrected{};
    corrected[6490] = 1;
    Log(), run.Retry();
    EXPECT_EQ(Log(), "close; 22:54.0; ");
    Block(22, corrected);
    EXPECT_EQ(Log(), "22:3.12; ");
    EXPECT_EQ(document.Names().size(), 3U);
    Document(22, "no JSON");
    ExpectStopped(SplitTask::kFetchDocument, 1, Why::kUnreadable);
    EXPECT_FALSE(run.MayFinish());
    Log(), run.Retry();
    EXPECT_EQ(Log(), "close; 22:3.12; ");
    Document(22);
    EXPECT_TRUE(run.MayFinish());
}

TEST_F(SplitPage, EveryEndButAnAnswerStopsTheStepWhichIsTakenUpAgainThere) {
    using enum SplitTask;
    const auto reach = [&](SplitTask task) {
        run.Enter({PlayerAt(21)});
        From(21);
        if (task != kFetchBlocks) Block(21, BlockOf(2));
        if (task == kSend) Document(21), run.Finish();
    };
    const auto happens = [&](End how, SplitTask task) {
        if (how == End::kRefused)
            Settings(21, task == kSend ? kBlockScreenSplitWrite : kBlockScreenSplitRead, "", 2);
        if (how == End::kNotSupported)
            Report(ExchangeNews::Kind::kNotSupported,
                   task == kFetchBlocks ? kCommandParameterBlock : kCommandSettings);
        if (how == End::kLinkEnded) LoseLink();
        if (how == End::kTimedOut) timers.Advance(12s);
    };
    for (const End how : {End::kNotSupported, End::kLinkEnded, End::kTimedOut, End::kRefused})
        for (const SplitTask task : {kFetchBlocks, kFetchDocument, kSend}) {
            if (how == End::kRefused && task == kFetchBlocks) continue;  // no refusal is known
            reach(task);
            happens(how, task);
            ExpectStopped(task, 0, Why::kNotAnswered, how);
            Log(), run.Retry();
            EXPECT_EQ(Log(), std::string("close; 21:") + (task == kFetchBlocks     ? "54.0; "
                                                          : task == kFetchDocument ? "3.12; "
                                                                                   : "3.13; "));
            EXPECT_FALSE(run.Failure());
        }
}

TEST_F(SplitPage, WhatIsNotSentStopsItToo) {
    channel.refusal = NotSent::kConnectFailed;
    Block(21, BlockOf(2));
    ExpectStopped(SplitTask::kFetchBlocks, 1, Why::kNotAnswered, End::kNotSent);
    EXPECT_EQ(run.Failure()->ended.reason, NotSent::kConnectFailed);
    channel.refusal.reset();
    DeviceRecord unreachable = PlayerAt(21);
    unreachable.tcpPort = 1024;
    Log(), run.Enter({unreachable});
    EXPECT_EQ(Log(), "close; ");
    ExpectStopped(SplitTask::kFetchBlocks, 0, Why::kNotAnswered, End::kNotSent);
}

TEST_F(SplitPage, FetchingIsRepeatedThreeTimesSendingOnlyWhenTheUserWantsIt) {
    Log(), timers.Advance(2999ms);
    EXPECT_EQ(Log(), "");
    timers.Advance(1ms);
    EXPECT_EQ(Log(), "21:54.0; ");
    timers.Advance(6s);
    EXPECT_EQ(Log(), "21:54.0; 21:54.0; ");
    EXPECT_TRUE(run.IsBusy());
    Fetch();
    run.Finish();
    prompts.answers = {true, false};
    Log(), timers.Advance(3s);
    EXPECT_EQ(Log(), "21:3.13; ");
    timers.Advance(3s);
    EXPECT_THAT(Boxes(), ElementsAre(kAgain21, kAgain21));
    ExpectStopped(SplitTask::kSend, 0, Why::kNotAnswered, End::kTimedOut);
    ExpectStatus(Kind::kSent, {"192.168.1.21", "192.168.1.22"});
}

TEST_F(SplitPage, WhatSettlesTheMatterWhileTheUserIsAskedTakesTheQuestionBack) {
    Fetch();
    run.Finish();
    const auto settle = [&](const std::function<void()>& action) {
        prompts.answers = {true};
        prompts.whileShown = action;
        Log(), timers.Advance(3s);
        prompts.whileShown = [] {};
    };
    settle([&] { Confirm(21); });
    EXPECT_EQ(Log(), "22:3.13; ");
    EXPECT_THAT(Boxes(), ElementsAre(kAgain21, Withdrawn()));
    settle([&] { run.Leave(); });
    EXPECT_EQ(Log(), "");
    EXPECT_THAT(Boxes(), ElementsAre(_, Withdrawn()));
    EXPECT_FALSE(run.Failure());
}

TEST_F(SplitPage, OnlyTheEndOfTheAskedPlayersLinkCounts) {
    Block(21, BlockOf(2));
    Lose(21);
    EXPECT_TRUE(run.IsBusy());
    WindowMessage message = Message(MessageId::kLinkEnded, 0, 0);
    run.Handle(message);
    EXPECT_TRUE(run.IsBusy());
}

TEST_F(SplitPage, LateRepliesOfAnEarlierAttemptCountForNothing) {
    timers.Advance(12s);
    ++channel.connection;
    Log(), run.Retry();
    EXPECT_EQ(Log(), "close; 21:54.0; ");
    --channel.connection;
    Block(21, BlockOf(1));
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(run.Progress()->position, 0U);
}

TEST_F(SplitPage, RetryAfterAnEditSendsToAllPlayersAgain) {
    Fetch();
    run.Finish();
    Confirm(21);
    Lose(22);
    ExpectStopped(SplitTask::kSend, 1, Why::kNotAnswered, End::kLinkEnded);
    Log(), run.Retry();
    EXPECT_EQ(Log(), "close; 22:3.13; ");
    Lose(22);
    document.SetOverlap(0, 7);
    Log(), run.Retry();
    EXPECT_EQ(Log(), "close; 21:3.13; ");
}

TEST_F(SplitPage, AppliesSlotsBeforeItSendsAndRefusesAnEmptyWall) {
    Fetch();
    document.SetSlot(0, 1);
    run.Finish();
    for (std::size_t slot = 0; slot < 3; ++slot) document.SetSlot(slot, {});
    run.Finish();
    EXPECT_EQ(Log(), "");
    EXPECT_THAT(Boxes(), ElementsAre(Warning("The screen cannot be reused"),
                                     Warning("Please tick the devices!")));
    document.SetSlot(2, 1);
    run.Finish();
    EXPECT_EQ(Log(), "21:3.13; ");
    EXPECT_TRUE(document.IsApplied());
}

TEST_F(SplitPage, AsksBeforeOtherPlayersSettingsAreReplaced) {
    Blocks();
    EXPECT_EQ(channel.lastBoxes, sontaro::Boxes::kShown);
    Document(22), Log();
    EXPECT_EQ(channel.lastBoxes, sontaro::Boxes::kMuted) << "nobody waits for what is compared";
    Document(21, Configuration(R"([{"keyVal":"a"}])"));
    run.Finish();
    EXPECT_THAT(Boxes(), ElementsAre(kSameForAll));
    EXPECT_EQ(Log(), "");
    prompts.answers = {true};
    run.Finish(), Confirm(21), Confirm(22);
    EXPECT_THAT(Boxes(), ElementsAre(kSameForAll, kCompleted));
    run.Finish();
    EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(SplitPage, ComingBackFetchesAgainAndKeepsTheWallOfTheSamePlayers) {
    const auto fetch = [&](int value) {
        const std::string entry = fmt::format(
            R"([{{"keyVal":"a","inputType":1,"lableName":"a","select":{0},"valueRange":[{0}]}}])",
            value);
        Blocks(), Document(22, Configuration(entry)), Document(21, Configuration(entry)), Log();
    };
    fetch(1);
    EXPECT_TRUE(run.ApplyOrder());
    document.DismissScreen(1);
    EXPECT_EQ(EditSplitRow(document, {"varParam/a", "7"}).outcome, EditAnswer::Outcome::kAccepted);
    run.Leave();
    run.Finish();  // pressed again before the page is asked for
    Log(), run.Enter({PlayerAt(21), PlayerAt(22)});
    EXPECT_EQ(Log(), "close; 21:54.0; ");
    EXPECT_FALSE(run.MayFinish());
    fetch(2);
    EXPECT_EQ(document.WallLength(), 2U);
    EXPECT_EQ(DataOf(document)["varParam"][0]["select"], 7);
    run.Enter({PlayerAt(22)});
    EXPECT_THAT(document.Screens(), IsEmpty());
    EXPECT_THAT(document.Names(), IsEmpty());
    run.Leave();
    EXPECT_FALSE(run.IsBusy());
}

}  // namespace
}  // namespace sontaro::test
