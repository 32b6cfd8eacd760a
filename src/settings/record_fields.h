// Records whose fields are keys of a JSON object and rows of a grid: one table tells both.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <variant>

#include "base/local_text.h"
#include "base/settings_rows.h"

namespace sontaro {

/// How a field is edited.
enum class FieldRule {
    kHidden,        ///< not at all: there is no row
    kText,          ///< as any text
    kAddress,       ///< as a dotted IPv4 address, or nothing
    kCommand,       ///< as a hexadecimal command
    kNumber,        ///< as a number within the range
    kIndex,         ///< by one of the choices, whose place in the list is the number
    kListedNumber,  ///< by one of the choices, which are numbers; any other one is shown and kept
};

struct FieldShape {
    FieldRule rule{};
    std::span<const LocalText> choices = {};
    std::int32_t least = 0;  ///< of what the user may enter
    std::int32_t most = std::numeric_limits<std::int32_t>::max();
};

/// What a field of a new record holds.
struct InitialValue {
    constexpr InitialValue() = default;
    constexpr InitialValue(std::int32_t initial) : number(initial) {}
    constexpr InitialValue(const char* initial) : text(initial) {}

    std::int32_t number = 0;
    const char* text = "";
};

/// A number that has another one in its place in JSON.
struct Substitute {
    std::int32_t number;
    std::int32_t inJson;
};

/// What is to be said of a field, whatever its record is.
struct FieldFacts {
    const char* key = "";  ///< in JSON
    FieldShape shape = {};
    LocalText label = {"", ""};           ///< "%d" in it is the number of the part it belongs to
    LocalText help = {nullptr, nullptr};  ///< absent: the label
    InitialValue initial = {};
    std::optional<Substitute> substitute = {};
};

/// A field of `Record`: a number or a text (UTF-8).
template <class Record>
struct Field {
    FieldFacts facts;
    std::variant<std::int32_t Record::*, std::string Record::*> member;
};

/// Fields that stand together under a heading.
template <class Record>
struct FieldGroup {
    LocalText heading;  ///< "%d" in it is the record's own number, from 1
    std::span<const Field<Record>> fields;
};

template <class Record>
using FieldGroups = std::span<const FieldGroup<Record>>;

/// Calls `visit(facts, value)` for every field of `record`, in order.
template <class Record, class Visit>
void VisitFields(Record& record, std::span<const Field<std::remove_const_t<Record>>> fields,
                 const Visit& visit) {
    for (const auto& field : fields)
        std::visit([&](auto member) { visit(field.facts, record.*member); }, field.member);
}

// The overloads below take the two types of fields alike.

/// Gives `value` what a new record holds.
void ResetField(const FieldFacts& facts, std::int32_t& value);
void ResetField(const FieldFacts& facts, std::string& value);

/// Takes the value under the field's key; one that is missing or of another type changes nothing.
void ReadField(const FieldFacts& facts, const Json::Value& object, std::int32_t& value);
void ReadField(const FieldFacts& facts, const Json::Value& object, std::string& value);

/// Puts the value under the field's key. A text is not copied where it need not be: `object` goes
/// before the record does.
void WriteField(const FieldFacts& facts, std::int32_t value, Json::Value& object);
void WriteField(const FieldFacts& facts, const std::string& value, Json::Value& object);

/// Makes a number that stands for a choice stand for one that there is: beyond the list for the
/// last one, below it for the first.
void ClampField(const FieldFacts& facts, std::int32_t& value);
void ClampField(const FieldFacts& facts, std::string& value);

/// The row that shows `value`; its key is the caller's affair. The field is not
/// hidden. `number` goes into the label.
[[nodiscard]] SettingsRow RowOfField(const FieldFacts& facts, std::int32_t value, int number);
[[nodiscard]] SettingsRow RowOfField(const FieldFacts& facts, const std::string& value, int number);

/// Gives `value` what the user has entered, or refuses it with the message of all such fields.
[[nodiscard]] EditAnswer EditField(const FieldFacts& facts, const std::string& text,
                                   std::int32_t& value);
[[nodiscard]] EditAnswer EditField(const FieldFacts& facts, const std::string& text,
                                   std::string& value);

}  // namespace sontaro
