// What tables of records are written with.
#pragma once

#include "settings/record_schema.h"

namespace sontaro {

template <class Record, class Value>
Record RecordOfMember(Value Record::*);
template <class Record, class Value>
Value ValueOfMember(Value Record::*);
template <auto kMember>
using RecordOf = decltype(RecordOfMember(kMember));
template <auto kMember>
using ValueOf = decltype(ValueOfMember(kMember));

/// The type of the records in a value.
template <class Value>
struct PartOf {
    using Type = Value;
};
template <class Record, std::size_t kCount>
struct PartOf<std::array<Record, kCount>> {
    using Type = Record;
};
template <class Record>
struct PartOf<Elements<Record>> {
    using Type = Record;
};

template <auto kMember>
Slot SlotAt(void* record) {
    using Value = ValueOf<kMember>;
    Value& value = static_cast<RecordOf<kMember>*>(record)->*kMember;
    if constexpr (!std::is_same_v<typename PartOf<Value>::Type, Value>)
        return RecordList{&value, &kAccess<Value>};
    else if constexpr (std::is_constructible_v<ValueRef, Value*>)
        return ValueRef(&value);
    else if constexpr (std::is_same_v<Value, TextList> || std::is_same_v<Value, CustomEntries>)
        return &value;
    else
        return RecordPart{&value};
}

/// A member that is a value, a list of texts, or entries of custom settings: `kAt<&Record::name>`.
template <auto kMember>
inline constexpr Member<RecordOf<kMember>> kAt = {&SlotAt<kMember>};

/// The rows of a table: `constexpr auto kRows = Rows<Record>({{"Key", kAt<&Record::name>}, ...})`.
template <class Record, std::size_t kCount>
constexpr FieldRows<Record, kCount> Rows(const FieldOf<Record> (&rows)[kCount]) {
    FieldRows<Record, kCount> table;
    for (std::size_t i = 0; i < kCount; ++i) table.fields[i] = rows[i].row;
    return table;
}

template <class Record>
OtherKeys* OthersOf([[maybe_unused]] void* record) {
    if constexpr (requires(Record & kept) { kept.others; })
        return &static_cast<Record*>(record)->others;
    else
        return nullptr;
}

/// The table with these rows.
template <const auto& kRows>
inline constexpr RecordTable kTableOf = {
    kRows.fields, &OthersOf<typename std::remove_cvref_t<decltype(kRows)>::Record>};

/// A member that is a record, or a list of records, with a table of its own.
template <auto kMember, const auto& kRows>
requires std::is_same_v < typename PartOf<ValueOf<kMember>>::Type,
typename std::remove_cvref_t<decltype(kRows)>::Record >
    inline constexpr Member<RecordOf<kMember>> kRecordAt = {&SlotAt<kMember>, &kTableOf<kRows>};

/// The schema of documents whose table has these rows.
template <const auto& kRows>
inline constexpr RecordSchema<typename std::remove_cvref_t<decltype(kRows)>::Record> kSchemaOf(
    kTableOf<kRows>);

// The shapes of fields.

constexpr FieldShape Text(std::size_t longest = SIZE_MAX) {
    return {.rule = FieldRule::kText, .longest = longest};
}
constexpr FieldShape Command(LetterCase letters = LetterCase::kUpper) {
    return {.rule = FieldRule::kCommand, .letters = letters};
}
constexpr FieldShape Number(double least = 0,
                            double most = std::numeric_limits<double>::infinity()) {
    return {FieldRule::kNumber, {}, least, most};
}
/// A number that is taken, and marked, where it is not within.
constexpr FieldShape NumberAround(double least, double most) {
    return {FieldRule::kNumber, {}, least, most, true};
}
constexpr FieldShape IndexInto(std::span<const LocalText> choices) {
    return {FieldRule::kIndex, choices};
}
/// An index that may be another number: it is kept, shown as such, and marked.
constexpr FieldShape IndexOrNumber(std::span<const LocalText> choices) {
    return {.rule = FieldRule::kIndex, .choices = choices, .takesAny = true};
}
constexpr FieldShape OneOf(std::span<const LocalText> choices) {
    return {FieldRule::kListedNumber, choices};
}
/// A list of at most that many records; more are passed over.
constexpr FieldShape AtMost(std::size_t records) { return Text(records); }
/// A member of the whole document that is shown on that grid.
constexpr FieldShape OnGrid(std::size_t grid) { return {.grid = grid}; }
/// What is not taken is told with a message.
constexpr FieldShape Refusing(LocalText message, FieldShape shape) {
    shape.refusal = message;
    return shape;
}

}  // namespace sontaro
