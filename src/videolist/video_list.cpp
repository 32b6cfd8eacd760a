#include "videolist/video_list.h"

#include <algorithm>

#include "base/json.h"
#include "settings/record_table.h"

namespace sontaro {

namespace {

// The list as players write it.

struct Video {
    std::string name;
    std::int64_t size = 0;
};

struct Category {
    std::string name;
    Elements<Video> videos;
};

struct Screen {
    std::int64_t number = 0;
    Elements<Category> categories;
};

struct Document {
    std::uint32_t players = 0;
    Elements<Screen> screens;
};

// clang-format off
constexpr auto kVideo = Rows<Video>({
    {"videoName", kAt<&Video::name>},
    {"videoSize", kAt<&Video::size>},
});
constexpr auto kCategory = Rows<Category>({
    {"type", kAt<&Category::name>},
    {"videoDatas", kRecordAt<&Category::videos, kVideo>},
});
constexpr auto kScreen = Rows<Screen>({
    {"screenID", kAt<&Screen::number>},
    {"cloudVideoTypes", kRecordAt<&Screen::categories, kCategory>},
});
constexpr auto kDocument = Rows<Document>({
    {"playerNum", kAt<&Document::players>},
    {"cloudNewVideoScreenDatas", kRecordAt<&Document::screens, kScreen>},
});
// clang-format on

ListedCategory Listed(const Category& category) {
    ListedCategory listed{category.name, {}};
    listed.videos.reserve(category.videos.size());
    for (const Video& video : category.videos) listed.videos.push_back({video.name, video.size});
    return listed;
}

}  // namespace

Result<VideoList> ReadVideoList(std::string_view text) {
    Result<Json::Value> json = ParseJson(text);
    if (!json) return Error{json.reason()};
    if (!json->isObject()) return Error{"the text is no JSON object"};
    Document document;
    kSchemaOf<kDocument>.Read(std::move(*json), Source::kPlayer, document);
    VideoList list;
    list.players =
        static_cast<int>(std::clamp<std::uint32_t>(document.players, 1, kMostListedPlayers));
    for (const Screen& screen : document.screens) {
        const auto number = static_cast<std::uint16_t>(screen.number);  // as players keep it
        if (number >= kListedScreens) continue;
        for (const Category& category : screen.categories)
            list.screens.at(number).push_back(Listed(category));
    }
    return list;
}

}  // namespace sontaro
