#include "simulator/player_state.h"

#include <concepts>
#include <type_traits>

#include "base/json.h"
#include "simulator/sample_control_protocol.h"
#include "simulator/sample_player_control.h"
#include "simulator/sample_schema.h"
#include "simulator/sample_timeline.h"
#include "simulator/sample_wall.h"

namespace sontaro::simulator {

namespace {

template <class Record>
concept IsVideo = std::same_as<std::remove_const_t<Record>, Video>;
template <class Record>
concept IsFolder = std::same_as<std::remove_const_t<Record>, VideoFolder>;
template <class Record>
concept IsCaption = std::same_as<std::remove_const_t<Record>, Caption>;
template <class Record>
concept IsStoredVideo = std::same_as<std::remove_const_t<Record>, StoredVideo>;
template <class Record>
concept IsState = std::same_as<std::remove_const_t<Record>, PlayerState>;

// The keys of the file, for both directions: each overload calls `visit(key, field)`.
template <IsVideo Record, class Visitor>
void VisitFields(Record& record, Visitor&& visit) {
    visit("name", record.name);
    visit("seconds", record.seconds);
}

template <IsFolder Record, class Visitor>
void VisitFields(Record& record, Visitor&& visit) {
    visit("name", record.name);
    visit("videos", record.videos);
}

template <IsCaption Record, class Visitor>
void VisitFields(Record& record, Visitor&& visit) {
    visit("type", record.type);
    visit("text", record.text);
}

template <IsStoredVideo Record, class Visitor>
void VisitFields(Record& record, Visitor&& visit) {
    visit("code", record.code);
    visit("name", record.name);
    visit("size", record.size);
}

template <IsState Record, class Visitor>
void VisitFields(Record& record, Visitor&& visit) {
    visit("poweredOn", record.poweredOn);
    visit("playing", record.playing);
    visit("layoutLocked", record.layoutLocked);
    visit("screenEffect", record.screenEffect);
    visit("playMode", record.playMode);
    visit("volume", record.volume);
    visit("layout", record.layout);
    visit("layouts", record.layouts);
    visit("captions", record.captions);
    visit("folders", record.folders);
    visit("usb", record.usb);
    visit("olderNames", record.olderNames);
    visit("playingUsb", record.playingUsb);
    visit("folder", record.folder);
    visit("video", record.video);
    visit("shuffle", record.shuffle);
    visit("osd", record.osd);
    visit("controlProtocol", record.controlProtocol);
    visit("playerControl", record.playerControl);
    visit("serialPort", record.serialPort);
    visit("subtitles", record.subtitles);
    visit("touchAction", record.touchAction);
    visit("cave", record.cave);
    visit("timeline", record.timeline);
    visit("mode", record.mode);
    visit("diskMebibytes", record.diskMebibytes);
    visit("stored", record.stored);
    visit("wall", record.wall);
}

struct Writer {
    static Json::Value ToJson(bool value) { return value; }
    static Json::Value ToJson(int value) { return value; }
    static Json::Value ToJson(unsigned value) { return value; }
    static Json::Value ToJson(std::int64_t value) { return Json::Int64(value); }
    static Json::Value ToJson(Action value) { return static_cast<int>(value); }
    static Json::Value ToJson(const std::string& value) { return value; }

    template <class Item>
    static Json::Value ToJson(const std::vector<Item>& items) {
        Json::Value array(Json::arrayValue);
        for (const Item& item : items) array.append(ToJson(item));
        return array;
    }

