#include "settings/record_values.h"

#include <fmt/printf.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/encoding.h"
#include "base/json.h"
#include "base/row_text.h"
#include "link/socket.h"

namespace sontaro {

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

constexpr LocalText kBelow = {"数值小于 %s。", "The value is below %s."};
constexpr LocalText kTooLarge = {"数值超出范围，将原样保留。",
                                 "The value is out of range. It is kept as it is."};
constexpr LocalText kNoChoice = {"该数值不是任何选项，将原样保留。",
                                 "The value is none of the choices. It is kept as it is."};
constexpr LocalText kNoCommand = {"不是有效的十六进制命令，将原样保留。",
                                  "This is no valid command. It is kept as it is."};

template <class T>
constexpr bool kIsWhole = std::is_integral_v<T> && !std::is_same_v<T, bool>;

// Whether JSON holds a value of a type, and the value. The readers of numbers differ in their
// ranges.
bool Holds(const Json::Value& json, const bool&) { return json.isBool(); }
bool Holds(const Json::Value& json, const std::int32_t&) { return json.isInt(); }
bool Holds(const Json::Value& json, const std::uint32_t&) { return json.isUInt(); }
bool Holds(const Json::Value& json, const std::int64_t&) { return json.isInt64(); }
bool Holds(const Json::Value& json, const std::uint64_t&) { return json.isUInt64(); }
bool Holds(const Json::Value& json, const double&) {
    return json.isNumeric() && std::isfinite(json.asDouble());
}
bool Holds(const Json::Value& json, const std::string&) { return json.isString(); }

template <class T>
T Get(const Json::Value& json) {
    if constexpr (std::is_same_v<T, std::string>)
        return TextOf(json);
    else
        return json.as<T>();
}

RowKind KindOf(const Field& field, ValueRef value) {
    switch (field.shape.rule) {
        case FieldRule::kCommand: return RowKind::kHexCommand;
        case FieldRule::kNumber:
            return std::holds_alternative<double*>(value) ? RowKind::kDecimal
                                                          : RowKind::kWholeNumber;
        case FieldRule::kColour: return RowKind::kColour;
        case FieldRule::kYesNo: return RowKind::kYesNo;
        case FieldRule::kIndex:
        case FieldRule::kListedNumber: return RowKind::kChoice;
        case FieldRule::kHidden:
        case FieldRule::kText:
        case FieldRule::kAddress: break;
    }
    return RowKind::kText;
}

/// The place in the list of choices that a number stands for, or where the list ends.
template <class T>
std::size_t PlaceOf(const FieldShape& shape, T index) {
    const std::size_t last = std::max<std::size_t>(shape.choices.size(), 1) - 1;
    if (index < T{0}) return 0;
    return index > static_cast<T>(last) ? last : static_cast<std::size_t>(index);
}

/// Whether a number stands for a choice.
template <class T>
bool IsChoice(const FieldShape& shape, T index) {
    return index >= T{0} && static_cast<std::uint64_t>(index) < shape.choices.size();
}

std::string TextOfColour(std::uint64_t colour) {
    return colour >= kDefaultColour ? "" : ColourRowText(static_cast<std::uint32_t>(colour));
}

template <class T>
std::string TextOfValue(const FieldShape& shape, const T& value) {
    if constexpr (std::is_same_v<T, std::string>) {
        return value;
    } else if constexpr (std::is_same_v<T, bool>) {
        return value ? kRowYes : kRowNo;
    } else if constexpr (std::is_same_v<T, double>) {
        return fmt::format("{}", value);
    } else {
        if (shape.rule == FieldRule::kColour)
            return TextOfColour(static_cast<std::uint64_t>(value));
        const bool isNumber = shape.choices.empty() || (shape.takesAny && !IsChoice(shape, value));
        if (shape.rule == FieldRule::kIndex && !isNumber)
            return Localized(shape.choices[PlaceOf(shape, value)]);
        return std::to_string(value);
    }
}

bool IsWithin(const FieldShape& shape, double number) {
    return number >= shape.least && number <= shape.most;
}

std::string OutsideText(const FieldShape& shape) {
    const std::string least = fmt::format("{}", shape.least);
    if (std::isinf(shape.most)) return fmt::sprintf(Localized(kBelow), least);
    return OutsideRangeText(least, fmt::format("{}", shape.most));
}

/// What is to be said of a value that a document may hold but the user would be refused.
template <class T>
std::string CautionFor(const FieldShape& shape, const T& value) {
    if constexpr (std::is_same_v<T, std::string>) {
        const bool isWell = shape.rule != FieldRule::kCommand || IsHexCommand(value);
        return isWell ? "" : Localized(kNoCommand);
    } else {
        if constexpr (kIsWhole<T>)
            if (shape.rule == FieldRule::kIndex && shape.takesAny && !IsChoice(shape, value))
                return Localized(kNoChoice);
        const bool isWell =
            shape.rule != FieldRule::kNumber || IsWithin(shape, static_cast<double>(value));
        return isWell ? "" : OutsideText(shape);
    }
}

std::vector<std::string> ChoicesOf(const FieldShape& shape) {
    std::vector<std::string> choices;
    choices.reserve(shape.choices.size() + 1);
    for (const LocalText& choice : shape.choices) choices.push_back(Localized(choice));
    return choices;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsAddress(const std::string& text) { return text.empty() || ParseIpv4(text).has_value(); }

/// What a text stands for in a field of the type; none when it is not to be taken.
std::optional<std::string> Entered(const FieldShape& shape, const std::string& text,
                                   const std::string&) {
    if (shape.rule == FieldRule::kCommand) return NormalizedHexCommand(text, shape.letters);
    const bool isAddress = shape.rule == FieldRule::kAddress;
    const std::string taken = isAddress ? Trimmed(text) : text;
    if (isAddress && !IsAddress(taken)) return std::nullopt;
    const bool isTooLong = shape.tooLong.english == nullptr && LegacyLength(taken) > shape.longest;
    return isTooLong ? std::nullopt : std::optional(taken);
}

std::optional<bool> Entered(const FieldShape&, const std::string& text, const bool&) {
    if (!FittingRowText(RowKind::kYesNo, text, {})) return std::nullopt;
    return text == kRowYes;
}

std::optional<double> Entered(const FieldShape& shape, const std::string& text, const double&) {
    const auto digits = FittingRowText(RowKind::kDecimal, Trimmed(text), {});
    if (!digits || *digits == "." || std::ranges::count(*digits, '.') > 1) return std::nullopt;
    const double number = LeadingDouble(*digits);
    if (!shape.takesAny && !IsWithin(shape, number)) return std::nullopt;
    return number;
}

template <class T>
std::optional<T> EnteredColour(const std::string& text) {
    const auto colour = text.empty() ? kDefaultColour : ColourOfRowText(text);
    return colour ? std::optional(static_cast<T>(*colour)) : std::nullopt;
}

template <class T>
std::optional<T> EnteredIndex(const FieldShape& shape, const std::string& text) {
    const auto choices = ChoicesOf(shape);
    const auto choice = std::ranges::find(choices, text);
    if (choice != choices.end()) return static_cast<T>(choice - choices.begin());
    T number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    const bool isTaken = shape.takesAny && read.ec == std::errc() && read.ptr == end;
    return isTaken ? std::optional(number) : std::nullopt;
}

template <class T>
requires kIsWhole<T> std::optional<T> Entered(const FieldShape& shape, const std::string& text,
                                              const T&) {
    if (shape.rule == FieldRule::kColour) return EnteredColour<T>(text);
    if (shape.rule == FieldRule::kIndex) return EnteredIndex<T>(shape, text);
    const auto digits = FittingRowText(RowKind::kWholeNumber, Trimmed(text), {});
    if (!digits) return std::nullopt;
    T number = 0;
    const auto read = std::from_chars(digits->data(), digits->data() + digits->size(), number);
    const bool isTaken = shape.takesAny || IsWithin(shape, static_cast<double>(number));
    return read.ec == std::errc() && isTaken ? std::optional(number) : std::nullopt;
}

bool IsWholeNumber(const std::string& text) {
    std::string digits = Trimmed(text);
    if (digits.starts_with('-') || digits.starts_with('+')) digits.erase(0, 1);
    return FittingRowText(RowKind::kWholeNumber, digits, {}).has_value();
}

EditAnswer RefusalOf(const FieldShape& shape, const std::string& text) {
    const bool isNoNumber = shape.noNumber.english != nullptr && !IsWholeNumber(text);
    const LocalText& refusal = isNoNumber ? shape.noNumber : shape.refusal;
    if (!refusal.english) return {};
    return {EditAnswer::Outcome::kRefused, Localized(refusal)};
}

}  // namespace

void ResetValue(const Field& field, ValueRef value) {
    const auto reset = [&]<class T>(T* held) {
        if constexpr (std::is_same_v<T, std::string>)
            *held = field.initial.text;
        else
            *held = static_cast<T>(field.initial.number);
    };
    std::visit(reset, value);
}

bool ReadValue(const Field& field, const Json::Value& json, ValueRef value) {
    const auto read = [&]<class T>(T* held) {
        if (!Holds(json, *held)) return false;
        *held = Get<T>(json);
        if constexpr (kIsWhole<T>)
            if (field.substitute && *held == static_cast<T>(field.substitute->inJson))
                *held = static_cast<T>(field.substitute->number);
        return true;
    };
    return std::visit(read, value);
}

bool IsRaw(const Json::Value& json, ValueRef value) {
    const auto isWhole = []<class T>(T*) { return kIsWhole<T>; };
    return std::visit(isWhole, value) && json.isNumeric() &&
           std::trunc(json.asDouble()) == json.asDouble();
}

Json::Value ValueToJson(const Field& field, ValueRef value) {
    const auto write = [&]<class T>(const T* held) -> Json::Value {
        if constexpr (kIsWhole<T>)
            if (field.substitute && *held == static_cast<T>(field.substitute->number))
                return static_cast<T>(field.substitute->inJson);
        if constexpr (std::is_same_v<T, std::string>)
            if (field.shape.rule == FieldRule::kCommand)
                return HexCommandIn(field.shape.letters, *held);
        return *held;
    };
    return std::visit(write, value);
}

void ClampValue(const Field& field, ValueRef value, const Json::Value* raw) {
    const auto clamp = [&]<class T>(T* held) {
        if constexpr (kIsWhole<T>)
            *held = static_cast<T>(raw ? PlaceOf(field.shape, raw->asDouble())
                                       : PlaceOf(field.shape, *held));
    };
    std::visit(clamp, value);
}

SettingsRow RowOfValue(const Field& field, std::string key, int number, ValueRef value,
                       const Json::Value* raw) {
    SettingsRow row{std::move(key), KindOf(field, value),
                    fmt::sprintf(Localized(field.label), number), ""};
    row.help = field.help.english ? Localized(field.help) : row.name;
    row.choices = ChoicesOf(field.shape);
    row.takesHeld = field.shape.rule == FieldRule::kListedNumber;
    const auto show = [&](const auto* held) {
        row.value = TextOfValue(field.shape, *held);
        row.caution = CautionFor(field.shape, *held);
    };
    std::visit(show, value);
    if (raw) {
        row.value = row.kind == RowKind::kColour ? "" : raw->asString();
        row.caution = Localized(kTooLarge);
    }
    if (row.kind == RowKind::kChoice &&
        std::ranges::find(row.choices, row.value) == row.choices.end())
        row.choices.push_back(row.value);
    return row;
}

EditAnswer EnterValue(const Field& field, const std::string& text, ValueRef value) {
    const auto enter = [&](auto* held) {
        const auto entered = Entered(field.shape, text, *held);
        if (!entered) return RefusalOf(field.shape, text);
        *held = *entered;
        return EditAnswer{EditAnswer::Outcome::kAccepted, TextOfValue(field.shape, *held),
                          CautionFor(field.shape, *held)};
    };
    return std::visit(enter, value);
}

bool IsTooLong(const Field& field, ValueRef value) {
    const auto* text = std::get_if<std::string*>(&value);
    return text != nullptr && LegacyLength(**text) > field.shape.longest;
}

}  // namespace sontaro
