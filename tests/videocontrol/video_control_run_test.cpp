#include "videocontrol/video_control_run.h"

#include <gmock/gmock.h>

#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using State = VideoControlRun::State;

/// Writes down, in order, what the window would show and send.
struct RemoteControl : testing::Test, VideoControlView {
    void Send(const DevicePacket& packet) override {
        std::string text(AsText(packet.payload));
        std::erase_if(text, [](char c) { return c == '\n' || c == '\t' || c == ' '; });
        log.push_back("send " + std::to_string(packet.header.command) + text);
    }
    void StartTimer() override { log.push_back("timer"); }
    void HideButtons() override { log.push_back("hide"); }
    void ShowButton(int id, const std::string& caption) override {
        log.push_back(std::to_string(id) + " " + caption);
    }
    void ButtonsChanged() override { log.push_back("buttons"); }
    void ShowPosition(int percent, const std::string& text) override {
        log.push_back(std::to_string(percent) + "% " + text);
    }
    void ShowTitle(const std::string& text) override { log.push_back("title " + text); }
    void ShowVolume(int volume) override { log.push_back("volume " + std::to_string(volume)); }
    void ShowUsbLabel(const std::string& text) override { log.push_back("label " + text); }
    void ShowUsbVideos(const std::vector<std::string>& names) override { Offer("usb", names); }
    void OfferFolders(const std::vector<std::string>& names) override { Offer("folders", names); }
    void OfferLayouts(const std::vector<std::string>& names) override { Offer("layouts", names); }
    void OfferVideos(const std::vector<std::string>& names) override { Offer("videos", names); }
    void StateChanged() override {}

    void Offer(const std::string& what, const std::vector<std::string>& names) {
        log.push_back(what);
        for (const std::string& name : names) log.back() += " " + name;
    }
    void Reply(MessageId id, std::string_view payload = {}, std::uint32_t wParam = 10) {
        run.Handle({id, wParam, ReplyRecord{{}, 0, 0, 0, ToBytes(payload)}, 0});
    }
    void State508() { Reply(MessageId::kPlayerState); }
    void Layouts(std::string_view names = {}) { Reply(MessageId::kLayoutState, names); }
    void Video(const std::string& rest, std::uint32_t wParam = 10) {
        Reply(MessageId::kVideoReply, R"({"code":0,)" + rest + "}", wParam);
    }
    void Captions() { Video(R"("cmdId":3,"data":[])"); }
    void Advance(int seconds) {
        for (int i = 0; i < seconds; ++i) run.Tick();
    }
    /// What has been shown and sent since the last call.
    std::vector<std::string> Log() { return std::exchange(log, {}); }

    std::vector<std::string> log;
    VideoControlRun run{*this};
};

TEST_F(RemoteControl, AsksForStateLayoutsAndCaptionsOneAfterTheOther) {
    run.Opened();
    EXPECT_THAT(Log(), ElementsAre("timer", "send 19"));
    State508();
    EXPECT_THAT(Log(), ElementsAre("send 52"));
    Layouts("Night.lay?Day.lay?");
    EXPECT_THAT(Log(), ElementsAre("layouts Night Day", "send 59{\"cmdId\":3}"));
    Captions();
    EXPECT_THAT(Log(), ElementsAre("hide", "buttons", "timer"));
    EXPECT_EQ(run.CurrentState(), State::kReady);
}

