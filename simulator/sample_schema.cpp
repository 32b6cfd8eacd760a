#include "simulator/sample_schema.h"

#include <string_view>
#include <vector>

#include "base/json.h"
#include "settings/custom_setting_kinds.h"
#include "settings/custom_settings.h"

namespace sontaro::simulator {

namespace {

constexpr std::size_t kGroupSize = 100;

constexpr std::string_view kSample = R"({
"Version" : "1.2",
"CustomSettings" : [
[
{"keyVal":"screenGroup","lableName":"","inputType":"GroupName","remarks":"","valueRange":[],"select":"屏幕显示"},
{"keyVal":"screenCount","lableName":"屏幕数量","inputType":"IntArry","remarks":"播放器连接的屏幕数量","valueRange":[1,2,4,6,8,9],"select":4},
{"keyVal":"screenMode","lableName":"拼接方式","inputType":"StringArry","remarks":"多块屏幕之间的排列方式","valueRange":["横向拼接","纵向拼接","田字拼接","复制显示"],"select":"田字拼接"},
{"keyVal":"brightness","lableName":"亮度","inputType":"IntRange","remarks":"所有屏幕的亮度，0 至 100","valueRange":[100,0],"select":80},
{"keyVal":"gamma","lableName":"伽马值","inputType":"DoubleArry","remarks":"与屏幕规格书中的数值一致","valueRange":[1.8,2,2.2,2.4,2.6],"select":2.2},
{"keyVal":"colorTemp","lableName":"色温","inputType":"Int","remarks":"单位：开尔文","valueRange":[6500],"select":6500},
{"keyVal":"edgeBlend","lableName":"边缘融合宽度","inputType":"DoubleRange","remarks":"单位：毫米","valueRange":[250,0],"select":12.5},
{"keyVal":"rotation","lableName":"旋转角度","inputType":"Angle","remarks":"此固件尚未提供","valueRange":[0,90,180,270],"select":0},
{"keyVal":"enabledScreens","lableName":"启用的屏幕","inputType":"IntMultiple","remarks":"没有打勾的屏幕保持黑屏","valueRange":[1,2,3,4],"select":[1,2,4]}
],
[
{"keyVal":"serialGroup","lableName":"","inputType":"GroupName","remarks":"","valueRange":[],"select":"串口与触摸"},
{"keyVal":"serialPort","lableName":"串口","inputType":"StringArry","remarks":"外部设备所接的串口","valueRange":["COM1","COM2","RS485"],"select":"COM1"},
{"keyVal":"baudRate","lableName":"波特率","inputType":"IntArry","remarks":"须与外部设备一致","valueRange":[9600,19200,38400,57600,115200],"select":115200},
{"keyVal":"serialTimeout","lableName":"应答超时","inputType":"IntStringRange","remarks":"单位：毫秒","valueRange":["5000","100"],"select":"800"},
{"keyVal":"parity","lableName":"校验位","inputType":"String","remarks":"旧固件以数字保存","valueRange":["N"],"select":0},
{"keyVal":"touchAreas","lableName":"触摸区域","inputType":"StringMultiple","remarks":"响应触摸的区域","valueRange":["左上","右上","左下","右下","中央"],"select":["中央","左上"]},
{"keyVal":"touchHold","lableName":"长按时间","inputType":"Double","remarks":"单位：秒","valueRange":[1.5],"select":1.5},
{"keyVal":"touchScale","lableName":"坐标缩放","inputType":"DoubleStringRange","remarks":"触摸坐标与画面坐标之比","valueRange":["4.0000","0.2500"],"select":"1.0000"},
{"keyVal":"touchSound","lableName":"触摸提示音","inputType":"String","remarks":"没有取值范围","select":"叮咚"}
],
[
{"keyVal":"subtitleGroup","lableName":"","inputType":"GroupName","remarks":"","valueRange":[],"select":"字幕"},
{"keyVal":"subtitleText","lableName":"字幕内容","inputType":"String","remarks":"开机后滚动显示","valueRange":["欢迎光临"],"select":"欢迎光临，祝您玩得开心！"},
{"keyVal":"subtitleSize","lableName":"字号","inputType":"IntRange","remarks":"单位：像素","valueRange":[12,240],"select":64},
{"keyVal":"subtitleSpeed","lableName":"滚动速度","inputType":"DoubleMultiple","remarks":"依次轮换所选的速度","valueRange":[0.5,1,1.5,2],"select":[1,2]}
]
]
}
)";

/// The items of the sample, titles and what has to be passed over left out.
std::vector<Json::Value> UsableItems() {
    CCustomSettingAnalysor sample;
    sample.Parse(kSample);
    const Result<Json::Value> document = ParseJson(sample.Serialise());
    std::vector<Json::Value> items;
    for (const Json::Value& group : (*document)["CustomSettings"])
        for (Json::ArrayIndex i = 1; i < group.size(); ++i) items.push_back(group[i]);
    return items;
}

}  // namespace

std::string SampleSchema() { return std::string(kSample); }

std::string LargeSchema(std::size_t items) {
    const std::vector<Json::Value> samples = UsableItems();
    CCustomSettingAnalysor::GroupName title;
    title.inputType = TitleKind().keyword;
    Json::Value document;
    document["Version"] = 1;
    Json::Value& groups = document["CustomSettings"] = Json::Value(Json::arrayValue);
    for (std::size_t i = 0; i < items; ++i) {
        const std::string number = std::to_string(i + 1);
        if (i % kGroupSize == 0) {
            title.value = "第 " + std::to_string(i / kGroupSize + 1) + " 组";
            groups.append(Json::Value(Json::arrayValue)).append(title.ToJson());
        }
        Json::Value item = samples[i % samples.size()];
        item["keyVal"] = item["keyVal"].asString() + number;
        item["lableName"] = item["lableName"].asString() + " " + number;
        groups[groups.size() - 1].append(std::move(item));
    }
    return WriteJson(document);
}

}  // namespace sontaro::simulator
