#include "videocontrol/video_control_document.h"

#include <gmock/gmock.h>

#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

// docs/protocol.md explains these bytes.
TEST(VideoCommand, PressOfPlayHasItsBytes) {
    EXPECT_EQ(VideoCommandPacket(kVideoPlayMode, "播放").Serialize(),
              Hex("5A5A5AA5 3B000000 04000000 2E000000"
                  "7B0A0922 636D6449 6422203A 20342C0A 0922706C 61794D6F 64652220 3A20225C"
                  "75363461 645C7536 35336522 0A7D"));
}

struct CommandCase : NamedCase {
    std::uint16_t id;
    const char* json;
};

class VideoCommandOf : public testing::TestWithParam<CommandCase> {};

TEST_P(VideoCommandOf, CarriesItsIdAndItsOwnKeyAlone) {
    const DevicePacket packet = VideoCommandPacket(GetParam().id, "t");
    EXPECT_EQ(packet.header.command, 59);
    EXPECT_EQ(packet.header.subCommand, GetParam().id);
    std::string text(AsText(packet.payload));
    std::erase_if(text, [](char c) { return c == '\n' || c == '\t' || c == ' '; });
    EXPECT_EQ(text, GetParam().json);
}

const CommandCase kCommands[] = {
    {"Folder", 2, R"({"cmdId":2,"type":"t"})"},
    {"Captions", 3, R"({"cmdId":3})"},
    {"Layout", 6, R"({"cmdId":6,"layoutName":"t"})"},
    {"Sound", 8, R"({"cmdId":8,"sound":"t"})"},
    {"Play", 9, R"({"cmdId":9,"play":"t"})"},
    {"Step", 10, R"({"cmdId":10,"playStep":"t"})"},
    {"PlayName", 11, R"({"cmdId":11,"playName":"t"})"},
    {"UsbList", 12, R"({"cmdId":12})"},
    {"UsbName", 13, R"({"cmdId":13,"usbVideoName":"t"})"},
    {"Other", 14, R"({"cmdId":14})"},
};
INSTANTIATE_TEST_SUITE_P(Every, VideoCommandOf, testing::ValuesIn(kCommands), kCaseName);

TEST(VideoReply, IsNotActedOnWhenItFailedOrNamesNoCommand) {
    for (const char* reply :
         {"", "{", "[]", "7", R"({"cmdId":3})", R"({"code":1,"cmdId":3})",
          R"({"code":-1,"cmdId":3})", R"({"code":"0","cmdId":3})", R"({"code":0.5,"cmdId":3})",
          R"({"code":null,"cmdId":3})", R"({"code":0})", R"({"code":0,"cmdId":"3"})",
          R"({"code":0,"cmdId":5000000000})", R"({"code":65537,"cmdId":3})",
          R"({"code":18446744073709551615,"cmdId":3})"})
        EXPECT_FALSE(VideoReply::Parse(reply)) << reply;
}

TEST(VideoReply, SucceedsWhenTheLowSixteenBitsOfItsCodeAreZero) {
    for (const char* code : {"0", "65536", "-65536", "0.0", "4294967296", "18446744073709486080"})
        EXPECT_TRUE(VideoReply::Parse(R"({"cmdId":3,"code":)" + std::string(code) + "}")) << code;
}

std::optional<VideoPosition> Position(const std::string& data, const std::string& beside = "") {
    return VideoReply::Parse(R"({"code":0,"cmdId":10,"data":)" + data + beside + "}")->Position();
}

TEST(VideoPosition, IsShownOnlyWithinItsLimits) {
    for (const char* bad :
         {R"({"currentPosition":6,"totalDuration":5})",
          R"({"currentPosition":0,"totalDuration":0})",
          R"({"currentPosition":-1,"totalDuration":5})",
          R"({"currentPosition":"1","totalDuration":5})", R"({"currentPosition":1})",
          R"({"currentPosition":1,"totalDuration":5000000000})", "[1,5]", "null", "{}"})
        EXPECT_FALSE(Position(bad)) << bad;
    const auto hour = Position(R"({"currentPosition":3725,"totalDuration":36000})");
    EXPECT_EQ(hour->Text(), "01:02:05/10:00:00");
    EXPECT_EQ(hour->Percent(), 10);
    EXPECT_EQ(Position(R"({"currentPosition":199,"totalDuration":200})")->Percent(), 99);
    const auto longest = Position(R"({"currentPosition":2147483647,"totalDuration":2147483647})");
    EXPECT_EQ(longest->Percent(), 100);
}

TEST(VideoPosition, TakesNamesFromItsDataOrFromBesideIt) {
    const std::string position = R"({"currentPosition":1,"totalDuration":5)";
    const auto inside =
        Position(position + R"(,"typeName":"舞曲","videoName":"a"})", R"(,"videoName":"b")");
    EXPECT_EQ(inside->folder + "/" + inside->video, "舞曲/a");
    const auto beside =
        Position(position + R"(,"videoName":7})", R"(,"typeName":"c","videoName":"d")");
    EXPECT_EQ(beside->folder + "/" + beside->video, "c/d");
    EXPECT_TRUE(beside->named);
    EXPECT_FALSE(Position(position + R"(,"typeName":"c"})")->named);
}

TEST(VideoReply, ListsSkipWhatIsOfAnotherType) {
    const auto captions = VideoReply::Parse(R"({"code":0,"cmdId":3,"data":[
        {"type":7,"playMode":"播放"}, {"type":"7","playMode":"x"}, {"type":8}, 5, null,
        {"type":99,"playMode":"later"}]})");
    EXPECT_THAT(captions->Captions(),
                ElementsAre(VideoCaption{7, "播放"}, VideoCaption{99, "later"}));
    EXPECT_THAT(VideoReply::Parse(R"({"code":0,"cmdId":3,"data":{"type":7}})")->Captions(),
                ElementsAre());
    const auto names = VideoReply::Parse("{\"code\":0,\"cmdId\":12,\"data\":[\"a\",1,\"b\xE6\"]}");
    EXPECT_THAT(*names->Names(), ElementsAre("a", "b\xEF\xBF\xBD"));
    EXPECT_FALSE(VideoReply::Parse(R"({"code":0,"cmdId":12,"data":"a"})")->Names());
}

}  // namespace
}  // namespace sontaro::test
