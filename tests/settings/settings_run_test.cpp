#include "settings/settings_run.h"

#include <gmock/gmock.h>

#include "support/fake_player_channel.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using State = SettingsState;
using testing::ElementsAre;

const Box kForeignQuestion =
    Question("These are not the player's settings. Send them all the same?");

/// A text is the whole document and its value; "bad" is of no use. What stands before a colon is
/// its key.
struct TextDocument : SettingsDocument {
    Status TakeReply(std::string_view reply) override { return TakeFile(reply); }
    Status TakeFile(std::string_view file) override {
        if (file == "bad") return Error{"bad"};
        text = file;
        return Done{};
    }
    std::string Write() const override { return text; }
    SettingsRows Rows() const override {
        return {{"g", "g", {{"row", RowKind::kText, "row", text}}}};
    }
    EditAnswer Edit(const SettingsEdit& edit) override {
        if (edit.text == "no") return {};
        text += edit.text;
        return {EditAnswer::Outcome::kAccepted, edit.text};
    }
    std::shared_ptr<const SettingsDocument> Keep() const override {
        return std::make_shared<TextDocument>(*this);
    }
    void PutBack(const SettingsDocument& kept) override {
        text = dynamic_cast<const TextDocument&>(kept).text;
    }
    std::vector<std::string> Keys() const override {
        return text.find(':') == std::string::npos ? std::vector<std::string>()
                                                   : std::vector{text.substr(0, text.find(':'))};
    }
    bool HasSettings() const override { return !text.empty(); }
    std::optional<LocalText> RefusalToSend() const override {
        if (text.starts_with("?")) return LocalText{"不", "never"};
        return std::nullopt;
    }

    std::string text;
};

/// A run whose window writes down what it is asked for.
struct Procedure : testing::Test, ExchangeBench, SettingsView {
    explicit Procedure(SettingsBlock number = kBlockCave)
        : block(number), run(number, document, *this, prompts, exchange, player) {
        channel.sent = [this](const PacketHeader& header) {
            log += "send " + std::to_string(header.argument) + channel.payload + "; ";
        };
    }
    void ShowRows() override { log += "rows " + document.text + "; "; }
    void ChooseRow(const std::string&) override {}
    void ShowConfirmed() override {}
    void StateChanged() override {}

    void Reply(std::string_view payload, std::uint32_t argument = 0) {
        WindowMessage message =
            Message(FactsOf(block).reply, kCommandSettings, block | argument << 16, payload);
        run.Handle(message);
    }
    void Acknowledge() { Reply("", 1); }
    void OpenWith(std::string_view payload) {
        run.Read();
        Reply(payload);
        Log();
    }
    void OpenFileWith(const std::string& text) { run.OpenFile(folder.Write("file", text)); }
    void Edit(const std::string& text) { static_cast<void>(run.Edit({"row", text})); }
    void ExpectState(State state) { EXPECT_EQ(run.State(), state); }
    std::string Held() { return run.Confirmed().at("row"); }
    /// From now on the log says what is given away to be kept.
    void Keep() {
        run.KeepBy([this](const std::string& text) { log += "keep " + text + "; "; });
    }
    std::string Log() { return std::exchange(log, ""); }

    const SettingsBlock block;
    const TemporaryFolder folder;
    std::string log;
    RecordingPrompts prompts;
    TextDocument document;
    SettingsRun run;
};

TEST_F(Procedure, GivesAwayWhatThePlayerHoldsBeforeItIsWrittenOver) {
    Keep();
    OpenWith("a");
    Edit("b"), run.Save(), Acknowledge();
    EXPECT_EQ(Log(), "keep a; send 1ab; ");
    Edit("c"), run.Save();
    EXPECT_EQ(Log(), "keep ab; send 1abc; ") << "the player has confirmed it";
    EXPECT_FALSE(run.Held()) << "until the player has answered";
    run.Save();
    EXPECT_EQ(Log(), "");
    Acknowledge(), Acknowledge(), Reply("bad");
    ExpectState(State::kUnreadable);
    run.Read(), Reply(""), Log();
    run.Save();
    EXPECT_EQ(Log().find("keep"), std::string::npos) << "there is nothing in it";
}

