#include "settings/record_fields.h"

#include <fmt/printf.h>

#include <algorithm>
#include <charconv>

#include "base/json.h"
#include "base/row_text.h"
#include "link/socket.h"

namespace sontaro {

namespace {

constexpr LocalText kInputError = {"输入错误!", "input error!"};

EditAnswer Refusal() { return {EditAnswer::Outcome::kRefused, Localized(kInputError)}; }

RowKind KindOf(FieldRule rule) {
    switch (rule) {
        case FieldRule::kCommand: return RowKind::kHexCommand;
        case FieldRule::kNumber: return RowKind::kWholeNumber;
        case FieldRule::kIndex:
        case FieldRule::kListedNumber: return RowKind::kChoice;
        case FieldRule::kHidden:
        case FieldRule::kText:
        case FieldRule::kAddress: break;
    }
    return RowKind::kText;
}

std::vector<std::string> ChoicesOf(const FieldShape& shape) {
    std::vector<std::string> choices;
    choices.reserve(shape.choices.size());
    for (const LocalText& choice : shape.choices) choices.push_back(Localized(choice));
    return choices;
}

/// In the list, or where the list ends.
std::size_t PlaceOf(const FieldShape& shape, std::int32_t index) {
    const auto last = static_cast<std::int32_t>(shape.choices.size()) - 1;
    return static_cast<std::size_t>(std::clamp(index, 0, std::max(last, 0)));
}

std::string TextOfNumber(const FieldFacts& facts, std::int32_t value) {
    const FieldShape& shape = facts.shape;
    if (shape.rule != FieldRule::kIndex || shape.choices.empty()) return std::to_string(value);
    return Localized(shape.choices[PlaceOf(shape, value)]);
}

SettingsRow MakeRow(const FieldFacts& facts, std::string value, int number) {
    SettingsRow row{"", KindOf(facts.shape.rule), fmt::sprintf(Localized(facts.label), number),
                    std::move(value)};
    row.help = facts.help.chinese ? Localized(facts.help) : row.name;
    row.choices = ChoicesOf(facts.shape);
    row.refusal = Localized(kInputError);
    return row;
}

/// The number that a text of the field's kind stands for; none when it is out of range.
std::optional<std::int32_t> NumberOfText(const FieldFacts& facts, const std::string& text) {
    const FieldShape& shape = facts.shape;
    if (shape.rule == FieldRule::kIndex) {
        const auto choices = ChoicesOf(shape);
        return static_cast<std::int32_t>(std::ranges::find(choices, text) - choices.begin());
    }
    std::int32_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc() || number < shape.least || number > shape.most) return std::nullopt;
    return number;
}

}  // namespace

void ResetField(const FieldFacts& facts, std::int32_t& value) { value = facts.initial.number; }
void ResetField(const FieldFacts& facts, std::string& value) { value = facts.initial.text; }

void ReadField(const FieldFacts& facts, const Json::Value& object, std::int32_t& value) {
    const Json::Value& json = object[facts.key];
    if (!json.isInt()) return;
    value = json.asInt();
    if (facts.substitute && value == facts.substitute->inJson) value = facts.substitute->number;
}

void ReadField(const FieldFacts& facts, const Json::Value& object, std::string& value) {
    const Json::Value& json = object[facts.key];
    if (json.isString()) value = TextOf(json);
}

void WriteField(const FieldFacts& facts, std::int32_t value, Json::Value& object) {
    if (facts.substitute && value == facts.substitute->number) value = facts.substitute->inJson;
    object[Json::StaticString(facts.key)] = value;
}

void WriteField(const FieldFacts& facts, const std::string& value, Json::Value& object) {
    Json::Value& json = object[Json::StaticString(facts.key)];
    if (value.find('\0') == std::string::npos)
        json = Json::StaticString(value.c_str());
    else
        json = value;
}

void ClampField(const FieldFacts& facts, std::int32_t& value) {
    if (facts.shape.rule == FieldRule::kIndex)
        value = static_cast<std::int32_t>(PlaceOf(facts.shape, value));
}

void ClampField(const FieldFacts&, std::string&) {}

SettingsRow RowOfField(const FieldFacts& facts, std::int32_t value, int number) {
    return MakeRow(facts, TextOfNumber(facts, value), number);
}

SettingsRow RowOfField(const FieldFacts& facts, const std::string& value, int number) {
    return MakeRow(facts, value, number);
}

EditAnswer EditField(const FieldFacts& facts, const std::string& text, std::int32_t& value) {
    const auto fitting = FittingRowText(KindOf(facts.shape.rule), text, ChoicesOf(facts.shape));
    const auto number = fitting ? NumberOfText(facts, *fitting) : std::nullopt;
    if (!number) return Refusal();
    value = *number;
    return {EditAnswer::Outcome::kAccepted, TextOfNumber(facts, value)};
}

EditAnswer EditField(const FieldFacts& facts, const std::string& text, std::string& value) {
    const auto fitting = FittingRowText(KindOf(facts.shape.rule), text, {});
    const bool isAddress = facts.shape.rule == FieldRule::kAddress;
    if (!fitting || (isAddress && !fitting->empty() && !ParseIpv4(*fitting))) return Refusal();
    value = *fitting;
    return {EditAnswer::Outcome::kAccepted, value};
}

}  // namespace sontaro
