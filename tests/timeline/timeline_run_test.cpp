#include "timeline/timeline_run.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "exchange/player_requests.h"
#include "support/fake_player_channel.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using State = TimelineState;
using testing::ElementsAre;
using testing::IsEmpty;

const Box kSaved = Notice("Changes have been saved!");
const Box kForeignQuestion =
    Question("The player's own timeline has not been read. Send these commands all the same?");

std::string TimelineOf(std::initializer_list<int> times) {
    TimelineDocument document;
    for (const int time : times) document.Insert({0, "t", "v", time, 0, "", 0, "A5"});
    return document.Write();
}

/// A run whose window writes down what it is asked for. A list of videos is any text but "bad".
struct TimelineProcedure : testing::Test, ExchangeBench, TimelineView {
    void ShowNodes() override { log += "nodes; "; }
    void ShowVideoList() override { log += "list; "; }
    void StateChanged() override {}

    void AnswerList(std::string_view text = "[]") {
        WindowMessage message = Message(MessageId::kPlayerState, kCommandPlayerState, 0, text);
        run.Handle(message);
    }
    void Answer(std::string_view text, std::uint32_t argument = 0) {
        WindowMessage message = Message(MessageId::kPlayerControl, kCommandSettings,
                                        kBlockPlayerTimeline | argument << 16, text);
        run.Handle(message);
    }
    void Confirm() { Answer("", 1); }
    void Save() { run.Save(), Confirm(); }
    void Undo() { document.Undo(), run.Changed(); }
    void OpenWith(std::string_view text) {
        run.Read();
        AnswerList();
        Answer(text);
        Log();
    }
    NodeId Add(std::int64_t time) {
        const NodeId id = document.Insert({0, "t", "v", time, 0, "", 0, "A5"});
        run.Changed();
        return id;
    }
    void OpenFileWith(const std::string& text) { run.OpenFile(folder.Write("时.JSON", text)); }
    void ExpectTimes(const std::vector<std::int64_t>& times) {
        std::vector<std::int64_t> held;
        for (std::size_t row = 0; row < document.NodeCount(); ++row)
            held.push_back(document.NodeAt(row).time);
        EXPECT_EQ(held, times);
    }
    void ExpectState(State state) { EXPECT_EQ(run.State(), state); }
    std::string Log() { return std::exchange(log, "") + channel.Log(); }

    std::string log;
    TemporaryFolder folder;
    RecordingPrompts prompts;
    TimelineDocument document;
    TimelineRun run{
        document,
        *this,
        prompts,
        exchange,
        player,
        {[] {
             Request request = ReadSettings(kBlockPlayerTimeline);
             request.packet = ReadyPacket(kCommandPlayerState, 0);
             request.judge = [](const WindowMessage& message) {
                 const bool isList = message.id == MessageId::kPlayerState;
                 return Verdict{isList ? Verdict::Kind::kReply : Verdict::Kind::kNotMine};
             };
             return request;
         },
         [](std::string_view text) { return text != "bad"; }}};
};

TEST_F(TimelineProcedure, AsksForTheListThenForTheTimeline) {
    run.Read();
    EXPECT_EQ(Log(), "10.0.0; ");
    AnswerList("bad");
    EXPECT_EQ(Log(), "list; 3.23.0; ");
    EXPECT_EQ(run.VideoList(), VideoListState::kUnreadable);
    EXPECT_FALSE(run.MaySend());
    Answer(TimelineOf({1, 2}));
    EXPECT_EQ(Log(), "nodes; ");
    ExpectTimes({1, 2});
    ExpectState(State::kRead);
    EXPECT_FALSE(run.HasUnsentChanges() || document.CanUndo());
}

TEST_F(TimelineProcedure, GoesOnWithoutAListThatDoesNotComeOrIsNotKnown) {
    run.Read();
    timers.Advance(kAnswerLimit);
    EXPECT_EQ(Log(), "list; 10.0.0; 3.23.0; ");
    EXPECT_EQ(run.VideoList(), VideoListState::kMissing);
    Answer("");
    ExpectState(State::kRead);
    EXPECT_TRUE(run.MaySend());
    LoseLink();
    run.Read();
    Report(ExchangeNews::Kind::kNotSupported, kCommandPlayerState);
    ExpectState(State::kNotSupported);
    LoseLink(), Log();
    run.Read();
    EXPECT_EQ(Log(), "3.23.0; ");
}