TEST_F(Procedure, GivesAwayNothingThatItDoesNotKnowThePlayerToHold) {
    Keep();
    channel.refusal = NotSent::kConnectFailed;
    run.Read();
    channel.refusal.reset();
    OpenFileWith("a"), Log();
    prompts.answers = {true, true};
    run.Save();
    EXPECT_EQ(Log(), "send 1a; ");
    LoseLink();
    run.Save();
    EXPECT_EQ(Log(), "send 1a; ") << "it may have arrived, or not";
}

TEST_F(Procedure, GivesAwayOnceMoreWhatARefusedWriteHasLeftThere) {
    Keep();
    OpenWith("a");
    channel.refusal = NotSent::kTooMuchWaiting;
    Edit("b"), run.Save();
    channel.refusal.reset();
    EXPECT_EQ(Log() + run.Held().value_or("?"), "keep a; a");
    run.Save();
    Report(ExchangeNews::Kind::kNotSupported, kCommandSettings);
    EXPECT_EQ(Log() + run.Held().value_or("?"), "keep a; send 1ab; a");
    run.Save(), LoseLink();
    EXPECT_EQ(Log(), "keep a; send 1ab; ");
    EXPECT_FALSE(run.Held());
}

TEST_F(Procedure, OpensAnEarlierDocumentLikeAFile) {
    OpenWith("k:a");
    run.OpenEarlier("other:b");
    EXPECT_EQ(Log(), "rows other:b; ");
    ExpectState(State::kForeign);
    EXPECT_THAT(prompts.boxes, ElementsAre(Notice("1 of the file's settings are unknown to the "
                                                  "player, 1 of the player's are missing in the "
                                                  "file.")));
    run.Undo();
    EXPECT_EQ(Log(), "rows k:a; ");
    run.OpenEarlier("bad");
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(prompts.boxes.back(),
              Warning("These settings cannot be used. Nothing has been changed!"));
}

struct Overlay : Procedure {
    Overlay() : Procedure(kBlockOsd) {}
};

TEST_F(Procedure, ReadsEditsAndSavesTheWholeDocument) {
    run.Read();
    ExpectState(State::kWaiting);
    run.Save();
    Reply("a");
    Edit("no");
    ExpectState(State::kRead);
    Edit("b");
    EXPECT_EQ(Held(), "a");
    run.Save();
    ExpectState(State::kSent);
    EXPECT_TRUE(run.HasUnsentChanges());
    Acknowledge();
    ExpectState(State::kSaved);
    EXPECT_EQ(Held(), "ab");
    EXPECT_FALSE(run.HasUnsentChanges());
    EXPECT_EQ(Log(), "send 0; rows a; send 1ab; ");
    Acknowledge();  // of nothing
    EXPECT_THAT(prompts.boxes, ElementsAre(Notice("Changes have been saved!")));
}

TEST_F(Procedure, ConfirmsOnlyWhatWasSentWithIt) {
    OpenWith("a");
    run.Save();
    Edit("b");
    Acknowledge();
    ExpectState(State::kChanged);
    EXPECT_EQ(Held(), "a");
    run.Save(), run.Save();
    EXPECT_EQ(Log(), "send 1a; send 1ab; ");
    Acknowledge();
    ExpectState(State::kSent);  // the second one has gone out, and is not confirmed
    EXPECT_EQ(Log(), "send 1ab; ");
    Acknowledge();
    ExpectState(State::kSaved);
}

TEST_F(Procedure, TellsOfAnAnswerThatIsOverdueAndReadAgainAsksOnceMore) {
    run.Read();
    timers.Advance(9s);
    EXPECT_EQ(run.SecondsWithoutAnswer(), 0);
    timers.Advance(5s);
    EXPECT_EQ(run.SecondsWithoutAnswer(), 14);
    run.Read();
    EXPECT_EQ(Log(), "send 0; send 0; ");
    Reply("a");
    EXPECT_EQ(run.SecondsWithoutAnswer(), 0);
    run.Save();
    Edit("b");
    run.Save();
    Acknowledge();  // of the first one, which nobody waits for any more
    ExpectState(State::kSent);
    Acknowledge();
    ExpectState(State::kSaved);
}

