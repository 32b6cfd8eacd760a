#include "playercontrol/player_control_run.h"

#include <gmock/gmock.h>

#include <random>

#include "support/fake_player_channel.h"
#include "support/recording_prompts.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using State = SettingsState;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Box kNotThePlayers = Question("These are not the player's settings. Send them all the same?");
const Box kDeleteQuestion = Question("Do you really want to delete it?");

constexpr const char* kVideos = R"({"cloudNewVideoScreenDatas":[{"screenID":0,
    "cloudVideoTypes":[{"type":"舞曲","videoDatas":[]}]}]})";
constexpr const char* kDocument =
    R"({"Players":[{"PlayerID":3,"Play":"A5","VideoType":[{"TypeName":"a"},{"TypeName":"b"}]}]})";

/// A run whose window writes down what it is asked for.
struct PlayerControlEditor : testing::Test, ExchangeBench, PlayerControlView {
    void ShowRows() override { log += "rows; "; }
    void ChooseRow(const std::string& key) override { log += "choose " + key + "; "; }
    void ShowConfirmed() override {}
    void StateChanged() override {}
    void ShowPlayers() override { log += "players; "; }
    void ShowVideos() override { log += "videos; "; }

    void Videos(const std::string& text) {
        WindowMessage message = Message(MessageId::kPlayerState, 10, 1, text);
        run.Settings().Handle(message);
    }
    void Document(const std::string& text, std::uint32_t argument = 0) {
        WindowMessage message = Message(MessageId::kPlayerControl, 3, 21 | argument << 16, text);
        run.Settings().Handle(message);
    }
    void Confirm() { Document("", 1); }
    void Open() { run.Settings().Read(), Videos(kVideos); }
    void ReadFrom(const std::string& text) {
        Open(), Document(text);
        Log();
    }
    void Edit(const std::string& key, const std::string& text) {
        EXPECT_EQ(run.Edit({key, text}).outcome, EditAnswer::Outcome::kAccepted) << key;
    }
    /// The players' captions, the chosen one with a star.
    std::string Players() const {
        std::string players;
        for (const ControlledPlayerEntry& entry : run.Players())
            players += entry.caption + (entry.id == run.ChosenPlayer() ? "* " : " ");
        return players;
    }
    /// The names of the chosen player's types.
    std::string Types() const {
        std::string names;
        const SettingsRows rows = run.Rows();
        for (const SettingsGroup& type : rows[2].groups) names += type.rows[0].value + ' ';
        return names;
    }
    std::string Play() const { return run.Rows()[1].rows[0].value; }
    void ExpectState(State state) { EXPECT_EQ(run.Settings().State(), state); }
    void ExpectNote(const std::string& part) {
        EXPECT_THAT(run.Note() ? run.Note()->english : "", HasSubstr(part));
    }
    std::string Log() { return std::exchange(log, "") + channel.Log(); }
    std::vector<Box> Boxes() { return std::exchange(prompts.boxes, {}); }

    std::string log;
    RecordingPrompts prompts;
    PlayerControlRun run{*this, prompts, exchange, player};
};

TEST_F(PlayerControlEditor, ReadsTheVideosAndThenTheSettingsWithoutAWord) {
    run.Settings().Read();
    ExpectNote("list of videos");
    EXPECT_EQ(Log(), "10.1.0; ");
    Videos(kVideos);
    EXPECT_EQ(Log(), "videos; 3.21.0; ");
    EXPECT_EQ(run.Videos().screens[0][0].name, "舞曲");
    Document(kDocument);
    EXPECT_EQ(Log(), "players; rows; ");
    EXPECT_EQ(Players() + Types() + Play(), "Player4* a b A5");
    EXPECT_FALSE(run.Note());
    ExpectState(State::kRead);
    run.Save();
    EXPECT_THAT(channel.payload, HasSubstr(R"("Play" : "a5")"));
    Confirm();
    EXPECT_EQ(Log(), "3.21.1; ");
    EXPECT_THAT(Boxes(), ElementsAre(Notice("Changes have been saved!")));
    ExpectState(State::kSaved);
}

