#include "controlprotocol/control_protocol_run.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "base/file.h"
#include "support/fake_player_channel.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using Line = SerialLineState::Kind;
using State = SettingsState;
using testing::ElementsAre;

const Box kRestartQuestion = Question("After setting the parameters, restart the device?");

/// A run whose window writes down what it is asked for.
struct Editor : testing::Test, ExchangeBench, ControlProtocolView {
    Editor() { Begin(ProtocolVariant::kCurrent); }

    void Begin(ProtocolVariant variant) {
        run = std::make_unique<ControlProtocolRun>(*this, prompts, exchange, player, file, variant);
    }
    void ShowRows() override { log += "rows; "; }
    void ChooseRow(const std::string& key) override { log += "choose " + key + "; "; }
    void ShowConfirmed() override {}
    void StateChanged() override {}
    void ShowChange(const SettingsEdit& change) override { log += "change " + change.text + "; "; }
    std::optional<int> ChosenCategory() const override { return chosen; }
    bool IsEditingCategory() const override { return editing; }

    void Handle(WindowMessage message) { run->Settings().Handle(message); }
    void Data(std::uint16_t part) {
        Handle(Message(MessageId::kPlayerState, 19, std::uint32_t{part} << 16,
                       std::string(kPlayerDataSize, static_cast<char>(part + 1))));
    }
    void Names(const std::string& names) { Handle(Message(MessageId::kLayoutState, 52, 0, names)); }
    void Protocol(const std::string& text, std::uint32_t argument = 0) {
        Handle(Message(MessageId::kControlProtocol, 3, 1 | argument << 16, text));
    }
    void Serial(const Bytes& bytes) {
        auto serial = std::make_unique<SerialData>();
        serial->count = static_cast<std::uint16_t>(bytes.size());
        std::ranges::copy(bytes, serial->bytes.begin());
        WindowMessage message = Message(MessageId::kSerialData, 50, 0);
        message.record = std::move(serial);
        Handle(std::move(message));
    }
    void Open() { run->Settings().Read(), Data(0), Data(32767), Names("a.mp4?"); }
    void ReadFrom(const std::string& text) {
        Open(), Protocol(text);
        Log();
    }
    void Upload() { run->Settings().Save(); }
    void OpenFileWith(const std::string& text) {
        run->Settings().OpenFile(folder.Write("x.JSON", text));
    }
    void Edit(const std::string& port) {
        EXPECT_EQ(run->Edit({"KtvDev/KTVServerPort", port}).text, port);
    }
    std::string Port() { return run->Rows()[0][0].rows[2].value; }
    void ExpectState(State state) { EXPECT_EQ(run->Settings().State(), state); }
    void ExpectLine(Line kind) { EXPECT_EQ(run->SerialLine().kind, kind); }
    /// What has been shown and sent since the last call.
    std::string Log() { return std::exchange(log, "") + channel.Log(); }
    /// How many keep-alives go out in that time.
    std::size_t KeepAlives(std::chrono::milliseconds time) {
        Log();
        timers.Advance(time);
        return Log().size() / std::string("50.0.0; ").size();
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder / "ControlProtocol.Json";
    std::string log;
    std::optional<int> chosen;
    bool editing = false;
    RecordingPrompts prompts;
    std::unique_ptr<ControlProtocolRun> run;
};

constexpr const char* kDocument = R"({"KtvDev":{"KTVServerPort":9000}})";

TEST_F(Editor, AsksForDataNamesAndDocumentInTurn) {
    run->Settings().Read();
    EXPECT_EQ(Log(), "19.0.0; ");
    Names("early?"), Data(32767);
    EXPECT_EQ(Log(), "");
    Data(0);
    EXPECT_EQ(Log(), "19.0.32767; ");
    Data(0), Data(32767);
    EXPECT_EQ(Log(), "52.0.0; ");
    EXPECT_EQ(run->Asking().PlayerData()[0][0] * 256 + run->Asking().PlayerData()[1][0], 256);
    Names("one.mp4?two.mp4?x");
    EXPECT_THAT(run->Asking().Names(), ElementsAre("one", "two"));
    EXPECT_EQ(Log(), "3.1.0; ");
    EXPECT_FALSE(run->Settings().MaySend());
    Protocol(kDocument);
    EXPECT_TRUE(run->Settings().MaySend());
    Names("again.mp4?");
    EXPECT_EQ(Log(), "rows; ");
    ExpectState(State::kRead);
}

TEST_F(Editor, AsksForTheNamesOtherwiseInTheOlderForm) {
    Begin(ProtocolVariant::kOlder);
    run->Settings().Read();
    Handle(Message(MessageId::kPlayerState, 10, 0, "one.mp4?"));
    EXPECT_THAT(run->Asking().Names(), ElementsAre("one"));
    EXPECT_EQ(Log(), "10.1.0; 3.1.0; ");
}

TEST_F(Editor, KeepsTheLinkAliveEveryTwoSecondsFromTheDocumentOn) {
    Open();
    EXPECT_EQ(KeepAlives(5s), 0U);
    Protocol(kDocument);
    EXPECT_EQ(KeepAlives(1999ms), 0U);
    EXPECT_EQ(KeepAlives(1ms), 1U);
    channel.refusal = NotSent::kTooMuchWaiting;
    EXPECT_EQ(KeepAlives(4s), 0U);
    channel.refusal.reset();
    EXPECT_EQ(KeepAlives(4s), 2U);
    LoseLink();
    EXPECT_EQ(KeepAlives(10s), 0U);
    Upload();
    Protocol("");
    EXPECT_EQ(KeepAlives(2s), 1U);
}

TEST_F(Editor, LeavesASecondAfterTheUserHasAgreed) {
    ReadFrom(kDocument);
    bool left = false;
    run->Leave([&] { left = true; });
    EXPECT_EQ(KeepAlives(999ms), 0U);
    EXPECT_FALSE(left);
    timers.Advance(1ms);
    EXPECT_TRUE(left);
}

TEST_F(Editor, MayUploadAfterAnyAnswerButListensOnlyAfterADocument) {
    // clang-format off
    for (const auto& [text, argument, state, alive] :
         {std::tuple("{}", 2U, State::kRefused, 0U), {"", 0U, State::kUnreadable, 1U}, {"{", 0U, State::kUnreadable, 1U},
          {"{}", 1U, State::kUnreadable, 1U}, {kDocument, 1U, State::kRead, 1U}}) {
        // clang-format on
        Begin(ProtocolVariant::kCurrent);
        Open(), Protocol(text, argument);
        ExpectState(state);
        EXPECT_TRUE(run->Settings().MaySend());
        EXPECT_EQ(KeepAlives(2s), alive) << text;
    }
}

TEST_F(Editor, UploadsTheWorkingCopyAndStaysInTouchWithoutARestart) {
    ReadFrom(kDocument);
    Edit("9001");
    Upload();
    EXPECT_EQ(Log(), "3.1.1; ");
    EXPECT_EQ(channel.payload, *ReadFile(file));
    EXPECT_THAT(channel.payload, testing::HasSubstr("9001"));
    EXPECT_THAT(prompts.boxes, ElementsAre(kRestartQuestion));
    ExpectState(State::kSent);
    Edit("9002");
    Protocol("");
    ExpectState(State::kChanged);
    Upload();
    Protocol("", 1);
    ExpectState(State::kSaved);
    Upload();
    Protocol("", 2);
    ExpectState(State::kRefused);
    EXPECT_EQ(run->Settings().LastCode(), 2);
    Upload();
    LoseLink();
    ExpectState(State::kUnconfirmed);
}

TEST_F(Editor, SendsNothingMoreOnceARestartWasAskedFor) {
    ReadFrom(kDocument);
    prompts.answers = {true};
    Upload();
    EXPECT_EQ(Log(), "3.1.1q1; ");
    ExpectState(State::kSent);
    Protocol(kDocument, 1);  // whatever it answers
    ExpectState(State::kRestarting);
    LoseLink();
    Protocol(kDocument);
    Upload();
    OpenFileWith(kDocument);
    run->Settings().SaveFile(folder / "y.JSON");
    chosen = 1;
    Serial({0xA5});
    EXPECT_EQ(run->Edit({"KtvDev/KTVServerPort", "1"}).outcome, EditAnswer::Outcome::kRefused);
    EXPECT_FALSE(run->Settings().MaySend() || std::filesystem::exists(folder / "y.JSON"));
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(KeepAlives(10s), 0U);
    EXPECT_EQ(prompts.boxes.size(), 1U);
}

TEST_F(Editor, ARestartWaitsForNoAnswerAndEndsTheEditingOnlyOnceItHasGoneOut) {
    ReadFrom(kDocument);
    Edit("9001");
    Upload();
    channel.refusal = NotSent::kConnectFailed;
    prompts.answers = {true, true};
    Upload();
    ExpectState(State::kNotSent);
    EXPECT_TRUE(run->Settings().MaySend() && run->Settings().MayOpen());
    channel.refusal.reset();
    Upload();
    EXPECT_EQ(Log(), "3.1.1; 3.1.1q1; ");
    EXPECT_FALSE(run->Settings().MaySend());
}

TEST_F(Editor, SendsNothingThatItCannotKeepAndSaysSo) {
    ReadFrom(kDocument);
    std::filesystem::create_directories(file / "in the way");
    Upload();
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(prompts.boxes.back(),
              Warning("The control protocol file cannot be written. Nothing has been sent!"));
}

TEST_F(Editor, ADocumentThatComesWhileTheRestartQuestionIsOpenClearsNothing) {
    ReadFrom(kDocument);
    Edit("9001");
    prompts.whileShown = [this] { Protocol(R"({"KtvDev":{"KTVServerPort":5}})"); };
    Upload();
    EXPECT_THAT(channel.payload, testing::HasSubstr("9001"));
    EXPECT_EQ(Port(), "9001");
    EXPECT_TRUE(run->Settings().HasUnsentChanges());
}

TEST_F(Editor, LearnsIntoTheChosenCategoryAlone) {
    ReadFrom(kDocument);
    ExpectLine(Line::kListening);
    Serial({0x0a, 0xb1, 0x00});
    ExpectLine(Line::kNobodys);
    ExpectState(State::kRead);
    chosen = 6;
    editing = true;
    Serial({2});
    ExpectLine(Line::kEditing);
    editing = false;
    run->Learn(false);
    Serial({3});
    ExpectLine(Line::kNotLearning);
    run->Learn(true);
    EXPECT_EQ(Log(), "");
    Serial({0x0a, 0xb1, 0x00});
    ExpectLine(Line::kLearned);
    EXPECT_EQ(run->Rows()[kCategoryGrid][0].groups[6].rows[1].value, "0AB100");
    ExpectState(State::kChanged);
    EXPECT_EQ(Log(), "change 0AB100; ");
    Serial({0xc1});
    ExpectLine(Line::kReplaced);
    EXPECT_EQ(run->SerialLine().replaced, "0AB100");
    prompts.whileShown = [this] { Serial({0xff}); };
    Upload();
    ExpectLine(Line::kTooLate);
    EXPECT_THAT(channel.payload, testing::HasSubstr("C1"));
}

TEST_F(Editor, UndoesALearnedCommandAsOneStep) {
    ReadFrom(kDocument);
    Edit("7");
    chosen = 6;
    Serial({0xa5}), Serial({0xc1});
    Log();
    run->Settings().Undo();
    EXPECT_EQ(run->Rows()[kCategoryGrid][0].groups[6].rows[1].value, "A5");
    EXPECT_EQ(Log(), "rows; choose VideoType/6/SendCmd; ");
    ExpectLine(Line::kListening);
    run->Settings().Undo(), run->Settings().Undo();
    ExpectState(State::kRead);
    for (int i = 0; i < 3; ++i) run->Settings().Redo();
    EXPECT_EQ(Port() + run->Rows()[kCategoryGrid][0].groups[6].rows[1].value, "7C1");
    ExpectState(State::kChanged);
}

TEST_F(Editor, LosesNoEditToADocumentThatComesLater) {
    run->Settings().Read();
    Edit("7");
    Data(0), Data(32767), Names("a.mp4?");
    Protocol(R"({"KtvDev":{"KTVServerPort":9000,"KTVServerIP":"10.0.0.1"}})");
    EXPECT_EQ(Port() + run->Rows()[0][0].rows[1].value, "710.0.0.1");
    ExpectState(State::kChanged);
}

}  // namespace
}  // namespace sontaro::test
