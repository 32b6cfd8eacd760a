#include "videocontrol/video_control_run.h"

#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include "support/fake_player_channel.h"

namespace sontaro::test {
namespace {

using State = VideoControlRun::State;
using Kind = VideoControlRun::Trouble::Kind;
using Texts = std::vector<std::string>;

/// Writes down, in order, what the window would show and send.
struct RemoteControl : testing::Test, ExchangeBench, VideoControlView {
    RemoteControl() {
        channel.sent = [this](const PacketHeader& header) {
            Write("send {}{}", header.command, Compact(ToBytes(channel.payload)));
        };
    }

    template <class... Parts>
    void Write(fmt::format_string<Parts...> format, Parts&&... parts) {
        log += fmt::format(format, std::forward<Parts>(parts)...) + "; ";
    }
    bool IsInFront() const override { return inFront; }
    void HideButtons() override { Write("hide"); }
    void ShowButton(int type, const std::string& text) override {
        Write("button {} {}", type, text);
    }
    void ButtonsChanged() override { Write("buttons"); }
    void ShowPosition(int done, const std::string& at) override { Write("at {} {}", done, at); }
    void ShowTitle(const std::string& text) override { Write("title {}", text); }
    void ShowVolume(int volume) override { Write("volume {}", volume); }
    void ShowUsbLabel(const std::string& text) override { Write("label {}", text); }
    void ShowUsbVideos(const Texts& t) override { Write("usb {}", fmt::join(t, " ")); }
    void OfferFolders(const Texts& t) override { Write("folders {}", fmt::join(t, " ")); }
    void OfferLayouts(const Texts& t) override { Write("layouts {}", fmt::join(t, " ")); }
    void OfferVideos(const Texts& t) override { Write("videos {}", fmt::join(t, " ")); }
    void StateChanged() override {}

    // What the verbs below return is what is shown and sent from the last call of one on.
    std::string Reply(MessageId id, std::uint8_t command, std::string_view payload = {}) {
        WindowMessage message = Message(id, command, 0, payload);
        run.Handle(message);
        return Log();
    }
    std::string StateReply() { return Reply(MessageId::kPlayerState, kCommandPlayerData); }
    std::string Layouts(std::string_view names = {}) {
        return Reply(MessageId::kLayoutState, kCommandLayoutState, names);
    }
    std::string Video(const std::string& rest, int code = 0) {
        const std::string json = fmt::format(R"({{"code":{},{}}})", code, rest);
        return Reply(MessageId::kVideoReply, kCommandVideo, json);
    }
    std::string Captions(const std::string& list = "") {
        return Video(R"("cmdId":3,"data":[)" + list + "]");
    }
    std::string Open() { return run.Opened(), Log(); }
    /// Opens the remote control of a player that answers everything at once.
    void OpenReady() { Open(), StateReply(), Layouts(), Captions(); }
    std::string Press() { return run.Press("p"), Log(); }
    std::string Advance(int seconds) {
        timers.Advance(std::chrono::seconds(seconds));
        return Log();
    }
    std::string Log() { return std::exchange(log, ""); }
    void ExpectTrouble(Kind kind) { EXPECT_EQ(run.LastTrouble().kind, kind); }

