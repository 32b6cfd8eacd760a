#include "simulator/sample_control_protocol.h"

#include <fmt/format.h>

#include <span>
#include <string_view>

#include "base/json.h"

namespace sontaro::simulator {

namespace {

constexpr Json::ArrayIndex kSceneSlots = 64;  // of each kind of category, and of layouts
constexpr Json::ArrayIndex kProjectorSlots = 30;
constexpr Json::ArrayIndex kProjectorCommands = 6;

constexpr std::string_view kSingleSettings = R"({
"KtvDev": {"KTVName": 1, "KTVServerIP": "192.168.84.101", "KTVServerPort": 8192},
"Serial": {
"BaudRate": 115200, "DataBit": 8, "StopBit": 1, "PlayMode": 2, "LayOutMov": 1,
"AudioOutChl": 1000, "Physical1Width": 480, "Physical1Height": 270, "FadeinoutEnable": 1,
"AudioPlayMode": 1, "ElectroacousticMode": 2, "DMX512Addr1": 1, "DMX512Addr2": 33,
"Play": "A5010001", "Pause": "A5010002", "BackType": "A5010003", "NextType": "A5010004",
"BackVideo": "A5010005", "NextVideo": "A5010006", "VolumeAdd": "A5010007",
"VolumeSub": "A5010008", "ProjectorON": "A5010009", "ProjectorOFF": "A501000A",
"PowerOn": "A501000B", "PowerOff": "A501000C", "AudioPlay": "A501000D",
"AudioPause": "A501000E", "Bass": "A501000F", "BassClimax": "A5010010"
}})";

/// The slots that are called something, and the byte that stands for their kind in commands.
struct Scenes {
    const char* nameKey;
    int kind;
    std::span<const char* const> names;
};

constexpr const char* kVideoNames[] = {"迪斯科", "抒情", "摇滚", "蓝调", "星空", "海底",
                                       "森林",   "沙漠", "雪景", "婚礼", "生日", "商务"};
constexpr const char* kAudioNames[] = {"背景音乐", "迎宾", "暖场", "舞曲", "送客"};
constexpr const char* kLayoutNames[] = {"单屏", "双屏", "四屏", "全景", "画中画", "竖屏"};

constexpr Scenes kVideoTypes{"TypeName", 2, kVideoNames};
constexpr Scenes kAudioTypes{"TypeName", 3, kAudioNames};
constexpr Scenes kLayouts{"LayOutName", 4, kLayoutNames};

/// The command is answered with its own bytes behind another start.
Json::Value SceneAt(const Scenes& scenes, Json::ArrayIndex slot) {
    const bool used = slot < scenes.names.size();
    const std::string bytes = fmt::format("{:02X}{:02X}03", scenes.kind, slot + 1);
    Json::Value scene;
    scene[scenes.nameKey] = used ? scenes.names[slot] : "";
    scene["SendCmd"] = used ? "A5" + bytes : "";
    scene["RecvCmd"] = used ? "5A" + bytes : "";
    return scene;
}

Json::Value SceneList(const Scenes& scenes) {
    Json::Value list(Json::arrayValue);
    for (Json::ArrayIndex slot = 0; slot < kSceneSlots; ++slot) list.append(SceneAt(scenes, slot));
    return list;
}

Json::Value VideoTypeList() {
    constexpr Json::ArrayIndex kModes = 3;
    Json::Value list = SceneList(kVideoTypes);
    for (Json::ArrayIndex slot = 0; slot < list.size(); ++slot) {
        const bool used = slot < kVideoTypes.names.size();
        list[slot]["ElectroacousticMode"] = used ? slot % kModes : 0;
        list[slot]["ScreenEffectID"] = used ? slot : 0;
    }
    return list;
}

struct Projector {
    const char* ip = "";
    int port = 0;
    int protocolType = 0;
    int controlType = 0;
    const char* on = "";
    const char* off = "";
};

/// A switch box, and a projector that takes "%1POWR 1" and "%1POWR 0" with a carriage return.
constexpr Projector kProjectors[] = {
    {"192.168.84.60", 5000, 0, 0, "A5050101", "A5050100"},
    {"192.168.84.61", 4352, 1, 1, "2531504F575220310D", "2531504F575220300D"}};

Json::Value ToJson(const Projector& projector) {
    Json::Value json;
    json["IP"] = projector.ip;
    json["Port"] = projector.port;
    json["ProtocolType"] = projector.protocolType;
    json["ProjectorControlType"] = projector.controlType;
    for (Json::ArrayIndex i = 0; i < kProjectorCommands; ++i) {
        json["Cmd"][i]["ONCmd"] = i == 0 ? projector.on : "";
        json["Cmd"][i]["OFFCmd"] = i == 0 ? projector.off : "";
    }
    return json;
}

Json::Value ProjectorList() {
    Json::Value list(Json::arrayValue);
    for (const Projector& projector : kProjectors) list.append(ToJson(projector));
    while (list.size() < kProjectorSlots) list.append(ToJson(Projector()));
    return list;
}

}  // namespace

std::string SampleControlProtocol() {
    Result<Json::Value> document = ParseJson(kSingleSettings);
    (*document)["VideoType"] = VideoTypeList();
    (*document)["AudioType"] = SceneList(kAudioTypes);
    (*document)["LayOut"] = SceneList(kLayouts);
    (*document)["Projector"] = ProjectorList();
    return WriteJson(*document);
}

}  // namespace sontaro::simulator