TEST_F(RemoteControl, PollsAtEveryEleventhTickOfAStateUntilItIsReady) {
    const std::vector<std::pair<std::function<void()>, std::string>> states = {
        {[this] { run.Opened(); }, "send 19"},
        {[this] { State508(); }, "send 52"},
        {[this] { Layouts(); }, "send 59{\"cmdId\":3}"}};
    for (const auto& [enter, poll] : states) {
        enter();
        Log();
        Advance(10);
        EXPECT_THAT(Log(), IsEmpty());
        Advance(1);
        EXPECT_THAT(Log(), ElementsAre(poll));
        Advance(11 + 7);
        EXPECT_THAT(Log(), ElementsAre(poll));
    }
    Captions();
    Log();
    Advance(100);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(RemoteControl, NeverGoesBackToAnEarlierState) {
    run.Opened();
    Layouts();
    EXPECT_EQ(run.CurrentState(), State::kAskingState);
    State508();
    State508();
    EXPECT_EQ(run.CurrentState(), State::kAskingLayouts);
    Layouts();
    State508();
    Layouts();
    EXPECT_EQ(run.CurrentState(), State::kAskingCaptions);
    Captions();
    State508();
    Layouts();
    EXPECT_EQ(run.CurrentState(), State::kReady);
}

TEST_F(RemoteControl, SendsAMovedVolumeAtATickThatDoesNotCount) {
    run.Opened();
    Log();
    Advance(10);
    run.MoveVolume(40);
    run.MoveVolume(41);
    Advance(1);
    EXPECT_THAT(Log(), ElementsAre("send 59{\"cmdId\":8,\"sound\":\"41\"}"));
    Advance(1);
    EXPECT_THAT(Log(), ElementsAre("send 19"));
}

TEST_F(RemoteControl, SetsTheSliderFromAStatusWithParameterOne) {
    for (const std::uint32_t wParam : {0U, 1U, 32767U})
        run.Handle({MessageId::kPlayerStatus, wParam, PlayerStatus{1, 700, 0}, 0});
    EXPECT_THAT(Log(), ElementsAre("volume 100"));
}

TEST_F(RemoteControl, ShowsExactlyTheButtonsThatThePlayerNames) {
    const std::pair<int, const char*> mapping[] = {
        {2, "2104"},  {3, "2105"},  {4, "2106"},   {5, "2107"},  {6, "2108"},
        {7, "2109"},  {8, "2110"},  {9, "2113"},   {10, "2114"}, {11, "2120"},
        {12, "2121"}, {13, "2126"}, {200, "2124"}, {201, "2123"}};
    std::string data = R"({"type":1,"playMode":"x"},{"type":14,"playMode":"x"},7)";
    std::vector<std::string> expected = {"hide"};
    for (const auto& [type, id] : mapping) {
        data += R"(,{"type":)" + std::to_string(type) + R"(,"playMode":"c"})";
        expected.push_back(id + std::string(" c"));
    }
    expected.insert(expected.end(), {"buttons", "timer"});
    Video(R"("cmdId":3,"data":[)" + data + "]");
    EXPECT_EQ(Log(), expected);
}

TEST_F(RemoteControl, PressesAndChoicesBecomeCommandsAndEmptyOnesDoNot) {
    run.Press("播放");
    run.ChooseFolder("f");
    run.ChooseLayout("l");
    run.ChooseVideo("v");
    run.ChooseUsbVideo("u");
    EXPECT_THAT(Log(), ElementsAre(R"(send 59{"cmdId":4,"playMode":"\u64ad\u653e"})",
                                   R"(send 59{"cmdId":2,"type":"f"})",
                                   R"(send 59{"cmdId":6,"layoutName":"l"})",
                                   R"(send 59{"cmdId":11,"playName":"v"})",
                                   R"(send 59{"cmdId":13,"usbVideoName":"u"})"));
    for (const auto choose : {&VideoControlRun::ChooseFolder, &VideoControlRun::ChooseLayout,
                              &VideoControlRun::ChooseVideo, &VideoControlRun::ChooseUsbVideo})
        (run.*choose)("");
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(RemoteControl, ShowsThePositionAndOffersEachNameOnce) {
    const std::string reply =
        R"("cmdId":10,"data":{"currentPosition":30,"totalDuration":90,"typeName":"A","videoName":"b"})";
    Video(reply);
    EXPECT_THAT(Log(), ElementsAre("33% 00:00:30/00:01:30", "title A->b", "folders A", "videos b"));
    Video(reply);
    EXPECT_THAT(Log(), ElementsAre("33% 00:00:30/00:01:30", "title A->b"));
    Video(R"("cmdId":10,"data":{"currentPosition":1,"totalDuration":2,"videoName":"c"})");
    EXPECT_THAT(Log(), ElementsAre("50% 00:00:01/00:00:02", "videos b c"));
}

TEST_F(RemoteControl, RefillsUsbVideosOnlyWhenTheyDiffer) {
    const std::string list = R"("cmdId":12,"data":["a","b"])";
    Video(list + R"(,"videoName":"b")");
    EXPECT_THAT(Log(), ElementsAre("label USB Video-b", "usb a b"));
    const InLanguage chinese(Language::kChinese);
    Video(list + R"(,"videoName":"婚礼")");
    Video(list);
    EXPECT_THAT(Log(), ElementsAre("label USB视频-婚礼", "label USB视频"));
    Video(R"("cmdId":12,"data":["b","a"])");
    Video(R"("cmdId":12,"data":{})");
    Video(R"("cmdId":12,"data":[])");
    EXPECT_THAT(Log(),
                ElementsAre("label USB视频", "usb b a", "label USB视频", "label USB视频", "usb"));
}

TEST_F(RemoteControl, ActsOnNoOtherReplies) {
    const std::string position = R"("cmdId":10,"data":{"currentPosition":1,"totalDuration":2})";
    Video(position, 9);
    for (const char* id : {"1", "2", "4", "13", "59"})
        Video(R"("data":[],"cmdId":)" + std::string(id));
    Video(R"("cmdId":10,"data":{"currentPosition":3,"totalDuration":2})");
    Reply(MessageId::kVideoReply, "{\"code\":1," + position + "}");
    Reply(MessageId::kVideoReply, "no JSON");
    Reply(MessageId::kCave, "{\"code\":0," + position + "}");
    EXPECT_THAT(Log(), IsEmpty());
}

}  // namespace
}  // namespace sontaro::test
