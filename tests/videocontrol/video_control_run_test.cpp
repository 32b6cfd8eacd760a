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

    void Reply(MessageId id, std::uint8_t command, std::string_view payload = {}) {
        WindowMessage message = Message(id, command, 0, payload);
        run.Handle(message);
    }
    void StateReply() { Reply(MessageId::kPlayerState, kCommandPlayerData); }
    void Layouts(std::string_view names = {}) {
        Reply(MessageId::kLayoutState, kCommandLayoutState, names);
    }
    void Video(const std::string& rest) {
        Reply(MessageId::kVideoReply, kCommandVideo, R"({"code":0,)" + rest + "}");
    }
    void Captions(const std::string& list = "") { Video(R"("cmdId":3,"data":[)" + list + "]"); }
    void Advance(int seconds) { timers.Advance(std::chrono::seconds(seconds)); }
    /// Opens the remote control of a player that answers everything at once.
    void OpenReady() {
        run.Opened();
        StateReply(), Layouts(), Captions();
        Log();
    }
    void ExpectTrouble(Kind kind) { EXPECT_EQ(run.LastTrouble().kind, kind); }
    /// What has been shown and sent since the last call.
    std::string Log() { return std::exchange(log, ""); }

    std::string log;
    bool inFront = true;
    VideoControlRun run{*this, exchange, player};
};

TEST_F(RemoteControl, AsksThreeQuestionsInTurnEachAtEveryEleventhTickUntilItsOwnAnswer) {
    const auto expectAsking = [this](State state, const std::string& question,
                                     const std::string& shown = "") {
        EXPECT_EQ(run.CurrentState(), state);
        Advance(10);
        EXPECT_EQ(Log(), shown + question);
        Advance(1);
        EXPECT_EQ(Log(), question);
        Advance(11 + 7);
        EXPECT_EQ(Log(), question);
    };
    run.Opened();
    Layouts();
    expectAsking(State::kAskingState, "send 19; ");
    StateReply(), StateReply();
    expectAsking(State::kAskingLayouts, "send 52; ");
    Layouts("Night.lay?Day.lay?"), StateReply(), Layouts();
    expectAsking(State::kAskingCaptions, R"(send 59{"cmdId":3}; )", "layouts Night Day; ");
    Captions(), StateReply(), Layouts();
    expectAsking(State::kReady, "", "hide; buttons; ");
}

TEST_F(RemoteControl, SendsAMovedVolumeAtATickThatDoesNotCount) {
    run.Opened();
    Advance(10);
    run.MoveVolume(40);
    run.MoveVolume(41);
    Advance(2);
    run.MoveVolume(42);
    run.Closing();
    Advance(100);
    EXPECT_EQ(Log(), R"(send 19; send 59{"cmdId":8,"sound":"41"}; send 19; )"
                     R"(send 59{"cmdId":8,"sound":"42"}; )");
}

TEST_F(RemoteControl, TellsOfSilenceOnlyWhileAQuestionIsNotAnswered) {
    run.Opened();
    Advance(9);
    EXPECT_EQ(run.SecondsOfSilence(), 0);
    Advance(3);
    EXPECT_EQ(run.SecondsOfSilence(), 12);
    StateReply(), Layouts(), Captions();
    Advance(1000);
    EXPECT_EQ(run.SecondsOfSilence(), 0);
}

TEST_F(RemoteControl, TellsTheEndOfItsLinkAndAsksAnewAsSoonAsThereIsAnother) {
    OpenReady();
    LoseLink();
    EXPECT_FALSE(run.IsConnected());
    Advance(100);
    EXPECT_EQ(Log(), "");
    run.Press("p");
    EXPECT_EQ(Log(), R"(send 59{"cmdId":4,"playMode":"p"}; send 19; )");
    EXPECT_TRUE(run.IsConnected());
    EXPECT_EQ(run.CurrentState(), State::kAskingState);
    StateReply();
    LoseLink();
    Log();
    Advance(11);
    EXPECT_EQ(Log(), "send 19; ");  // not for the layouts that were asked for last
    StateReply();
    Log();
    ++channel.connection;  // a link that has ended unheard, and another one by the press
    run.Press("p");
    EXPECT_EQ(Log(), R"(send 59{"cmdId":4,"playMode":"p"}; send 19; )");
}

TEST_F(RemoteControl, SaysWhyItIsNotConnectedAndReadAgainTriesIt) {
    channel.refusal = NotSent::kConnectFailed;
    run.Opened();
    ExpectTrouble(Kind::kNotSent);
    run.Press("p");
    run.ReadAgain();
    ExpectTrouble(Kind::kNotSent);
    channel.refusal.reset();
    run.ReadAgain();
    ExpectTrouble(Kind::kNone);
    EXPECT_EQ(Log(), "send 19; ");
    OpenReady();
    channel.refusal = NotSent::kTooMuchWaiting;
    run.Press("p");
    EXPECT_EQ(run.LastTrouble().reason, NotSent::kTooMuchWaiting);
    EXPECT_TRUE(run.IsConnected());
}

