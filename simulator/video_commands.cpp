#include "simulator/video_commands.h"

#include <algorithm>

#include "base/json.h"
#include "simulator/number.h"
#include "simulator/playback.h"

namespace sontaro::simulator {

namespace {

constexpr int kLoudest = 100;

enum VideoCommandId : int {
    kSelectFolder = 2,
    kListCaptions = 3,
    kPressButton = 4,
    kSelectLayout = 6,
    kSetVolume = 8,
    kReportPosition = 10,
    kSelectVideo = 11,
    kListUsbVideos = 12,
    kSelectUsbVideo = 13,
};

/// Carries out a command; adds to the reply what it has to say beside "code" and "cmdId".
using Handler = bool (*)(PlayerState& state, const Json::Value& request, Json::Value& reply);

struct VideoCommandRow {
    VideoCommandId id;
    Handler handle;
};

std::string TextOf(const Json::Value& request, const char* key) {
    const Json::Value& value = request[key];
    return value.isString() ? value.asString() : std::string();
}

bool ListCaptions(PlayerState& state, const Json::Value&, Json::Value& reply) {
    Json::Value& data = reply["data"] = Json::Value(Json::arrayValue);
    for (const Caption& caption : state.captions) {
        Json::Value& entry = data.append(Json::Value(Json::objectValue));
        entry["type"] = static_cast<int>(caption.type);
        entry["playMode"] = caption.text;
    }
    return true;
}

bool PressButton(PlayerState& state, const Json::Value& request, Json::Value&) {
    const auto caption =
        std::ranges::find(state.captions, TextOf(request, "playMode"), &Caption::text);
    return caption != state.captions.end() && Perform(state, caption->type);
}

/// A layout goes by the name of its file without the ending, which has four characters.
bool IsCalled(const std::string& layout, const std::string& name) {
    constexpr std::size_t kEndingLength = 4;
    return layout.size() == name.size() + kEndingLength && layout.starts_with(name);
}

bool SelectLayout(PlayerState& state, const Json::Value& request, Json::Value&) {
    const std::string name = TextOf(request, "layoutName");
    const auto layout = std::ranges::find_if(
        state.layouts, [&](const std::string& file) { return IsCalled(file, name); });
    if (state.layoutLocked || layout == state.layouts.end()) return false;
    state.layout = *layout;
    return true;
}

bool SetVolume(PlayerState& state, const Json::Value& request, Json::Value&) {
    const auto volume = ParseNumber(TextOf(request, "sound"), 0, kLoudest);
    if (volume) state.volume = *volume;
    return volume.has_value();
}

bool ReportPosition(PlayerState& state, const Json::Value&, Json::Value& reply) {
    const VideoFolder* folder = CurrentFolder(state);
    const Video* video = CurrentVideo(state);
    if (folder == nullptr || video == nullptr) return false;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(state.position);
    Json::Value& data = reply["data"];
    data["currentPosition"] = static_cast<int>(seconds.count());
    data["totalDuration"] = video->seconds;
    data["typeName"] = folder->name;
    data["videoName"] = video->name;
    return true;
}

bool ListUsbVideos(PlayerState& state, const Json::Value&, Json::Value& reply) {
    Json::Value& data = reply["data"] = Json::Value(Json::arrayValue);
    for (const Video& video : state.usb.videos) data.append(video.name);
    const Video* current = CurrentVideo(state);
    if (state.playingUsb && current != nullptr) reply["videoName"] = current->name;
    return true;
}

constexpr VideoCommandRow kVideoCommands[] = {
    {kSelectFolder, [](PlayerState& state, const Json::Value& request,
                       Json::Value&) { return PlayFolder(state, TextOf(request, "type")); }},
    {kListCaptions, ListCaptions},
    {kPressButton, PressButton},
    {kSelectLayout, SelectLayout},
    {kSetVolume, SetVolume},
    {kReportPosition, ReportPosition},
    {kSelectVideo, [](PlayerState& state, const Json::Value& request,
                      Json::Value&) { return PlayVideo(state, TextOf(request, "playName")); }},
    {kListUsbVideos, ListUsbVideos},
    {kSelectUsbVideo,
     [](PlayerState& state, const Json::Value& request, Json::Value&) {
         return PlayUsbVideo(state, TextOf(request, "usbVideoName"));
     }},
};

/// The number of the command, 0 when the request has none.
int CommandIdOf(const Json::Value& request) {
    return request.isObject() && request["cmdId"].isInt() ? request["cmdId"].asInt() : 0;
}

bool Run(PlayerState& state, int id, const Json::Value& request, Json::Value& reply) {
    const auto row = std::ranges::find(kVideoCommands, id, &VideoCommandRow::id);
    return row != std::end(kVideoCommands) && row->handle(state, request, reply);
}

void SetJson(DevicePacket& packet, const Json::Value& json) {
    const std::string text = WriteJson(json);
    const ByteView bytes = AsBytes(text);
    packet.payload.assign(bytes.begin(), bytes.end());
}

/// What the player says unasked is what it would answer to that command.
DevicePacket Unasked(const PlayerState& state, VideoCommandId id) {
    PlayerState copy = state;
    Json::Value reply;
    reply["code"] = Run(copy, id, Json::Value(), reply) ? 0 : 1;
    reply["cmdId"] = id;
    return DevicePacket::Request(kCommandVideo | kReplyBit, static_cast<std::uint32_t>(id),
                                 WriteJson(reply));
}

}  // namespace

void HandleVideoCommand(PlayerState& state, const DevicePacket& request, Answer& answer) {
    const Result<Json::Value> json = ParseJson(AsText(request.payload));
    const int id = json ? CommandIdOf(*json) : 0;
    Json::Value reply(Json::objectValue);
    const bool done = id != 0 && Run(state, id, *json, reply);
    reply["code"] = done ? 0 : 1;
    reply["cmdId"] = id != 0 ? id : request.header.subCommand;
    SetJson(answer.reply, reply);
    answer.startPushes = done && id == kListCaptions;
}

DevicePacket PositionPacket(const PlayerState& state) { return Unasked(state, kReportPosition); }

DevicePacket UsbVideosPacket(const PlayerState& state) { return Unasked(state, kListUsbVideos); }

}  // namespace sontaro::simulator
