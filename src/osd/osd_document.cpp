#include "osd/osd_document.h"

#include "base/json.h"
#include "settings/record_table.h"

namespace sontaro {

namespace {

constexpr const char* kData = "data";

constexpr LocalText kNoHelp = {nullptr, nullptr};
constexpr LocalText kLineTooLong = {"显示字符不能超过70个汉字!",
                                    "Display characters cannot exceed 140 characters!"};
constexpr FieldShape kLine = {
    .rule = FieldRule::kText, .longest = kLongestOsdLine, .tooLong = kLineTooLong};
constexpr FieldShape kYesNo = {FieldRule::kYesNo};
constexpr FieldShape kColour = {FieldRule::kColour};

using Osd = OsdRecord;

// clang-format off
constexpr auto kOsd = Rows<Osd>({
    Heading{"OSD", "OSD"},
    {"osdEnable", kAt<&Osd::enabled>, kYesNo, {"使能", "Enable"}},
    {"bgColor", kAt<&Osd::backgroundColour>, kColour, {"背景颜色", "BgColor"}, kNoHelp, kDefaultColour},
    {"textColor", kAt<&Osd::textColour>, kColour, {"字体颜色", "TextColor"}, kNoHelp, kDefaultColour},
    {"transparent", kAt<&Osd::transparency>, Refusing({"透明度输入错误!", "Transparent input error!"}, Number(0, 100)),
     {"透明度", "Transparent"}, {"透明度(0~100)", "Transparent(0~100)"}},
    {"showTime", kAt<&Osd::displayTime>, Refusing({"显示时间输入错误!", "ShowTime input error!"}, Number(0, 10000)),
     {"显示时间", "DisplayTime"}, {"显示时间(0~10000秒)0:一直显示", "DisplayTime(0~10000S)0:Always"}},
    {"left", kAt<&Osd::left>, Refusing({"左输入错误!", "left input error!"}, Number(0, 1)), {"左(0.0~1.0)", "Left(0.0~1.0)"}},
    {"top", kAt<&Osd::top>, Refusing({"上输入错误!", "top input error!"}, Number(0, 1)), {"上(0.0~1.0)", "Top(0.0~1.0)"}},
    {"width", kAt<&Osd::width>, Refusing({"宽度输入错误!", "Width input error!"}, Number(0, 1)), {"宽度(0.0~1.0)", "Width(0.0~1.0)"}, kNoHelp, 1},
    {"height", kAt<&Osd::height>, Refusing({"高度输入错误!", "Height input error!"}, Number(0, 1)), {"高度(0.0~1.0)", "Height(0.0~1.0)"}, kNoHelp, 1},
    {"bgCorner", kAt<&Osd::backgroundCorner>},
    {"speed", kAt<&Osd::speed>},
    {"texts", kAt<&Osd::lines>, kLine, {"显示字符%d", "Text%d"}, {"显示字符,最多70个汉字", "Text,Up to 140 characters"}},
});

constexpr auto kDocument = Rows<OsdDocument>({
    {kData, kRecordAt<&OsdDocument::data, kOsd>},
});
// clang-format on

constexpr const auto& kSchema = kSchemaOf<kDocument>;

/// Whether a text is such a document. A player may have no settings, a file of none is no use.
Status Check(const Json::Value& json, Source source) {
    if (!json.isObject()) return Error{"the text is no JSON object"};
    const Json::Value& data = json[kData];
    const bool isEmpty = !json.isMember(kData) || (data.isArray() && data.empty());
    if (isEmpty && source == Source::kPlayer) return Done{};
    if (isEmpty) return Error{"there are no settings in it"};
    if (!data.isArray() || !data[0].isObject()) return Error{"its settings are no object"};
    return Done{};
}

}  // namespace

OsdSettings::OsdSettings() { kSchema.Reset(document_); }

Status OsdSettings::TakeReply(std::string_view text) {
    if (text.empty()) return Done{};
    return Take(text, Source::kPlayer);
}

Status OsdSettings::TakeFile(std::string_view text) { return Take(text, Source::kFile); }

Status OsdSettings::Take(std::string_view text, Source source) {
    Result<Json::Value> json = ParseJson(text);
    if (!json) return Error{json.reason()};
    Status checked = Check(*json, source);
    if (!checked) return checked;
    if (!(*json)[kData].empty()) holdsDefaults_ = false;
    kSchema.Read(std::move(*json), source, document_);
    return checked;
}

std::string OsdSettings::Write() const { return WriteJson(kSchema.ToJson(document_)); }

SettingsRows OsdSettings::Rows() const {
    std::array<SettingsRows, 1> grids;
    kSchema.Show(document_, grids);
    return std::move(grids.front());
}

EditAnswer OsdSettings::Edit(const SettingsEdit& edit) { return kSchema.Edit(edit, document_); }

std::optional<LocalText> OsdSettings::RefusalToSend() const {
    return kSchema.RefusalToSend(document_);
}

}  // namespace sontaro
