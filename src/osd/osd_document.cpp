#include "osd/osd_document.h"

#include <fmt/printf.h>

#include <algorithm>
#include <cmath>
#include <variant>

#include "base/encoding.h"
#include "base/json.h"
#include "base/row_text.h"

namespace sontaro {

namespace {

using Lines = std::vector<std::string>;
using Member = std::variant<bool OsdRecord::*, std::uint32_t OsdRecord::*, double OsdRecord::*,
                            Lines OsdRecord::*>;

struct Field {
    const char* key;
    Member member;
    std::optional<RowKind> kind = std::nullopt;  ///< none: there is no row
    LocalText label = {"", ""};
    LocalText refusal = {"", ""};
    double most = 0;  ///< of a number that the user enters; the least is 0
    LocalText hint = {"", ""};
};

// In the order of the rows.
constexpr Field kFields[] = {
    {"osdEnable", &OsdRecord::enabled, RowKind::kYesNo, {"使能", "Enable"}},
    {"bgColor", &OsdRecord::backgroundColour, RowKind::kColour, {"背景颜色", "BgColor"}},
    {"textColor", &OsdRecord::textColour, RowKind::kColour, {"字体颜色", "TextColor"}},
    {"transparent",
     &OsdRecord::transparency,
     RowKind::kWholeNumber,
     {"透明度", "Transparent"},
     {"透明度输入错误!", "Transparent input error!"},
     100,
     {"透明度(0~100)", "Transparent(0~100)"}},
    {"showTime",
     &OsdRecord::displayTime,
     RowKind::kWholeNumber,
     {"显示时间", "DisplayTime"},
     {"显示时间输入错误!", "ShowTime input error!"},
     10000,
     {"显示时间(0~10000秒)0:一直显示", "DisplayTime(0~10000S)0:Always"}},
    {"left",
     &OsdRecord::left,
     RowKind::kDecimal,
     {"左(0.0~1.0)", "Left(0.0~1.0)"},
     {"左输入错误!", "left input error!"},
     1},
    {"top",
     &OsdRecord::top,
     RowKind::kDecimal,
     {"上(0.0~1.0)", "Top(0.0~1.0)"},
     {"上输入错误!", "top input error!"},
     1},
    {"width",
     &OsdRecord::width,
     RowKind::kDecimal,
     {"宽度(0.0~1.0)", "Width(0.0~1.0)"},
     {"宽度输入错误!", "Width input error!"},
     1},
    {"height",
     &OsdRecord::height,
     RowKind::kDecimal,
     {"高度(0.0~1.0)", "Height(0.0~1.0)"},
     {"高度输入错误!", "Height input error!"},
     1},
    {"bgCorner", &OsdRecord::backgroundCorner},
    {"speed", &OsdRecord::speed},
    {"texts",
     &OsdRecord::lines,
     RowKind::kText,
     {"显示字符%d", "Text%d"},
     {"", ""},
     0,
     {"显示字符,最多70个汉字", "Text,Up to 140 characters"}},
};

constexpr LocalText kGroup = {"OSD", "OSD"};
constexpr LocalText kLineTooLong = {"显示字符不能超过70个汉字!",
                                    "Display characters cannot exceed 140 characters!"};

void Read(const Json::Value& json, bool& value) {
    if (json.isBool()) value = json.asBool();
}

void Read(const Json::Value& json, std::uint32_t& value) {
    if (json.isUInt()) value = json.asUInt();
}

void Read(const Json::Value& json, double& value) {
    if (json.isNumeric() && std::isfinite(json.asDouble())) value = json.asDouble();
}

void Read(const Json::Value& json, Lines& lines) {
    if (!json.isArray()) return;
    lines.resize(json.size());
    for (Json::ArrayIndex i = 0; i < json.size(); ++i)
        if (json[i].isString()) lines[i] = TextOf(json[i]);
}

template <class Value>
Json::Value ToJson(const Value& value) {
    return value;
}

Json::Value ToJson(const Lines& lines) {
    Json::Value array(Json::arrayValue);
    for (const std::string& line : lines) array.append(line);
    return array;
}

std::string ColourText(std::uint32_t colour) {
    return colour == kOsdDefaultColour ? "" : ColourRowText(colour);
}

std::optional<std::uint32_t> ParseColour(std::string_view text) {
    return text.empty() ? kOsdDefaultColour : ColourOfRowText(text);
}

std::string RowText(const Field&, bool value) { return value ? kRowYes : kRowNo; }

std::string RowText(const Field& field, std::uint32_t value) {
    return field.kind == RowKind::kColour ? ColourText(value) : std::to_string(value);
}

std::string RowText(const Field&, double value) { return fmt::format("{}", value); }

// `text` fits the row's kind below. False when it is out of range or still no value.
bool SetText(const Field&, const std::string& text, bool& value) {
    value = text == kRowYes;
    return true;
}

bool SetText(const Field& field, const std::string& text, std::uint32_t& value) {
    std::optional<std::uint32_t> entered;
    if (field.kind == RowKind::kColour)
        entered = ParseColour(text);
    else if (LeadingInteger(text) <= field.most)
        entered = static_cast<std::uint32_t>(LeadingInteger(text));
    value = entered.value_or(value);
    return entered.has_value();
}

bool SetText(const Field& field, const std::string& text, double& value) {
    const bool isNumber = text != "." && std::ranges::count(text, '.') <= 1;
    if (!isNumber || LeadingDouble(text) > field.most) return false;
    value = LeadingDouble(text);
    return true;
}

constexpr const char* kElementKey = "data/0/";

std::string KeyOf(const Field& field) { return std::string(kElementKey) + field.key; }

std::string KeyOf(const Field& field, std::size_t line) {
    return KeyOf(field) + '/' + std::to_string(line);
}

SettingsRow MakeRow(const Field& field, const std::string& name, const std::string& value) {
    SettingsRow row{KeyOf(field), *field.kind, name, value, Localized(field.hint)};
    row.refusal = Localized(field.refusal);
    return row;
}

template <class Value>
void AddRows(std::vector<SettingsRow>& rows, const Field& field, const Value& value) {
    if (field.kind) rows.push_back(MakeRow(field, Localized(field.label), RowText(field, value)));
}

void AddRows(std::vector<SettingsRow>& rows, const Field& field, const Lines& lines) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        rows.push_back(MakeRow(field, fmt::sprintf(Localized(field.label), number), lines[i]));
        rows.back().key = KeyOf(field, i);
    }
}

