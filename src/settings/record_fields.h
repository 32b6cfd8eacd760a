// Records that are told as tables: each row is a key of a JSON object, a member, and how it is
// shown and edited. What is done with such tables stands in settings/record_schema.h.
#pragma once

#include <limits>
#include <optional>
#include <span>

#include "base/hex_command.h"
#include "base/local_text.h"
#include "settings/record_members.h"

namespace sontaro {

/// How a field is edited.
enum class FieldRule {
    kHidden,        ///< not at all: there is no row
    kText,          ///< as any text
    kAddress,       ///< as a dotted IPv4 address, or nothing
    kCommand,       ///< as a hexadecimal command
    kNumber,        ///< as a number of digits, with a point where the member is a double
    kColour,        ///< as a colour, 0x00BBGGRR, or the player's default one
    kYesNo,         ///< by a tick
    kIndex,         ///< by one of the choices, whose place in the list is the number
    kListedNumber,  ///< by one of the choices, which are numbers; any other one is offered besides
};

/// The colour that leaves the choice to the player.
inline constexpr std::uint32_t kDefaultColour = 0xFFFFFFFF;

struct FieldShape {
    FieldRule rule = FieldRule::kHidden;
    std::span<const LocalText> choices = {};
    double least = 0;  ///< of a number; what a document holds beyond is kept, and marked
    double most = std::numeric_limits<double>::infinity();
    bool takesAny = false;           ///< what the user enters beyond is taken and marked as well;
                                     ///< an index beyond is shown as the number it is
    std::size_t longest = SIZE_MAX;  ///< bytes of a text in the legacy code page, or records
    LetterCase letters = LetterCase::kUpper;  ///< of a command, as it is entered and written
    LocalText refusal = {nullptr, nullptr};   ///< absent: refused with a hint alone
    LocalText noNumber = {nullptr, nullptr};  ///< there: of what is no whole number at all
    LocalText tooLong = {nullptr, nullptr};   ///< there: too long a text is taken, but not sent
    std::size_t grid = 0;                     ///< where a member of the whole document is shown
};

/// What a field of a new record holds.
struct InitialValue {
    constexpr InitialValue() = default;
    constexpr InitialValue(std::int64_t initial) : number(initial) {}
    constexpr InitialValue(const char* initial) : text(initial) {}

    std::int64_t number = 0;
    const char* text = "";
};

/// A number that has another one in its place in JSON.
struct Substitute {
    std::int64_t number = 0;
    std::int64_t inJson = 0;
};

struct RecordTable;

/// A row of a table.
struct Field {
    std::string_view
        key;  ///< in JSON, a literal; empty: the row is a heading for those that follow
    Slot (*slot)(void* record) = nullptr;
    const RecordTable* parts = nullptr;  ///< of the records in it; absent: it is a value
    FieldShape shape = {};
    LocalText label = {"", ""};           ///< "%d" in it: the record's number in its list, from 1
    LocalText help = {nullptr, nullptr};  ///< absent: the label
    InitialValue initial = {};
    std::optional<Substitute> substitute = {};
};

struct RecordTable {
    std::span<const Field> fields;
    OtherKeys* (*others)(void* record) = nullptr;  ///< absent: what nobody knows is dropped
};

/// A member of `Record`; see `kAt` and `kRecordAt`.
template <class Record>
struct Member {
    Slot (*slot)(void* record) = nullptr;
    const RecordTable* parts = nullptr;
};

struct Heading {
    const char *chinese, *english;
};

/// A row of a table of `Record`; its columns are explained at `Field`.
template <class Record>
struct FieldOf {
    Field row;

    constexpr FieldOf(const char* key, Member<Record> member, FieldShape shape = {},
                      LocalText label = {"", ""}, LocalText help = {nullptr, nullptr},
                      InitialValue initial = {}, std::optional<Substitute> substitute = {})
        : row{key, member.slot, member.parts, shape, label, help, initial, substitute} {}
    constexpr FieldOf(Heading heading) : row{} { row.label = {heading.chinese, heading.english}; }
};

template <class RecordType, std::size_t kCount>
struct FieldRows {
    using Record = RecordType;
    std::array<Field, kCount> fields;
};

}  // namespace sontaro