    std::string log;
    bool inFront = true;
    VideoControlRun run{*this, exchange, player};
};

TEST_F(RemoteControl, AsksThreeQuestionsInTurnEachAtEveryEleventhTickUntilItsOwnAnswer) {
    const auto expectAsking = [this](State state, const std::string& question) {
        EXPECT_EQ(run.CurrentState(), state);
        EXPECT_EQ(Advance(10), "");
        EXPECT_EQ(Advance(1), question);
        EXPECT_EQ(Advance(11 + 7), question);
    };
    EXPECT_EQ(Open(), "send 19; ");
    EXPECT_EQ(Layouts() + Captions(), "hide; buttons; ");
    expectAsking(State::kAskingState, "send 19; ");
    EXPECT_EQ(StateReply() + StateReply(), "send 52; ");
    expectAsking(State::kAskingLayouts, "send 52; ");
    EXPECT_EQ(Layouts("Night.lay?Day.lay?"), R"(layouts Night Day; send 59{"cmdId":3}; )");
    EXPECT_EQ(StateReply() + Layouts(), "");
    expectAsking(State::kAskingCaptions, R"(send 59{"cmdId":3}; )");
    EXPECT_EQ(Captions() + StateReply() + Layouts(), "hide; buttons; send 10; ");
    expectAsking(State::kReady, "");
    EXPECT_EQ(run.SecondsOfSilence(), 0);  // older players do not answer the last question
}

TEST_F(RemoteControl, SendsAMovedVolumeAtATickThatDoesNotCount) {
    Open(), Advance(10);
    run.MoveVolume(40);
    run.MoveVolume(41);
    EXPECT_EQ(Advance(1), R"(send 59{"cmdId":8,"sound":"41"}; )");
    EXPECT_EQ(Advance(1), "send 19; ");
    run.MoveVolume(42);
    run.Closing();
    EXPECT_EQ(Advance(100), R"(send 59{"cmdId":8,"sound":"42"}; )");
}

TEST_F(RemoteControl, TellsOfSilenceOnlyWhileAQuestionIsNotAnswered) {
    Open(), Advance(12);
    EXPECT_EQ(run.SecondsOfSilence(), 12);
    StateReply(), Layouts(), Captions(), Advance(1000);
    EXPECT_EQ(run.SecondsOfSilence(), 0);
}

TEST_F(RemoteControl, TellsTheEndOfItsLinkAndAsksAnewAsSoonAsThereIsAnother) {
    OpenReady();
    LoseLink();
    EXPECT_FALSE(run.IsConnected());
    EXPECT_EQ(Advance(100), "");
    EXPECT_EQ(Press(), R"(send 59{"cmdId":4,"playMode":"p"}; send 19; )");
    EXPECT_TRUE(run.IsConnected());
    EXPECT_EQ(run.CurrentState(), State::kAskingState);
    StateReply();
    LoseLink();
    EXPECT_EQ(Advance(11), "send 19; ");  // not for the layouts that were asked for last
    StateReply();
    ++channel.connection;  // a link that has ended unheard, and another one by the press
    EXPECT_EQ(Press(), R"(send 59{"cmdId":4,"playMode":"p"}; send 19; )");
}

TEST_F(RemoteControl, TellsWhatThePlayerRefusesUntilTheNextCommand) {
    OpenReady();
    Press();
    Video(R"("cmdId":10)", 3);  // no command of ours
    ExpectTrouble(Kind::kNone);
    Video(R"("cmdId":4)", 3);
    EXPECT_EQ(run.LastTrouble(), (VideoControlRun::Trouble{Kind::kRefused, {}, 3}));
    Press();
    ExpectTrouble(Kind::kNone);
    run.ReadAgain();
    StateReply();
    Report(ExchangeNews::Kind::kLayoutLocked, kCommandLayoutState);
    ExpectTrouble(Kind::kRefused);
    inFront = false;
    EXPECT_EQ(Advance(100), "");  // behind the box that says so
    inFront = true;
    EXPECT_EQ(Advance(11), "send 52; ");
}

TEST_F(RemoteControl, SetsTheSliderFromAStatusWithParameterOneAndAVolumeAlone) {
    const std::uint16_t unknown = PlayerStatus{}.volume;
    for (const std::uint32_t wParam : {0U, 1U, 32767U})
        for (const std::uint16_t volume : std::initializer_list<std::uint16_t>{70, 101, unknown}) {
            WindowMessage message = Message(MessageId::kPlayerStatus, kCommandPlayerData, 0);
            message.wParam = wParam;
            message.record = PlayerStatus{1, volume, 0};
            run.Handle(message);
        }
    EXPECT_EQ(Log(), "volume 70; ");
}

TEST_F(RemoteControl, ShowsExactlyTheButtonsThatThePlayerNames) {
    EXPECT_EQ(Captions(R"({"type":1,"playMode":"x"},{"type":14,"playMode":"x"},7,
                          {"type":2,"playMode":"c"},{"type":13,"playMode":"d"},
                          {"type":201,"playMode":"e"})"),
              "hide; button 2 c; button 13 d; button 201 e; buttons; ");
}

TEST_F(RemoteControl, PressesAndChoicesBecomeCommandsAndEmptyChoicesDoNot) {
    OpenReady();
    EXPECT_EQ(Press(), R"(send 59{"cmdId":4,"playMode":"p"}; )");
    for (const char* name : {"n", ""}) {
        run.ChooseFolder(name), run.ChooseLayout(name);
        run.ChooseVideo(name), run.ChooseUsbVideo(name);
    }
    EXPECT_EQ(Log(), R"(send 59{"cmdId":2,"type":"n"}; send 59{"cmdId":6,"layoutName":"n"}; )"
                     R"(send 59{"cmdId":11,"playName":"n"}; )"
                     R"(send 59{"cmdId":13,"usbVideoName":"n"}; )");
}

TEST_F(RemoteControl, OffersEachNameOnceAndRefillsUsbVideosOnlyWhenTheyDiffer) {
    const auto position = [this](const std::string& video) {
        return Video(R"("cmdId":10,"data":{"currentPosition":30,"totalDuration":90)" + video + "}");
    };
    const std::string at = "at 33 00:00:30/00:01:30; ";
    const std::string first = R"(,"typeName":"A","videoName":"b")";
    EXPECT_EQ(position(first), at + "title A->b; folders A; videos b; ");
    EXPECT_EQ(position(first), at + "title A->b; ");
    EXPECT_EQ(position(R"(,"videoName":"c")"), at + "videos b c; ");
    const auto usb = [this](const std::string& list, const std::string& playing) {
        return Video(R"("cmdId":12,"videoName":")" + playing + R"(","data":)" + list);
    };
    EXPECT_EQ(usb(R"(["a","b"])", "b"), "label USB Video-b; usb a b; ");
    EXPECT_EQ(usb(R"(["a","b"])", ""), "label USB Video; ");
    EXPECT_EQ(usb("{}", ""), "label USB Video; ");
    EXPECT_EQ(usb("[]", ""), "label USB Video; usb ; ");
}

TEST_F(RemoteControl, OffersWhatThePlayerListsNarrowedToTheFolderThatIsNamed) {
    const auto list = [this](const std::string& text) {
        return Reply(MessageId::kPlayerState, kCommandPlayerState, text);
    };
    const std::string screens = R"({"cloudNewVideoScreenDatas":[{"screenID":0,"cloudVideoTypes":[
        {"type":"A","videoDatas":[{"videoName":"a"},{"videoName":"b"}]}]},{"screenID":2,
        "cloudVideoTypes":[{"type":"B","videoDatas":[{"videoName":"b"},{"videoName":"c"}]}]}]})";
    OpenReady();
    EXPECT_EQ(list("a.mp4?"), "");
    EXPECT_TRUE(run.IsListUnreadable());
    run.ReadAgain(), StateReply(), Layouts(), Captions();
    EXPECT_EQ(list(screens), "folders A B; videos a b c; ");
    EXPECT_FALSE(run.IsListUnreadable());
    run.NameFolder("B");
    EXPECT_EQ(Log(), "videos b c; ");
    run.NameFolder("B, half typed");
    EXPECT_EQ(Log(), "videos a b c; ");
    EXPECT_EQ(run.CurrentState(), State::kReady);
}

