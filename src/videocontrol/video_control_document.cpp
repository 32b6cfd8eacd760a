#include "videocontrol/video_control_document.h"

#include <fmt/printf.h>

#include <algorithm>
#include <array>

#include "base/json.h"

namespace sontaro {

namespace {

struct CommandKey {
    std::uint16_t commandId;
    const char* key;
};

constexpr CommandKey kCommandKeys[] = {
    {kVideoFolder, "type"},       {kVideoPlayMode, "playMode"},
    {kVideoLayout, "layoutName"}, {kVideoSound, "sound"},
    {kVideoPlay, "play"},         {kVideoPosition, "playStep"},
    {kVideoPlayName, "playName"}, {kVideoUsbName, "usbVideoName"},
};

/// The JSON of a command.
std::string CommandText(std::uint16_t commandId, const std::string& text) {
    Json::Value document;
    document["cmdId"] = commandId;
    const auto* key = std::ranges::find(kCommandKeys, commandId, &CommandKey::commandId);
    if (key != std::end(kCommandKeys)) document[key->key] = text;
    return WriteJson(document);
}

/// The text of `key` in "data", or beside it; none when neither is a string.
const Json::Value* FindText(const Json::Value& root, const char* key) {
    const Json::Value& data = root["data"];
    if (data.isObject() && data[key].isString()) return &data[key];
    return root[key].isString() ? &root[key] : nullptr;
}

std::string ClockText(int seconds) {
    return fmt::sprintf("%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

}  // namespace

SharedPacket VideoCommandPacket(std::uint16_t commandId, const std::string& text) {
    return ReadyPacket(kCommandVideo, commandId, CommandText(commandId, text));
}

Request AskCaptions() { return AskVideoCommand(kVideoCaptions, CommandText(kVideoCaptions, "")); }

int VideoPosition::Percent() const {
    return static_cast<int>(std::int64_t{seconds} * 100 / duration);
}

std::string VideoPosition::Text() const { return ClockText(seconds) + "/" + ClockText(duration); }

std::optional<VideoReply> VideoReply::Parse(std::string_view payload) {
    Result<Json::Value> document = ParseJson(payload);
    if (!document || !document->isObject()) return std::nullopt;
    VideoReply reply;
    reply.root_ = std::move(*document);
    const Json::Value& root = reply.root_;
    const Json::Value& commandId = root["cmdId"];
    if (!commandId.isInt()) return std::nullopt;
    reply.commandId_ = commandId.asInt();
    reply.code_ = VideoReplyCode(root);
    return reply;
}

std::vector<VideoCaption> VideoReply::Captions() const {
    std::vector<VideoCaption> captions;
    const Json::Value& data = root_["data"];
    if (!data.isArray()) return captions;
    for (const Json::Value& element : data)
        if (element.isObject() && element["type"].isInt() && element["playMode"].isString())
            captions.push_back({element["type"].asInt(), TextOf(element["playMode"])});
    return captions;
}

std::optional<VideoPosition> VideoReply::Position() const {
    const Json::Value& data = root_["data"];
    if (!data.isObject() || !data["currentPosition"].isInt() || !data["totalDuration"].isInt())
        return std::nullopt;
    VideoPosition position;
    position.seconds = data["currentPosition"].asInt();
    position.duration = data["totalDuration"].asInt();
    if (position.seconds < 0 || position.seconds > position.duration || position.duration < 1)
        return std::nullopt;
    const Json::Value* folder = FindText(root_, "typeName");
    const Json::Value* video = FindText(root_, "videoName");
    position.named = folder != nullptr && video != nullptr;
    if (folder) position.folder = TextOf(*folder);
    if (video) position.video = TextOf(*video);
    return position;
}

std::optional<std::vector<std::string>> VideoReply::Names() const {
    const Json::Value& data = root_["data"];
    if (!data.isArray()) return std::nullopt;
    std::vector<std::string> names;
    for (const Json::Value& element : data)
        if (element.isString()) names.push_back(TextOf(element));
    return names;
}

std::string VideoReply::UsbVideo() const {
    const Json::Value& name = root_["videoName"];
    return name.isString() ? TextOf(name) : "";
}

}  // namespace sontaro
