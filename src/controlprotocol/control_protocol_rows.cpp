#include "controlprotocol/control_protocol_rows.h"

#include <fmt/printf.h>

#include <charconv>

#include "controlprotocol/control_protocol_table.h"

namespace sontaro {

namespace {

/// Where a value stands within its record.
struct Place {
    std::size_t group;
    std::string path;  ///< of the record or part that holds it
    int part;          ///< number of the part it belongs to, from 1; 0: to the record itself
};

constexpr std::string_view kVideoTypes = "VideoType/";

/// Calls `visit(place, facts, value)` for every value of the record at `path`, those of its parts
/// included, which stand in its last group.
template <class Record, class Visit>
void VisitValues(const std::string& path, Record& record, const Visit& visit) {
    Place place{0, path, 0};
    const auto visitField = [&](const FieldFacts& facts, auto& value) {
        visit(place, facts, value);
    };
    const auto groups = GroupsOf(record);
    for (place.group = 0; place.group < groups.size(); ++place.group)
        VisitFields(record, groups[place.group].fields, visitField);
    --place.group;
    VisitParts(record, [&](const char* key, auto& parts) {
        for (auto& part : parts) {
            place.path = path + '/' + key + '/' + std::to_string(place.part++);
            for (const auto& group : GroupsOf(part)) VisitFields(part, group.fields, visitField);
        }
    });
}

std::string KeyOf(const Place& place, const FieldFacts& facts) {
    return place.path + '/' + facts.key;
}

/// Appends the groups of the record at `path`, whose number is `number`.
template <class Record>
void AppendGroups(const std::string& path, int number, Record& record, SettingsRows& rows) {
    const std::size_t first = rows.size();
    for (const auto& group : GroupsOf(record)) {
        const std::size_t place = rows.size() - first;
        rows.push_back({place == 0 ? path : path + '#' + std::to_string(place),
                        fmt::sprintf(Localized(group.heading), number),
                        {}});
    }
    VisitValues(path, record, [&](const Place& place, const FieldFacts& facts, auto& value) {
        if (facts.shape.rule == FieldRule::kHidden) return;
        ClampField(facts, value);
        SettingsRow row = RowOfField(facts, value, place.part);
        row.key = KeyOf(place, facts);
        rows[first + place.group].rows.push_back(std::move(row));
    });
}

template <class Record, std::size_t kCount>
void AppendGroups(const std::string& path, int, std::array<Record, kCount>& records,
                  SettingsRows& rows) {
    for (int number = 0; Record & record : records) {
        const std::string own = path + '/' + std::to_string(number);
        AppendGroups(own, ++number, record, rows);
    }
}

template <class Record>
EditAnswer EditSection(const std::string& path, Record& record, const SettingsEdit& edit) {
    EditAnswer answer;
    if (!edit.key.starts_with(path + '/')) return answer;
    VisitValues(path, record, [&](const Place& place, const FieldFacts& facts, auto& value) {
        if (edit.key == KeyOf(place, facts) && facts.shape.rule != FieldRule::kHidden)
            answer = EditField(facts, edit.text, value);
    });
    return answer;
}

template <class Record, std::size_t kCount>
EditAnswer EditSection(const std::string& path, std::array<Record, kCount>& records,
                       const SettingsEdit& edit) {
    EditAnswer answer;
    for (int number = 0; Record & record : records) {
        answer = EditSection(path + '/' + std::to_string(number++), record, edit);
        if (answer.outcome != EditAnswer::Outcome::kIgnored) break;
    }
    return answer;
}

}  // namespace

ControlProtocolGrids ControlProtocolRows(ControlProtocolModel& model) {
    ControlProtocolGrids grids;
    VisitSections(model, [&](const auto& section, auto& value) {
        SettingsRows groups;
        AppendGroups(section.key, 0, value, groups);
        SettingsRows& grid = grids[section.grid];
        const std::string heading = Localized(section.heading);
        if (heading.empty())
            grid = std::move(groups);
        else
            grid.push_back({section.key, heading, {}, std::move(groups)});
    });
    return grids;
}

EditAnswer EditControlProtocol(ControlProtocolModel& model, const SettingsEdit& edit) {
    EditAnswer answer;
    VisitSections(model, [&](const auto& section, auto& value) {
        if (answer.outcome == EditAnswer::Outcome::kIgnored)
            answer = EditSection(section.key, value, edit);
    });
    return answer;
}

std::optional<int> VideoCategoryIn(const SettingsGroup& group) {
    int category = 0;
    if (!group.key.starts_with(kVideoTypes)) return std::nullopt;
    const char* const end = group.key.data() + group.key.size();
    std::from_chars(group.key.data() + kVideoTypes.size(), end, category);
    return category;
}

SettingsEdit SwitchCommandEdit(int category, const std::string& command) {
    return {std::string(kVideoTypes) + std::to_string(category) + "/SendCmd", command};
}

}  // namespace sontaro
