#include "venue/json_text.h"

#include <fmt/printf.h>
#include <json/reader.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>

#include "base/encoding.h"
#include "base/local_text.h"

namespace sontaro {

namespace {

constexpr LocalText kAtPlace = {"第 %u 行第 %u 列：%s", "line %u, column %u: %s"};
constexpr LocalText kNoJson = {"不是有效的 JSON 文本（%s）。", "not a valid JSON text (%s)."};
constexpr LocalText kTooDeep = {"JSON 嵌套过深。", "the JSON is nested too deeply."};

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view WithoutMark(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    return text;
}

/// Where the line behind the one of `begin` begins; none when that is the last one. A carriage
/// return alone ends a line as well.
std::optional<std::size_t> NextLine(std::string_view text, std::size_t begin) {
    const std::size_t end = text.find_first_of("\r\n", begin);
    if (end == std::string_view::npos) return std::nullopt;
    return end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
}

/// The number behind `word` in what the parser says of an error; 0 when it says none.
std::size_t NumberBehind(std::string_view message, std::string_view word) {
    std::size_t number = 0;
    const std::size_t at = message.find(word);
    if (at == std::string_view::npos) return 0;
    const char* const begin = message.data() + at + word.size();
    std::from_chars(begin, message.data() + message.size(), number);
    return number;
}

/// The first of the parser's errors: "* Line 3, Column 7\n  What is wrong.\n...".
TextTrouble TroubleOf(const std::string& message, std::string_view text) {
    const std::size_t first = std::min(message.find('\n'), message.size());
    const std::string_view heading = std::string_view(message).substr(0, first);
    std::string_view why = std::string_view(message).substr(std::min(first + 1, message.size()));
    why = why.substr(0, why.find('\n'));
    why.remove_prefix(std::min(why.find_first_not_of(' '), why.size()));
    std::size_t begin = text.size() - WithoutMark(text).size();
    const std::size_t line = NumberBehind(heading, "Line ");
    for (std::size_t i = 1; i < line; ++i) begin = NextLine(text, begin).value_or(text.size());
    const std::size_t column = std::max<std::size_t>(NumberBehind(heading, "Column "), 1);
    while (why.ends_with('.')) why.remove_suffix(1);
    return {line == 0 ? TextPlace() : PlaceFinder(text).At(begin + column - 1),
            fmt::sprintf(Localized(kNoJson), DecodeUtf8(why))};
}

}  // namespace

std::string TextTrouble::Told() const {
    if (place.line == 0) return why;
    return fmt::sprintf(Localized(kAtPlace), place.line, place.column, why);
}

PlaceFinder::PlaceFinder(std::string_view text)
    : text_(text), reached_(text.size() - WithoutMark(text).size()), place_{1, 1} {}

TextPlace PlaceFinder::At(std::size_t offset) {
    offset = std::min(offset, text_.size());
    if (offset < reached_) *this = PlaceFinder(text_);
    for (; reached_ < offset; ++reached_) {
        const char byte = text_[reached_];
        const bool isHalfEnd = byte == '\r' && text_.substr(reached_ + 1, 1) == "\n";
        if ((byte == '\n' || byte == '\r') && !isHalfEnd)
            place_ = {place_.line + 1, 1};
        else if ((byte & 0xC0) != 0x80)  // of a character its first byte
            ++place_.column;
    }
    return place_;
}

Placed<Json::Value> ReadJsonText(std::string_view text) {
    const std::string_view whole = text;
    text = WithoutMark(text);
    Json::CharReaderBuilder builder;
    builder["collectComments"] = false;
    builder["failIfExtra"] = true;
    builder["rejectDupKeys"] = true;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value value;
    std::string message;
    try {
        if (reader->parse(text.data(), text.data() + text.size(), &value, &message)) return value;
    } catch (const Json::Exception&) {
        return TextTrouble{{}, Localized(kTooDeep)};
    }
    return TroubleOf(message, whole);
}

std::size_t OffsetOf(const Json::Value& value, std::string_view text) {
    return text.size() - WithoutMark(text).size() +
           static_cast<std::size_t>(value.getOffsetStart());
}

TextPlace PlaceOf(const Json::Value& value, std::string_view text) {
    return PlaceFinder(text).At(OffsetOf(value, text));
}

}  // namespace sontaro