TEST_F(PlayerControlEditor, AListThatCannotBeReadIsToldAndMayBeAskedForAgain) {
    run.Settings().Read();
    Videos("one.mp4?two.mp4?");
    EXPECT_THAT(run.Videos().screens[0], IsEmpty());
    ExpectNote("cannot be read");
    Open();
    EXPECT_EQ(channel.Log(), "10.1.0; 10.1.0; 3.21.0; ");
    ExpectState(State::kWaiting);
    EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(PlayerControlEditor, WhatWasEditedBeforeTheSettingsCameIsDoneToThem) {
    Open();
    run.AddPlayer();
    const std::string group = run.AddType("x").value();
    Edit(group + "/SendCmd", "0A");
    EXPECT_EQ(Players() + Types(), "Player1* x ");
    Document(R"({"Players":[{"PlayerID":0,"Play":"A5"}]})");
    EXPECT_EQ(Players() + Types() + Play(), "Player1 Player2* x ");
    EXPECT_EQ(run.Rows()[2].groups[0].rows[1].value, "0a");
    ExpectState(State::kChanged);
    Document(R"({"Players":[{},{"PlayerID":1}]})");
    EXPECT_EQ(Players(), "Player1* Player2 ");
    EXPECT_THAT(
        Boxes(),
        ElementsAre(Warning("The player's settings are full: 2 of your additions are lost.")));
}

TEST_F(PlayerControlEditor, SavingBeforeTheSettingsWereReadAsks) {
    run.Settings().Read();
    EXPECT_FALSE(run.MaySend());
    Videos(kVideos);
    run.AddPlayer();
    run.Save();
    EXPECT_EQ(channel.Log(), "10.1.0; 3.21.0; 3.21.0; ");
    prompts.answers = {true};
    run.Save();
    EXPECT_EQ(channel.Log(), "3.21.1; ");
    Document(kDocument);
    EXPECT_EQ(Players(), "Player1* ");
    Confirm();
    EXPECT_THAT(Boxes(),
                ElementsAre(kNotThePlayers, kNotThePlayers, Notice("Changes have been saved!")));
}

TEST_F(PlayerControlEditor, DeletesWhatIsChosenOnceTheUserAgrees) {
    ReadFrom(kDocument);
    run.DeleteType(ChosenInGrid{"Players/0#1"});
    run.DeleteType(ChosenInGrid{"Players/0/VideoType", true});
    run.DeleteType(ChosenInGrid{"Players/0/VideoType/1", true});
    const Box noType = Warning("No type selected!");
    EXPECT_THAT(Boxes(),
                ElementsAre(noType, Warning("Select the category to delete!"), kDeleteQuestion));
    EXPECT_EQ(Types(), "a b ");
    Edit("Players/0/PlayerID", "6");
    EXPECT_EQ(Log(), "players; ");
    run.AddPlayer();
    run.ChoosePlayer(0);
    prompts.answers = {true, true};
    run.DeletePlayer();
    EXPECT_EQ(Players(), "Player1* ");
    run.DeletePlayer();
    EXPECT_EQ(Players(), "");
}

TEST_F(PlayerControlEditor, ADeletedTypeComesBackAndIsDoneToADocumentThatComesLater) {
    ReadFrom(
        R"({"Players":[{"VideoType":[{"TypeName":"a"},{"TypeName":"b","SendCmd":"A5"}]},{}]})");
    prompts.answers = {true};
    run.DeleteType(ChosenInGrid{"Players/0/VideoType/1", true});
    run.Save(), Confirm();
    run.ChoosePlayer(1);
    Log();
    run.Settings().Undo();
    EXPECT_THAT(Log(), testing::EndsWith("choose Players/0/VideoType/1/TypeName; "));
    EXPECT_EQ(Players() + Types(), "Player1* Player1 a b ");
    ExpectState(State::kChanged);
    Document(R"({"Players":[{"Play":"01","VideoType":[{"TypeName":"A"}]}]})");
    EXPECT_EQ(Types() + Play(), "A b 01");
    EXPECT_EQ(run.Rows()[2].groups[1].rows[1].value, "a5");
}

TEST(PlayerControlHistory, LeadsBackToTheSameBytesOnAnyWay) {
    PlayerControlSettings document;
    ASSERT_TRUE(document.TakeReply(
        R"({"x":1,"Players":[{"PlayerID":99999999999,"y":[2],"VideoType":[{"z":3},{},{}]}]})"));
    SettingsHistory history(document);
    std::vector<std::string> texts = {document.Write()};
    std::size_t now = 0;
    std::mt19937 random(20);
    const auto any = [&](std::size_t count) { return random() % count; };
    const auto change = [&]() -> SettingsEdit {
        std::vector<std::string> keys;
        VisitRows(document.Rows(), [&](const SettingsRow& row) { keys.push_back(row.key); });
        if (keys.empty() || any(9) == 0) return document.NewPlayer();
        const ControlElement element = *ElementOf(keys[any(keys.size())]);
        if (any(4) == 0) return document.NewType(element.player, "new");
        if (any(6) == 0) return document.Without(element);
        return {keys[any(keys.size())], std::to_string(10 + any(90))};
    };
    for (int i = 0; i < 1000; ++i) {
        if (any(3) == 0 && history.CanUndo()) {
            history.Undo(), --now;
        } else if (any(3) == 0 && history.CanRedo()) {
            history.Redo(), ++now;
        } else if (history.Edit(change()).outcome == EditAnswer::Outcome::kAccepted) {
            texts.resize(++now);
            texts.push_back(document.Write());
            if (texts[now] == texts[now - 1]) texts.pop_back(), --now;  // no step that is seen
        }
        ASSERT_EQ(document.Write(), texts[now]) << i;
    }
    while (history.CanUndo()) history.Undo();
    EXPECT_EQ(document.Write(), texts[0]);
    EXPECT_TRUE(history.IsConfirmed());
}

}  // namespace
}  // namespace sontaro::test