template <class Value>
bool HasRow(const Field& field, const Value&, const std::string& key) {
    return field.kind && KeyOf(field) == key;
}

bool HasRow(const Field& field, const Lines& lines, const std::string& key) {
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (KeyOf(field, i) == key) return true;
    return false;
}

/// Sets what the row `key` of the field shows; what it shows from now on, or none when the text
/// is refused.
template <class Value>
std::optional<std::string> EditRow(const Field& field, const std::string&, const std::string& text,
                                   Value& value) {
    if (!SetText(field, text, value)) return std::nullopt;
    return RowText(field, value);
}

std::optional<std::string> EditRow(const Field& field, const std::string& key,
                                   const std::string& text, Lines& lines) {
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (KeyOf(field, i) == key) lines[i] = text;
    return text;
}

/// The settings in `text`; none when it is no document of theirs.
std::optional<Json::Value> ParseElement(std::string_view text) {
    const Result<Json::Value> document = ParseJson(text);
    if (!document || !document->isObject()) return std::nullopt;
    const Json::Value& data = (*document)["data"];
    if (!data.isArray() || data.empty() || !data[0].isObject()) return std::nullopt;
    return data[0];
}

/// Whether the text is that of a player without settings.
bool HasNoElement(std::string_view text) {
    if (text.empty()) return true;
    const Result<Json::Value> document = ParseJson(text);
    if (!document || !document->isObject()) return false;
    const Json::Value& data = (*document)["data"];
    return data.isNull() || (data.isArray() && data.empty());
}

}  // namespace

bool OsdSettings::TakeReply(std::string_view text) {
    const bool taken = Take(text);
    holdsDefaults_ = !taken;
    return taken || HasNoElement(text);
}

bool OsdSettings::Take(std::string_view text) {
    const std::optional<Json::Value> element = ParseElement(text);
    if (!element) return false;
    for (const Field& field : kFields) {
        const Json::Value& json = (*element)[field.key];
        std::visit([&](auto member) { Read(json, settings_.*member); }, field.member);
    }
    for (const std::string& key : element->getMemberNames()) read_[key] = (*element)[key];
    return true;
}

std::string OsdSettings::Write() const {
    Json::Value document;
    Json::Value& element = document["data"][0] = read_;
    for (const Field& field : kFields)
        std::visit([&](auto member) { element[field.key] = ToJson(settings_.*member); },
                   field.member);
    return WriteJson(document);
}

SettingsRows OsdSettings::Rows() const {
    SettingsRows groups(1);
    SettingsGroup& group = groups.front();
    group.key = "data/0";
    group.name = Localized(kGroup);
    for (const Field& field : kFields)
        std::visit([&](auto member) { AddRows(group.rows, field, settings_.*member); },
                   field.member);
    return groups;
}

EditAnswer OsdSettings::Edit(const SettingsEdit& edit) {
    const auto* field = std::ranges::find_if(kFields, [&](const Field& other) {
        return std::visit([&](auto member) { return HasRow(other, settings_.*member, edit.key); },
                          other.member);
    });
    if (field == std::end(kFields)) return {};
    std::optional<std::string> text = FittingRowText(*field->kind, edit.text, {});
    if (text)
        text = std::visit(
            [&](auto member) { return EditRow(*field, edit.key, *text, settings_.*member); },
            field->member);
    if (text) return {EditAnswer::Outcome::kAccepted, *text};
    const std::string refusal = Localized(field->refusal);
    if (refusal.empty()) return {};
    return {EditAnswer::Outcome::kRefused, refusal};
}

std::optional<LocalText> OsdSettings::RefusalToSend() const {
    const bool tooLong = std::ranges::any_of(settings_.lines, [](const std::string& line) {
        return LegacyLength(line) > kLongestOsdLine;
    });
    if (!tooLong) return std::nullopt;
    return kLineTooLong;
}

}  // namespace sontaro
