// How records are shown and edited.
#include <fmt/printf.h>

#include <algorithm>
#include <charconv>

#include "settings/record_schema.h"
#include "settings/record_values.h"
#include "settings/record_walk.h"

namespace sontaro::records {

// NOLINTBEGIN(misc-no-recursion): records hold records

namespace {

/// A record's path, which keys begin with, and its number in its list, from 1.
struct Place {
    std::string path;
    int number = 0;
    bool isOutermost = false;  ///< of those that are shown

    [[nodiscard]] std::string KeyOf(std::string_view key) const {
        std::string own = path.empty() ? "" : path + '/';
        return own.append(key);
    }
    [[nodiscard]] Place At(std::size_t place, std::uint32_t id) const {
        return {path + '/' + std::to_string(id), NumberOf(place)};
    }
};

std::string TextOf(const LocalText& text, int number) {
    return fmt::sprintf(Localized(text), number);
}

/// Rows go to the last group.
std::vector<SettingsRow>& RowsOf(SettingsRows& groups) {
    if (groups.empty()) groups.emplace_back();
    return groups.back().rows;
}

void ShowRecord(const RecordTable& table, const void* record, const Place& place,
                SettingsRows& groups);

/// The groups of the records in a member.
void ShowParts(const Field& field, const Slot& slot, const Place& place, SettingsRows& groups) {
    if (const auto* part = std::get_if<RecordPart>(&slot))
        return ShowRecord(*field.parts, part->record, place, groups);
    VisitList(std::get<RecordList>(slot),
              [&](const void* record, std::size_t at, std::uint32_t id) {
                  ShowRecord(*field.parts, record, place.At(at, id), groups);
              });
}

void ShowField(const RecordTable& table, const Field& field, const void* record, const Place& place,
               SettingsRows& groups) {
    const std::string key = place.KeyOf(field.key);
    const Slot slot = SlotOf(field, record);
    if (field.parts) {
        const std::string heading = TextOf(field.label, place.number);
        if (heading.empty()) return ShowParts(field, slot, {key, place.number}, groups);
        SettingsGroup group{key, heading, {}};
        ShowParts(field, slot, {key, place.number}, group.groups);
        SettingsRows& outer = place.isOutermost || groups.empty() ? groups : groups.back().groups;
        outer.push_back(std::move(group));
    } else if (const auto* entries = std::get_if<CustomEntries*>(&slot)) {
        (*entries)->AddRows(key, RowsOf(groups));
    } else if (field.shape.rule == FieldRule::kHidden) {
        return;
    } else if (const auto* texts = std::get_if<TextList*>(&slot)) {
        for (std::size_t i = 0; i < (*texts)->size(); ++i)
            RowsOf(groups).push_back(RowOfValue(field, key + '/' + std::to_string(i), NumberOf(i),
                                                &(**texts)[i], nullptr));
    } else {
        RowsOf(groups).push_back(RowOfValue(field, key, place.number, std::get<ValueRef>(slot),
                                            RawOf(table, field, record)));
    }
}

/// Shows the fields in order, each in the groups that `groupsOf` gives it.
template <class GroupsOf>
void ShowFields(const RecordTable& table, const void* record, const Place& place,
                const GroupsOf& groupsOf) {
    for (int headings = 0; const Field& field : table.fields) {
        SettingsRows& groups = groupsOf(field);
        if (!field.key.empty()) {
            ShowField(table, field, record, place, groups);
            continue;
        }
        const std::string suffix = headings > 0 ? '#' + std::to_string(headings) : "";
        groups.push_back({place.path + suffix, TextOf(field.label, place.number), {}});
        ++headings;
    }
}

void ShowRecord(const RecordTable& table, const void* record, const Place& place,
                SettingsRows& groups) {
    ShowFields(table, record, place, [&](const Field&) -> SettingsRows& { return groups; });
}

/// What an edit of a row changes.
struct Target {
    const RecordTable* table;
    const Field* field;
    void* record;
    std::variant<ValueRef, CustomEntries*> value;
    std::string path;  ///< of the field
    int number;        ///< that goes into the label
};

/// Takes what stands before the next slash off `path`.
std::string_view TakePart(std::string_view& path) {
    const std::size_t end = std::min(path.find('/'), path.size());
    const std::string_view part = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    return part;
}

/// Where the record with that number stands.
std::optional<std::size_t> PlaceWithId(const RecordList& list, std::string_view text) {
    std::uint32_t id = 0;
    std::from_chars(text.data(), text.data() + text.size(), id);
    if (text != std::to_string(id)) return std::nullopt;
    std::optional<std::size_t> found;
    VisitList(list, [&](const void*, std::size_t place, std::uint32_t own) {
        if (own == id) found = place;
    });
    return found;
}

std::optional<Target> Find(const RecordTable& table, void* record, std::string_view key,
                           std::string_view rest, int number);

std::optional<Target> FindIn(const Field& field, const RecordList& list, std::string_view key,
                             std::string_view rest) {
    const std::optional<std::size_t> place = PlaceWithId(list, TakePart(rest));
    if (!place) return std::nullopt;
    return Find(*field.parts, list.access->at(list.list, *place), key, rest, NumberOf(*place));
}

/// The value that the row `key` shows; `rest` is what of the key leads on from the record.
std::optional<Target> Find(const RecordTable& table, void* record, std::string_view key,
                           std::string_view rest, int number) {
    using Found = std::optional<Target>;
    const std::string_view name = TakePart(rest);
    const auto field = std::ranges::find_if(
        table.fields, [name](const Field& other) { return !name.empty() && name == other.key; });
    if (field == table.fields.end()) return std::nullopt;
    const std::string path(key.substr(0, key.size() - rest.size() - (rest.empty() ? 0 : 1)));
    const bool isShown = field->shape.rule != FieldRule::kHidden;
    const Overloaded find = {
        [&](ValueRef value) -> Found {
            if (!isShown || path != key) return std::nullopt;
            return Target{&table, &*field, record, value, path, number};
        },
        [&](TextList* texts) -> Found {
            for (std::size_t i = 0; isShown && i < texts->size(); ++i)
                if (rest == std::to_string(i))
                    return Target{&table, &*field, record, &(*texts)[i], path, NumberOf(i)};
            return std::nullopt;
        },
        [&](CustomEntries* entries) -> Found {
            return Target{&table, &*field, record, entries, path, number};
        },
        [&](RecordPart part) { return Find(*field->parts, part.record, key, rest, number); },
        [&](const RecordList& list) { return FindIn(*field, list, key, rest); }};
    return std::visit(find, field->slot(record));
}

std::optional<SettingsRow> RowOfEntries(const CustomEntries& entries, const std::string& path,
                                        std::string_view key) {
    std::vector<SettingsRow> rows;
    entries.AddRows(path, rows);
    const auto row = std::ranges::find(rows, key, &SettingsRow::key);
    return row == rows.end() ? std::nullopt : std::optional(*row);
}

}  // namespace

void Show(const RecordTable& table, const void* record, std::span<SettingsRows> grids,
          const std::string& path) {
    ShowFields(table, record, {path, 0, true},
               [&](const Field& field) -> SettingsRows& { return grids[field.shape.grid]; });
}

std::optional<SettingsRow> RowAt(const RecordTable& table, const void* record,
                                 std::string_view key) {
    const auto found = Find(table, Findable(record), key, key, 0);
    if (!found) return std::nullopt;
    if (const auto* entries = std::get_if<CustomEntries*>(&found->value))
        return RowOfEntries(**entries, found->path, key);
    return RowOfValue(*found->field, std::string(key), found->number,
                      std::get<ValueRef>(found->value),
                      RawOf(*found->table, *found->field, found->record));
}

EditAnswer Edit(const RecordTable& table, const SettingsEdit& edit, void* record) {
    const auto found = Find(table, record, edit.key, edit.key, 0);
    if (!found) return {};
    if (const auto* entries = std::get_if<CustomEntries*>(&found->value))
        return (*entries)->Edit(found->path, edit.key, edit.text);
    EditAnswer answer = EnterValue(*found->field, edit.text, std::get<ValueRef>(found->value));
    OtherKeys* others = OthersOf(*found->table, found->record);
    if (others && answer.outcome == EditAnswer::Outcome::kAccepted) others->Drop(found->field->key);
    return answer;
}

std::optional<LocalText> RefusalToSend(const RecordTable& table, const void* record) {
    std::optional<LocalText> refusal;
    for (const Field& field : table.fields) {
        if (field.key.empty() || refusal) continue;
        const auto check = [&](ValueRef value) {
            if (field.shape.tooLong.english && IsTooLong(field, value))
                refusal = field.shape.tooLong;
        };
        const auto checkPart = [&](const void* part, std::size_t, std::uint32_t) {
            if (!refusal) refusal = RefusalToSend(*field.parts, part);
        };
        const Overloaded visit = {[&](ValueRef value) { check(value); },
                                  [&](TextList* texts) {
                                      for (std::string& text : *texts) check(&text);
                                  },
                                  [](CustomEntries*) {},
                                  [&](RecordPart part) { checkPart(part.record, 0, 0); },
                                  [&](const RecordList& list) { VisitList(list, checkPart); }};
        std::visit(visit, SlotOf(field, record));
    }
    return refusal;
}

// NOLINTEND(misc-no-recursion)

}  // namespace sontaro::records