    template <class Record>
    static Json::Value ToJson(const Record& record) {
        Json::Value object(Json::objectValue);
        VisitFields(record,
                    [&](const char* key, const auto& field) { object[key] = ToJson(field); });
        return object;
    }
};

struct Reader {
    static void FromJson(const Json::Value& json, bool& value) {
        if (json.isBool()) value = json.asBool();
    }
    static void FromJson(const Json::Value& json, int& value) {
        if (json.isInt()) value = json.asInt();
    }
    static void FromJson(const Json::Value& json, unsigned& value) {
        if (json.isUInt()) value = json.asUInt();
    }
    static void FromJson(const Json::Value& json, std::int64_t& value) {
        if (json.isInt64()) value = json.asInt64();
    }
    static void FromJson(const Json::Value& json, Action& value) {
        if (json.isInt()) value = static_cast<Action>(json.asInt());
    }
    static void FromJson(const Json::Value& json, std::string& value) {
        if (json.isString()) value = json.asString();
    }

    template <class Item>
    static void FromJson(const Json::Value& json, std::vector<Item>& items) {
        if (!json.isArray()) return;
        items.clear();
        for (const Json::Value& element : json) FromJson(element, items.emplace_back());
    }

    template <class Record>
    static void FromJson(const Json::Value& json, Record& record) {
        if (!json.isObject()) return;
        VisitFields(record, [&](const char* key, auto& field) { FromJson(json[key], field); });
    }
};

std::vector<Caption> FactoryCaptions() {
    return {{Action::kFolderLoop, "类别循环"}, {Action::kSingleLoop, "单曲循环"},
            {Action::kSinglePlay, "单曲播放"}, {Action::kFolderRandom, "类别随机"},
            {Action::kAllRandom, "全部随机"},  {Action::kPlay, "播放"},
            {Action::kPause, "暂停"},          {Action::kPrevious, "上一首"},
            {Action::kNext, "下一首"},         {Action::kPowerOn, "开机"},
            {Action::kPowerOff, "关机"},       {Action::kScreenEffect, "屏幕特效"},
            {Action::kUsbPrevious, "上一首"},  {Action::kUsbNext, "下一首"}};
}

/// White on dark blue along the lower edge. "marquee" is a setting of this player alone.
constexpr const char* kFactoryOsd = R"({
    "data": [{
        "osdEnable": true, "bgColor": 6307872, "textColor": 16777215, "bgCorner": 1,
        "showTime": 30, "speed": 3, "transparent": 40,
        "left": 0.1, "top": 0.85, "width": 0.8, "height": 0.1,
        "texts": ["欢迎光临", "Welcome to the show", "今晚八点：霓虹之夜", "Please silence your phone"],
        "marquee": {"direction": "left", "pause": 2}
    }]
})";

}  // namespace

PlayerState FactoryState() {
    PlayerState state;
    state.layouts = {"Night.lay", "Party.lay", "四屏.lay"};
    state.layout = state.layouts.front();
    state.captions = FactoryCaptions();
    state.folders = {
        {"舞曲", {{"霓虹之夜.mp4", 215}, {"Midnight Parade.mp4", 187}, {"城市的风.mp4", 242}}},
        {"Ambient", {{"Slow Harbour.mp4", 300}, {"雨后花园.mp4", 264}}}};
    state.usb = {"USB", {{"Birthday.mp4", 95}, {"婚礼.mp4", 160}, {"Logo Loop.mp4", 30}}};
    state.osd = kFactoryOsd;
    state.controlProtocol = SampleControlProtocol();
    state.playerControl = SamplePlayerControl();
    SetSchemas(state, SampleSchema());
    state.timeline = SampleTimeline();
    state.wall = SampleWall();
    return state;
}

void SetSchemas(PlayerState& state, const std::string& schema) {
    state.serialPort = state.subtitles = state.touchAction = state.cave = schema;
}

std::string WriteState(const PlayerState& state) { return WriteJson(Writer::ToJson(state)); }

Result<PlayerState> ReadState(std::string_view text) {
    const Result<Json::Value> json = ParseJson(text);
    if (!json) return Error{json.reason()};
    if (!json->isObject()) return Error{"not a JSON object"};
    PlayerState state = FactoryState();
    Reader::FromJson(*json, state);
    return state;
}

}  // namespace sontaro::simulator