TEST_F(Procedure, ReadingAgainAsksBeforeItDiscardsAndDiscardsWhenTheSettingsCome) {
    OpenWith("a");
    Edit("b");
    run.Read();
    EXPECT_EQ(Log(), "");
    prompts.answers = {true, true};
    run.Read();
    Edit("c");  // made since then
    Reply("x");
    EXPECT_EQ(Log(), "send 0; rows xc; ");
    ExpectState(State::kChanged);
    run.Read();
    LoseLink();
    ExpectState(State::kLinkLost);
    EXPECT_TRUE(run.HasUnsentChanges());
}

TEST_F(Procedure, SaysWhyNothingWasSentAndKeepsTheChanges) {
    channel.refusal = NotSent::kConnectFailed;
    run.Read();
    ExpectState(State::kUnreachable);
    EXPECT_FALSE(run.MaySend());
    channel.refusal.reset();
    OpenWith("a");
    Edit("b");
    channel.refusal = NotSent::kTooMuchWaiting;
    run.Save();
    ExpectState(State::kNotSent);
    EXPECT_EQ(run.LastReason(), NotSent::kTooMuchWaiting);
    channel.refusal.reset();
    run.Save();
    LoseLink();
    ExpectState(State::kUnconfirmed);
    run.Save();
    Report(ExchangeNews::Kind::kNotSupported, kCommandSettings);
    ExpectState(State::kNotSupported);
    EXPECT_TRUE(run.HasUnsentChanges());
}

TEST_F(Procedure, WhatComesUnaskedKeepsTheEdits) {
    OpenWith("a");
    Edit("b");
    Reply("x");
    EXPECT_EQ(Log(), "rows xb; ");
    EXPECT_EQ(Held(), "x");
    run.Save();
    Reply("y");  // which is not what the player then confirms
    Acknowledge();
    ExpectState(State::kChanged);
    EXPECT_EQ(Held() + ' ' + document.text, "xb yb");
    Reply("bad");
    ExpectState(State::kUnreadable);
    EXPECT_EQ(document.text, "yb");
}

TEST_F(Procedure, SendsWhatIsNotThePlayersOnlyWhenTheUserInsists) {
    OpenWith("bad");
    EXPECT_FALSE(run.MaySend());
    OpenFileWith("k:file");
    ExpectState(State::kForeign);
    run.Save();
    EXPECT_EQ(Log(), "rows k:file; ");
    prompts.answers = {true};
    run.Save();
    Acknowledge();
    run.Save();  // they are by now
    EXPECT_EQ(Log(), "send 1k:file; send 1k:file; ");
    const Box saved = Notice("Changes have been saved!");
    EXPECT_THAT(prompts.boxes, ElementsAre(kForeignQuestion, kForeignQuestion, saved));
}

TEST_F(Procedure, SaysHowTheKeysOfAFileDifferEvenIfThePlayersSettingsComeLater) {
    OpenWith("k:a");
    OpenFileWith("k:b");
    ExpectState(State::kChanged);
    EXPECT_EQ(prompts.boxes.size(), 0U);
    prompts.answers = {true};
    run.Read();
    OpenFileWith("other:b");
    Reply("k:c");
    EXPECT_EQ(document.text + ' ' + Held(), "other:b k:c");
    ExpectState(State::kForeign);
    EXPECT_EQ(prompts.boxes.back(), Notice("1 of the file's settings are unknown to the player, 1 "
                                           "of the player's are missing in the file."));
}

