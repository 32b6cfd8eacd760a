#include "simulator/video_list_commands.h"

#include "base/json.h"
#include "batchsend/video_types.h"

namespace sontaro::simulator {

namespace {

constexpr int kPlayersOfTheGroup = 2;
constexpr std::int64_t kBytesPerSecond = 25'000'000;  // some videos pass what 32 bits can hold

struct OtherScreen {
    int number;
    VideoFolder folder;
};

const std::vector<OtherScreen>& OtherScreens() {
    static const std::vector<OtherScreen> screens = {
        {1, {"霓虹之夜特辑", {{"开场.mp4", 62}, {"Finale.mp4", 118}}}},
        {1, {"舞曲", {{"霓虹之夜.mp4", 215}}}},
        {3, {"Adverts", {{"今晚特价.mp4", 15}}}},
        {4, {"Nowhere", {{"Unknown.mp4", 1}}}},
    };
    return screens;
}

Json::Value ToJson(const VideoFolder& folder) {
    Json::Value category;
    category["type"] = folder.name;
    Json::Value& videos = category["videoDatas"] = Json::Value(Json::arrayValue);
    for (const Video& video : folder.videos) {
        Json::Value listed;
        listed["videoName"] = video.name;
        listed["videoSize"] = video.seconds * kBytesPerSecond;
        videos.append(listed);
    }
    return category;
}

Json::Value Screen(int number) {
    Json::Value screen;
    screen["screenID"] = number;
    screen["cloudVideoTypes"] = Json::Value(Json::arrayValue);
    return screen;
}

/// The name of a stored video's category: that of its slot, as far as the player has one.
std::string CategoryOf(const PlayerState& state, const StoredVideo& video) {
    const auto names = ReadCategoryNames(state.controlProtocol);
    const auto slot = static_cast<std::size_t>(video.code);
    const bool hasName = names && slot < kVideoCategories && !names->at(slot).empty();
    return hasName ? names->at(slot) : std::to_string(video.code);
}

void AddStored(const std::string& category, const StoredVideo& video, Json::Value& categories) {
    Json::Value listed;
    listed["videoName"] = video.name;
    listed["videoSize"] = Json::Int64(video.size);
    for (Json::Value& other : categories)
        if (other["type"] == category) {
            other["videoDatas"].append(listed);
            return;
        }
    categories.append(ToJson(VideoFolder{category, {}}))["videoDatas"].append(listed);
}

}  // namespace

void HandleVideoList(PlayerState& state, const DevicePacket&, Answer& answer) {
    Json::Value list;
    list["playerNum"] = kPlayersOfTheGroup;
    Json::Value& screens = list["cloudNewVideoScreenDatas"];
    screens.append(Screen(0));
    for (const VideoFolder& folder : state.folders)
        screens[0]["cloudVideoTypes"].append(ToJson(folder));
    for (const StoredVideo& video : state.stored)
        AddStored(CategoryOf(state, video), video, screens[0]["cloudVideoTypes"]);
    for (const OtherScreen& other : OtherScreens()) {
        Json::Value& screen = screens.append(Screen(other.number));
        screen["cloudVideoTypes"].append(ToJson(other.folder));
    }
    answer.content = Content::kVideoList;
    const std::string text = WriteJson(list);
    answer.reply.payload.assign(text.begin(), text.end());
}

}  // namespace sontaro::simulator
