#include "videolist/video_list.h"

#include <gmock/gmock.h>

#include "support/literals.h"

namespace sontaro::test {
namespace {

/// Screens with their categories in brackets and the videos with their sizes.
std::string Listed(const VideoList& list) {
    std::string listed = std::to_string(list.players);
    for (const auto& screen : list.screens) {
        listed += " [";
        for (const ListedCategory& category : screen) {
            listed += category.name + ':';
            for (const ListedVideo& video : category.videos)
                listed += video.name + '=' + std::to_string(video.size) + ';';
        }
        listed += ']';
    }
    return listed;
}

TEST(VideoListReader, SortsByTheFirstFourScreensWhatIsThereAndOfItsType) {
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {R"({"playerNum":2,"cloudNewVideoScreenDatas":[
            {"screenID":1,"cloudVideoTypes":[{"type":"舞曲","videoDatas":[{"videoName":"b.mp4","videoSize":6000000000}]}]},
            {"screenID":4,"cloudVideoTypes":[{"type":"none"}]},{"screenID":0,"cloudVideoTypes":[{"type":"Ambient"}]},
            {"screenID":1,"cloudVideoTypes":[{"type":"more","videoDatas":[{}]}]}]})",
         "2 [Ambient:] [舞曲:b.mp4=6000000000;more:=0;] [] []"},
        {R"({"playerNum":0})", "1 [] [] [] []"}, {R"({"playerNum":65})", "64 [] [] [] []"},
        {R"({"playerNum":-1,"cloudNewVideoScreenDatas":{}})", "1 [] [] [] []"},
        {R"({"playerNum":true,"cloudNewVideoScreenDatas":[5,null]})", "1 [] [] [] []"},
        {R"({"cloudNewVideoScreenDatas":[{"screenID":-1,"cloudVideoTypes":[{"type":"x"}]},
            {"screenID":65539,"cloudVideoTypes":[{"type":"y"},"odd"]}]})", "1 [] [] [] [y:]"},
        {R"({"cloudNewVideoScreenDatas":[{"cloudVideoTypes":[{"type":5,"videoDatas":[
            {"videoName":[],"videoSize":1.5},{"videoSize":true},{"videoName":"a","videoSize":-1},7]}]}]})",
         "1 [:=0;=0;a=-1;] [] [] []"}};
    // clang-format on
    for (const auto& [text, listed] : cases) EXPECT_EQ(Listed(*ReadVideoList(text)), listed);
}

TEST(VideoListReader, SaysWhyATextIsNoList) {
    for (const char* text : {"", "{", "one.mp4?two.mp4?", "[]", "7", "null"})
        EXPECT_FALSE(ReadVideoList(text).ok()) << text;
}

}  // namespace
}  // namespace sontaro::test