TEST_F(Procedure, SendsNeitherWhatIsRefusedNorWhatIsTooLong) {
    OpenWith("?");
    run.Save();
    Reply(std::string(kLongestPayload + 1, 'x'));
    run.Save();
    EXPECT_THAT(prompts.boxes,
                ElementsAre(Warning("never"), Warning("The settings are too long to be sent!")));
    ExpectState(State::kRead);
    Reply(std::string(kLongestPayload, 'x'));
    run.Save();
    ExpectState(State::kSent);
}

TEST_F(Procedure, KeepsSettingsInFilesAndChangesNothingWhenOneIsOfNoUse) {
    OpenWith("a");
    run.SaveFile(folder / "a.JSON");
    OpenFileWith("bad");
    run.OpenFile(folder / "missing.JSON");
    run.SaveFile(folder / "file" / "inside.JSON");
    ExpectState(State::kRead);
    run.OpenFile(folder / "a.JSON");
    EXPECT_EQ(Log(), "rows a; ");
    const Box unusable = Warning("The file holds no such settings. Nothing has been changed!");
    EXPECT_THAT(prompts.boxes, ElementsAre(Notice("Save OK!"), unusable, unusable,
                                           Warning("The file cannot be written!")));
}

TEST_F(Procedure, WhatIsUndoneIsAChangeOnlyIfThePlayerHasItOrMayHaveIt) {
    const auto expect = [this](const std::string& text, State state) {
        EXPECT_EQ(document.text, text);
        ExpectState(state);
        EXPECT_EQ(run.HasUnsentChanges(), state == State::kChanged || state == State::kSent);
    };
    OpenWith("a");
    Edit("no");
    EXPECT_FALSE(run.MayUndo());
    Edit("b"), run.Undo();
    expect("a", State::kRead);
    run.Redo(), run.Save(), Acknowledge(), run.Undo();
    expect("a", State::kChanged);
    EXPECT_EQ(Held(), "ab");
    run.Redo();
    expect("ab", State::kSaved);
    Edit("c"), run.Save(), run.Undo(), Edit("d"), Acknowledge();
    expect("abd", State::kChanged);
    run.Undo(), run.Undo();
    expect("a", State::kChanged);
    run.Save(), Acknowledge();
    expect("a", State::kSaved);
    OpenFileWith("file"), run.Undo(), run.Undo();
    expect("a", State::kSaved);
}

TEST_F(Overlay, KeepsItsStepsWhenThePlayerSendsWhatIsShownElseThoseNotConfirmed) {
    OpenWith("a");
    Edit("b"), run.Save(), Reply("ab"), run.Undo();
    EXPECT_EQ(document.text + Held(), "aab");
    run.Redo(), Edit("c"), Reply("x");
    EXPECT_EQ(document.text, "xc");
    run.Undo();
    EXPECT_EQ(document.text + Held(), "xx");
    EXPECT_FALSE(run.MayUndo() || run.HasUnsentChanges());
}

TEST_F(Overlay, GivesAwayWhatThePlayerHasConfirmedWith) {
    Keep();
    OpenWith("a");
    Edit("b"), run.Save(), Reply("A"), run.Save(), Reply("");
    EXPECT_EQ(Log(), "keep a; send 0ab; rows A; keep A; send 0A; ");
    EXPECT_EQ(run.Held(), "A");
}

TEST_F(Overlay, IsConfirmedByTheDocumentAsItIsNowOrByAnEmptyOne) {
    OpenWith("a");
    run.Save();
    Edit("b");
    Reply("A");
    EXPECT_EQ(Log(), "send 0a; rows Ab; ");
    ExpectState(State::kChanged);
    run.Save(), run.Save();
    Edit("c");
    Reply("first");
    EXPECT_EQ(Log(), "send 0Ab; rows firstc; send 0Ab; ");
    ExpectState(State::kSent);
    Reply("");
    ExpectState(State::kChanged);  // what was edited since is not thrown away
    EXPECT_EQ(document.text, "firstc");
    run.Save();
    Reply("bad");
    ExpectState(State::kUnreadable);
    EXPECT_TRUE(prompts.boxes.empty());
}

}  // namespace
}  // namespace sontaro::test
