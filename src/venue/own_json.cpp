#include "venue/own_json.h"

#include <fmt/printf.h>

#include <algorithm>
#include <cstring>

#include "base/json.h"

namespace sontaro {

namespace {

constexpr const char* kFormat = "format";
constexpr const char* kVersion = "version";
constexpr int kThisVersion = 1;

constexpr LocalText kTooLong = {"文件过大（超过 %u 字节）。", "it is too long (above %u bytes)."};
constexpr LocalText kNewer = {"它来自更新的版本。", "it comes from a later version."};
constexpr LocalText kNoObject = {"此处应为 JSON 对象。", "a JSON object has to stand here."};
constexpr LocalText kMissing = {"缺少“%s”。", "\"%s\" is missing."};
constexpr LocalText kNoText = {"“%s”应为文本。", "\"%s\" has to be a text."};
constexpr LocalText kNoNumber = {"“%s”应为 0 到 %u 的整数。",
                                 "\"%s\" has to be a whole number from 0 to %u."};
constexpr LocalText kNoList = {"“%s”应为列表。", "\"%s\" has to be a list."};
constexpr LocalText kTooMany = {"“%s”的元素过多（最多 %u 个）。",
                                "\"%s\" has too many elements (%u at most)."};

/// Null when there is no such member, or no object.
const Json::Value& MemberOf(const Json::Value& object, const char* key) {
    const Json::Value* member =
        object.isObject() ? object.find(key, key + std::strlen(key)) : nullptr;
    return member ? *member : Json::Value::nullSingleton();
}

template <class... Values>
std::string Worded(const LocalText& text, const Values&... values) {
    return fmt::sprintf(Localized(text), values...);
}

}  // namespace

OwnJson::OwnJson(std::string_view text, std::size_t longest) : text_(text) {
    if (text.size() > longest) {
        trouble_ = {{}, Worded(kTooLong, longest)};
        return;
    }
    auto read = ReadJsonText(text);
    if (auto* trouble = std::get_if<TextTrouble>(&read))
        trouble_ = std::move(*trouble);
    else
        root_ = std::move(std::get<Json::Value>(read));
}

void OwnJson::ExpectFormat(std::initializer_list<const char*> formats, const LocalText& isOther) {
    const Json::Value& format = MemberOf(root_, kFormat);
    const Json::Value& version = MemberOf(root_, kVersion);
    if (std::ranges::none_of(formats, [&](const char* own) { return format == own; }))
        Refuse(format.isNull() ? root_ : format, Localized(isOther));
    else if (!version.isInt() || version.asInt() < kThisVersion)
        Refuse(version.isNull() ? root_ : version, Localized(isOther));
    else if (version.asInt() > kThisVersion)
        Refuse(version, Localized(kNewer));
}

const Json::Value& OwnJson::List(const Json::Value& object, const char* key, std::size_t most) {
    static const Json::Value empty(Json::arrayValue);
    const Json::Value& list = MemberOf(object, key);
    if (list.isArray() && list.size() <= most) return list;
    if (list.isNull())
        Refuse(object, Worded(object.isObject() ? kMissing : kNoObject, key));
    else
        Refuse(list, list.isArray() ? Worded(kTooMany, key, most) : Worded(kNoList, key));
    return empty;
}

std::string OwnJson::Text(const Json::Value& object, const char* key, Need need) {
    const Json::Value& text = MemberOf(object, key);
    if (text.isString()) return TextOf(text);
    const bool isAbsent = object.isObject() && text.isNull();
    if (!isAbsent)
        Refuse(object.isObject() ? text : object,
               Worded(object.isObject() ? kNoText : kNoObject, key));
    else if (need == Need::kRequired)
        Refuse(object, Worded(kMissing, key));
    return "";
}

std::uint64_t OwnJson::Number(const Json::Value& object, const char* key, std::uint64_t most) {
    const Json::Value& number = MemberOf(object, key);
    if (number.isUInt64() && number.asUInt64() <= most && number.isIntegral())
        return number.asUInt64();
    if (number.isNull())
        Refuse(object, Worded(object.isObject() ? kMissing : kNoObject, key));
    else
        Refuse(number, Worded(kNoNumber, key, most));
    return 0;
}

void OwnJson::Refuse(const Json::Value& value, std::string why) {
    if (!trouble_) trouble_ = {PlaceOf(value, text_), std::move(why)};
}

void OwnJson::Refuse(const TextTrouble& trouble) {
    if (!trouble_) trouble_ = trouble;
}

}  // namespace sontaro