TEST_F(RemoteControl, ComesBackWithoutTheListFromAPlayerThatDoesNotKnowTheQuestion) {
    OpenReady();
    EXPECT_EQ(Report(ExchangeNews::Kind::kNotSupported, kCommandPlayerState), Boxes::kMuted);
    EXPECT_EQ(Advance(1), "");
    LoseLink();
    EXPECT_EQ(Advance(1), "send 19; ");
    StateReply(), Layouts();
    EXPECT_EQ(Captions(), "hide; buttons; ");
    EXPECT_EQ(Report(ExchangeNews::Kind::kNotSupported, kCommandVideo), Boxes::kShown);
}

TEST_F(RemoteControl, ActsOnNoOtherReplies) {
    const std::string position = R"("cmdId":10,"data":{"currentPosition":1,"totalDuration":2})";
    const std::string whole = R"({"code":0,)" + position + "}";
    EXPECT_EQ(Reply(MessageId::kVideoReply, kCommandVideo, whole.substr(1)), "");
    EXPECT_EQ(Reply(MessageId::kCave, kCommandSettings, whole), "");
    EXPECT_EQ(Video(position, 1), "");
    for (const int id : {1, 2, 4, 13, 59})
        EXPECT_EQ(Video(fmt::format(R"("data":[],"cmdId":{})", id)), "");
    player.ip = "127.0.0.3";
    EXPECT_EQ(Video(position), "");
}

}  // namespace
}  // namespace sontaro::test
