#include "videocontrol/video_control_document.h"

#include <gmock/gmock.h>

#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

// docs/protocol.md explains these bytes.
TEST(VideoCommand, PressOfPlayHasItsBytes) {
    EXPECT_EQ(*VideoCommandPacket(kVideoPlayMode, "播放"),
              Hex("5A5A5AA5 3B000000 04000000 2E000000"
                  "7B0A0922 636D6449 6422203A 20342C0A 0922706C 61794D6F 64652220 3A20225C"
                  "75363461 645C7536 35336522 0A7D"));
}

TEST(VideoCommand, CarriesItsIdAndItsOwnKeyAlone) {
    // clang-format off
    const std::pair<std::uint16_t, const char*> commands[] = {
        {2, R"({"cmdId":2,"type":"t"})"}, {3, R"({"cmdId":3})"}, {6, R"({"cmdId":6,"layoutName":"t"})"},
        {8, R"({"cmdId":8,"sound":"t"})"}, {9, R"({"cmdId":9,"play":"t"})"}, {10, R"({"cmdId":10,"playStep":"t"})"},
        {11, R"({"cmdId":11,"playName":"t"})"}, {12, R"({"cmdId":12})"}, {13, R"({"cmdId":13,"usbVideoName":"t"})"},
        {14, R"({"cmdId":14})"}};
    // clang-format on
    for (const auto& [id, json] : commands) {
        const Bytes packet = *VideoCommandPacket(id, "t");
        EXPECT_EQ(DecodeHeader(packet).subCommand, id);
        EXPECT_EQ(Compact(ByteView(packet).subspan(kHeaderSize)), json);
    }
}

TEST(VideoReply, SucceedsWithACommandAndACodeWhoseLowSixteenBitsAreZero) {
    const auto succeeds = [](const std::string& reply) {
        const auto parsed = VideoReply::Parse(reply);
        return parsed && parsed->Code() == 0;
    };
    const auto succeedsWith = [&](const std::string& code) {
        return succeeds(R"({"cmdId":3,"code":)" + code + "}");
    };
    for (const char* none : {"", "{", "[]", "7", R"({"cmdId":3})", R"({"code":0})",
                             R"({"code":0,"cmdId":"3"})", R"({"code":0,"cmdId":5000000000})"})
        EXPECT_FALSE(succeeds(none)) << none;
    for (const char* bad : {"1", "-1", R"("0")", "0.5", "null", "65537", "18446744073709551615"})
        EXPECT_FALSE(succeedsWith(bad)) << bad;
    for (const char* good : {"0", "65536", "-65536", "0.0", "4294967296", "18446744073709486080"})
        EXPECT_TRUE(succeedsWith(good)) << good;
}

std::optional<VideoPosition> Position(const std::string& data, const std::string& beside = "") {
    return VideoReply::Parse(R"({"code":0,"cmdId":10,"data":)" + data + beside + "}")->Position();
}

TEST(VideoPosition, IsShownOnlyWithinItsLimits) {
    const auto position = [](const std::string& seconds, const std::string& duration) {
        const auto at =
            Position(R"({"currentPosition":)" + seconds + R"(,"totalDuration":)" + duration + "}");
        return at ? std::to_string(at->Percent()) + "% " + at->Text() : "";
    };
    EXPECT_EQ(position("3725", "36000"), "10% 01:02:05/10:00:00");
    EXPECT_EQ(position("199", "200"), "99% 00:03:19/00:03:20");
    EXPECT_EQ(position("2147483647", "2147483647").substr(0, 4), "100%");
    // clang-format off
    const std::pair<const char*, const char*> bad[] = {{"6", "5"}, {"0", "0"}, {"-1", "5"},
        {"\"1\"", "5"}, {"1", "null"}, {"1", "5000000000"}, {"1.5", "5"}};
    // clang-format on
    for (const auto& [seconds, duration] : bad)
        EXPECT_EQ(position(seconds, duration), "") << seconds;
    for (const char* data : {"[1,5]", "null", "{}"}) EXPECT_FALSE(Position(data)) << data;
}

TEST(VideoPosition, TakesNamesFromItsDataOrFromBesideIt) {
    const auto names = [](const std::string& inside, const std::string& beside) {
        const auto at =
            Position(R"({"currentPosition":1,"totalDuration":5)" + inside + "}", beside);
        return at->folder + "/" + at->video + (at->named ? "" : " unnamed");
    };
    EXPECT_EQ(names(R"(,"typeName":"舞曲","videoName":"a")", R"(,"videoName":"b")"), "舞曲/a");
    EXPECT_EQ(names(R"(,"videoName":7)", R"(,"typeName":"c","videoName":"d")"), "c/d");
    EXPECT_EQ(names(R"(,"typeName":"c")", ""), "c/ unnamed");
}

TEST(VideoReply, ListsSkipWhatIsOfAnotherType) {
    const auto captions =
        VideoReply::Parse(R"({"code":0,"cmdId":3,"data":[{"type":7,"playMode":"播放"},
        {"type":"7","playMode":"x"}, {"type":8}, 5, null, {"type":99,"playMode":"later"}]})");
    EXPECT_THAT(captions->Captions(),
                ElementsAre(VideoCaption{7, "播放"}, VideoCaption{99, "later"}));
    EXPECT_TRUE(VideoReply::Parse(R"({"code":0,"cmdId":3,"data":{"type":7}})")->Captions().empty());
    const auto names = VideoReply::Parse("{\"code\":0,\"cmdId\":12,\"data\":[\"a\",1,\"b\xE6\"]}");
    EXPECT_THAT(*names->Names(), ElementsAre("a", "b\uFFFD"));
}

}  // namespace
}  // namespace sontaro::test
