#include "base/json.h"

#include <json/reader.h>
#include <json/writer.h>

#include <memory>

#include "base/encoding.h"

namespace sontaro {

Result<Json::Value> ParseJson(std::string_view text) {
    Json::CharReaderBuilder builder;
    builder["collectComments"] = false;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value value;
    std::string reason;
    try {
        if (reader->parse(text.data(), text.data() + text.size(), &value, &reason)) return value;
    } catch (const Json::Exception& exception) {
        reason = exception.what();  // nesting too deep is thrown, not returned
    }
    return Error{reason};
}

std::string WriteJson(const Json::Value& value) {
    return Json::writeString(Json::StreamWriterBuilder(), value);
}

std::string WriteJsonLine(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    return Json::writeString(builder, value);
}

std::string TextOf(const Json::Value& value) {
    const char* begin = nullptr;
    const char* end = nullptr;
    if (!value.getString(&begin, &end)) return "";
    return DecodeUtf8({begin, static_cast<std::size_t>(end - begin)});
}

// NOLINTNEXTLINE(misc-no-recursion): values hold values, which the reader limits
Json::Value WithValidTexts(const Json::Value& value) {
    if (value.isString()) return TextOf(value);
    Json::Value valid = value.isObject() ? Json::Value(Json::objectValue) : value;
    if (value.isArray())
        for (Json::Value& element : valid) element = WithValidTexts(element);
    if (value.isObject())
        for (auto member = value.begin(); member != value.end(); ++member)
            valid[DecodeUtf8(member.name())] = WithValidTexts(*member);
    return valid;
}

}  // namespace sontaro