TEST_F(TimelineProcedure, InsertsAgainWhatWasAddedBeforeTheTimelineCame) {
    run.Read();
    Add(7);
    AnswerList();
    Add(8);
    Answer(TimelineOf({1}));
    ExpectTimes({1, 7, 8});
    ExpectState(State::kChanged);
    Undo();
    ExpectTimes({1});
    ExpectState(State::kRead);
    EXPECT_FALSE(document.CanUndo());
}

TEST_F(TimelineProcedure, AsksWhichHoldsWhenAFileWasOpenedBefore) {
    for (const bool playersHolds : {false, true}) {
        run.Read(), AnswerList();
        OpenFileWith(TimelineOf({5}));
        prompts.answers = {playersHolds};
        Answer(TimelineOf({1}));
        EXPECT_THAT(prompts.boxes.back().text, testing::StartsWith("The player's timeline has "));
        ExpectTimes({playersHolds ? 1 : 5});
        ExpectState(playersHolds ? State::kRead : State::kForeign);
        prompts.answers = {true};
    }
}

TEST_F(TimelineProcedure, AsksBeforeItSendsWhatIsNotThePlayers) {
    run.Read(), AnswerList();
    OpenFileWith(TimelineOf({5}));
    Answer("nonsense");
    ExpectState(State::kUnreadable);
    ExpectTimes({5});
    Log();
    run.Save();
    EXPECT_EQ(Log(), "");
    prompts.answers = {true};
    Save();
    EXPECT_EQ(Log(), "3.23.1; 3.23.0; ");
    run.Save();
    EXPECT_THAT(prompts.boxes, ElementsAre(kForeignQuestion, kForeignQuestion, kSaved));
}

TEST_F(TimelineProcedure, ReadsAgainWhatHasBeenConfirmedAndCompares) {
    OpenWith(TimelineOf({1}));
    Add(2), Add(2);
    run.Save();
    EXPECT_EQ(channel.payload, TimelineOf({1, 2, 2}));
    ExpectState(State::kSent);
    EXPECT_TRUE(run.HasUnsentChanges() && prompts.boxes.empty());
    Confirm();
    EXPECT_EQ(Log(), "3.23.1; 3.23.0; ");
    EXPECT_THAT(prompts.boxes, ElementsAre(kSaved));
    EXPECT_FALSE(run.HasUnsentChanges());
    ExpectState(State::kComparing);
    Answer(TimelineOf({2, 1, 2}));
    ExpectState(State::kEqual);
    Save();
    Answer(TimelineOf({1, 2, 9}));
    ExpectState(State::kDifferent);
    EXPECT_EQ(Told(run.Difference()),
              "Confirmed, but the player holds another timeline: 1 nodes are missing, 1 are not "
              "from here.\nPlayer1 t v 0.002 232:0 A5\nPlayer1 t v 0.009 232:0 A5");
    ExpectTimes({1, 2, 2});
    Save();
    LoseLink();
    ExpectState(State::kUncompared);
}

TEST_F(TimelineProcedure, GivesAwayWhatThePlayerHoldsBeforeItIsWrittenOver) {
    std::vector<std::string> kept;
    run.KeepBy([&](std::string text) { kept.push_back(std::move(text)); });
    const std::string first = TimelineOf({1});
    OpenWith(first);
    Add(2);
    run.Save();
    EXPECT_THAT(kept, ElementsAre(first));
    EXPECT_FALSE(run.Held());
    Confirm();
    EXPECT_EQ(run.Held(), TimelineOf({1, 2})) << "until it is read again";
    Answer(TimelineOf({3}));
    run.Save();
    EXPECT_THAT(kept, ElementsAre(first, TimelineOf({3})));
}

TEST_F(TimelineProcedure, OpensAnEarlierTimelineLikeAFile) {
    OpenWith(TimelineOf({1}));
    run.OpenEarlier(TimelineOf({2, 3}));
    ExpectTimes({2, 3});
    ExpectState(State::kChanged);
    Undo();
    ExpectTimes({1});
    run.OpenEarlier("bad");
    ExpectTimes({1});
    EXPECT_THAT(prompts.boxes, ElementsAre(Warning("These settings cannot be used. Nothing has "
                                                   "been changed!")));
}