TEST_F(RemoteControl, TellsWhatThePlayerRefusesUntilTheNextCommand) {
    OpenReady();
    run.Press("p");
    Reply(MessageId::kVideoReply, kCommandVideo, R"({"code":3,"cmdId":10})");  // no command of ours
    ExpectTrouble(Kind::kNone);
    Reply(MessageId::kVideoReply, kCommandVideo, R"({"code":3,"cmdId":4})");
    EXPECT_EQ(run.LastTrouble(), (VideoControlRun::Trouble{Kind::kRefused, {}, 3}));
    run.Press("q");
    ExpectTrouble(Kind::kNone);
    run.ReadAgain();
    StateReply();
    Report(ExchangeNews::Kind::kLayoutLocked, kCommandLayoutState);
    ExpectTrouble(Kind::kRefused);
    inFront = false;
    Log();
    Advance(100);  // behind the box that says so
    EXPECT_EQ(Log(), "");
    inFront = true;
    Advance(11);
    EXPECT_EQ(Log(), "send 52; ");
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
    std::string list = R"({"type":1,"playMode":"x"},{"type":14,"playMode":"x"},7)";
    std::string expected = "hide; ";
    for (const int type : {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 200, 201}) {
        list += R"(,{"playMode":"c","type":)" + std::to_string(type) + "}";
        expected += "button " + std::to_string(type) + " c; ";
    }
    Captions(list);
    EXPECT_EQ(Log(), expected + "buttons; ");
}

TEST_F(RemoteControl, PressesAndChoicesBecomeCommandsAndEmptyChoicesDoNot) {
    OpenReady();
    run.Press("p");
    for (const char* name : {"n", ""}) {
        run.ChooseFolder(name), run.ChooseLayout(name);
        run.ChooseVideo(name), run.ChooseUsbVideo(name);
    }
    EXPECT_EQ(Log(), R"(send 59{"cmdId":4,"playMode":"p"}; send 59{"cmdId":2,"type":"n"}; )"
                     R"(send 59{"cmdId":6,"layoutName":"n"}; send 59{"cmdId":11,"playName":"n"}; )"
                     R"(send 59{"cmdId":13,"usbVideoName":"n"}; )");
}

TEST_F(RemoteControl, ShowsThePositionAndOffersEachNameOnce) {
    const auto position = [this](const std::string& data) {
        Video(R"("cmdId":10,"data":{)" + data + "}");
        return Log();
    };
    const std::string first =
        R"("currentPosition":30,"totalDuration":90,"typeName":"A","videoName":"b")";
    EXPECT_EQ(position(first), "at 33 00:00:30/00:01:30; title A->b; folders A; videos b; ");
    EXPECT_EQ(position(first), "at 33 00:00:30/00:01:30; title A->b; ");
    EXPECT_EQ(position(R"("currentPosition":1,"totalDuration":2,"videoName":"c")"),
              "at 50 00:00:01/00:00:02; videos b c; ");
}

TEST_F(RemoteControl, RefillsUsbVideosOnlyWhenTheyDiffer) {
    Video(R"("cmdId":12,"data":["a","b"],"videoName":"b")");
    EXPECT_EQ(Log(), "label USB Video-b; usb a b; ");
    const InLanguage chinese(Language::kChinese);
    Video(R"("cmdId":12,"data":["a","b"],"videoName":"婚礼")");
    EXPECT_EQ(Log(), "label USB视频-婚礼; ");
    for (const char* list : {R"(["b","a"])", "{}", "[]"})
        Video(R"("cmdId":12,"data":)" + std::string(list));
    EXPECT_EQ(Log(), "label USB视频; usb b a; label USB视频; label USB视频; usb ; ");
}

TEST_F(RemoteControl, ActsOnNoOtherReplies) {
    const std::string position = R"("cmdId":10,"data":{"currentPosition":1,"totalDuration":2}})";
    Reply(MessageId::kVideoReply, kCommandVideo, R"({"code":1,)" + position);
    Reply(MessageId::kVideoReply, kCommandVideo, "{");
    Reply(MessageId::kCave, kCommandSettings, R"({"code":0,)" + position);
    player.ip = "127.0.0.3";
    Video(position);
    player.ip = "127.0.0.2";
    for (const char* id : {"1", "2", "4", "13", "59"})
        Video(R"("data":[],"cmdId":)" + std::string(id));
    EXPECT_EQ(Log(), "");
}

}  // namespace
}  // namespace sontaro::test