TEST_F(TimelineProcedure, WhatIsChangedWhileItIsSentIsNotConfirmed) {
    OpenWith(TimelineOf({1}));
    Add(2);
    run.Save();
    Add(3);
    Confirm();
    Answer(TimelineOf({1, 2}));
    EXPECT_TRUE(run.Difference().IsNone());
    ExpectState(State::kChanged);
    Undo();
    ExpectState(State::kEqual);
}

TEST_F(TimelineProcedure, SendsNothingBeyondTheLimit) {
    OpenWith("{}");
    const NodeId id = Add(1);
    TimeNode node = *document.Find(id);
    node.ip = std::string(kLongestTimeline - document.TextBytes() + 1, '1');
    document.Apply({{}, {{id, node}}, {}});
    run.Save();
    EXPECT_THAT(prompts.boxes,
                ElementsAre(Warning("There are too many commands, please delete some!")));
    EXPECT_EQ(Log(), "");
    node.ip.pop_back();
    document.Apply({{}, {{id, node}}, {}});
    run.Save();
    EXPECT_EQ(channel.payload.size(), 8'192'000U);
}

TEST_F(TimelineProcedure, AsksBeforeReadingAgainDiscardsChanges) {
    OpenWith(TimelineOf({1}));
    Add(2);
    run.Read();
    EXPECT_EQ(Log(), "");
    prompts.answers = {true};
    run.Read(), AnswerList(), Answer(TimelineOf({4}));
    ExpectTimes({4});
    Undo();
    ExpectTimes({1, 2});
}

TEST_F(TimelineProcedure, ATimelineThatComesByItselfIsTakenUnlessThereAreChanges) {
    OpenWith(TimelineOf({1}));
    Answer(TimelineOf({3}));
    ExpectTimes({3});
    Answer(""), Confirm();
    Add(4);
    Answer(TimelineOf({5}));
    ExpectTimes({3, 4});
}

TEST_F(TimelineProcedure, NamesAFileThatCannotBeReadAndKeepsTheNodes) {
    OpenWith(TimelineOf({1}));
    OpenFileWith("{\"cmdInfos\":5}");
    ExpectTimes({1});
    ExpectState(State::kRead);
    run.SaveFile(folder / "kept.JSON");
    EXPECT_THAT(prompts.boxes, ElementsAre(Warning("\"时.JSON\" cannot be read, nothing has been "
                                                   "changed: no \"cmdInfos\""),
                                           Notice("Save OK!")));
    EXPECT_EQ(folder.Read("kept.JSON"), TimelineOf({1}));
}

TEST_F(TimelineProcedure, TriesOneCommand) {
    OpenWith("{}");
    run.Tests().TestOne(document.Insert({2, "t", "v", 1, kPortTcp, "10.0.0.1", 4352, "A5"}));
    EXPECT_EQ(Log(), "3.23.2; ");
    EXPECT_EQ(Compact(AsBytes(channel.payload)),
              R"({"cmd":"A5","expendCmdIndex":5,"ip":"10.0.0.1","playerNum":2,"port":4352})");
}

TEST_F(TimelineProcedure, TriesCommandsInTurnUntilItIsStoppedOrOneFails) {
    OpenWith(TimelineOf({1, 2, 3}));
    const NodeIds ids = {document.IdAt(2), document.IdAt(0), document.IdAt(1)};
    run.Tests().TestAll(ids, 500ms);
    timers.Advance(500ms);
    EXPECT_EQ(Log(), "3.23.2; 3.23.2; ");
    EXPECT_THAT(run.Tests().Last()->Told(), testing::EndsWith(" sent (2 of 3): Player1 232:0 A5"));
    run.Tests().Stop();
    timers.Advance(1s);
    EXPECT_EQ(Log(), "");
    run.Tests().TestAll(ids, 500ms);
    channel.refusal = NotSent::kConnectFailed;
    timers.Advance(5s);
    EXPECT_FALSE(run.Tests().IsRunning());
    EXPECT_EQ(run.Tests().Last()->number, 2U);
    EXPECT_EQ(run.Tests().Last()->outcome, TestReport::Outcome::kNotSent);
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

}  // namespace
}  // namespace sontaro::test
