#include "controlprotocol/control_protocol_rows.h"

#include <fmt/printf.h>

#include "controlprotocol/control_protocol_table.h"

namespace sontaro {

namespace {

/// Where a value stands within its record.
struct Place {
    std::size_t group;
    int position;  ///< among all values of the record
    int part;      ///< number of the part it belongs to, from 1; 0: to the record itself
};

/// Calls `visit(place, facts, value)` for every value of the record, those of its parts included,
/// which stand in its last group.
template <class Record, class Visit>
void VisitValues(Record& record, const Visit& visit) {
    Place place{0, 0, 0};
    const auto visitField = [&](const FieldFacts& facts, auto& value) {
        visit(place, facts, value);
        ++place.position;
    };
    const auto groups = GroupsOf(record);
    for (place.group = 0; place.group < groups.size(); ++place.group)
        VisitFields(record, groups[place.group].fields, visitField);
    --place.group;
    VisitParts(record, [&](const char*, auto& parts) {
        for (auto& part : parts) {
            ++place.part;
            for (const auto& group : GroupsOf(part)) VisitFields(part, group.fields, visitField);
        }
    });
}

/// Appends the groups of one record, the `number`th of its section.
template <class Record>
void AppendGroups(int section, int number, Record& record, SettingsRows& rows) {
    const std::size_t first = rows.size();
    for (const auto& group : GroupsOf(record))
        rows.push_back({fmt::sprintf(Localized(group.heading), number + 1), number, {}});
    VisitValues(record, [&](const Place& place, const FieldFacts& facts, auto& value) {
        if (facts.shape.rule == FieldRule::kHidden) return;
        ClampField(facts, value);
        SettingsRow row = RowOfField(facts, value, place.part);
        row.item = section;
        row.position = place.position;
        rows[first + place.group].rows.push_back(std::move(row));
    });
}

template <class Record, std::size_t kCount>
void AppendGroups(int section, int, std::array<Record, kCount>& records, SettingsRows& rows) {
    for (int number = 0; Record & record : records) AppendGroups(section, number++, record, rows);
}

template <class Record>
EditAnswer EditRecord(Record& record, const SettingsEdit& edit) {
    EditAnswer answer;
    VisitValues(record, [&](const Place& place, const FieldFacts& facts, auto& value) {
        if (place.position == edit.position && facts.shape.rule != FieldRule::kHidden)
            answer = EditField(facts, edit.text, value);
    });
    return answer;
}

template <class Record>
EditAnswer EditSection(Record& record, const SettingsEdit& edit) {
    return edit.group == 0 ? EditRecord(record, edit) : EditAnswer{};
}

template <class Record, std::size_t kCount>
EditAnswer EditSection(std::array<Record, kCount>& records, const SettingsEdit& edit) {
    if (edit.group < 0 || static_cast<std::size_t>(edit.group) >= kCount) return {};
    return EditRecord(records[static_cast<std::size_t>(edit.group)], edit);
}

}  // namespace

ControlProtocolGrids ControlProtocolRows(ControlProtocolModel& model) {
    ControlProtocolGrids grids;
    VisitSections(model, [&](int number, const auto& section, auto& value) {
        SettingsRows groups;
        AppendGroups(number, 0, value, groups);
        SettingsRows& grid = grids[section.grid];
        const std::string heading = Localized(section.heading);
        if (heading.empty())
            grid = std::move(groups);
        else
            grid.push_back({heading, number, {}, std::move(groups)});
    });
    return grids;
}

EditAnswer EditControlProtocol(ControlProtocolModel& model, const SettingsEdit& edit) {
    EditAnswer answer;
    VisitSections(model, [&](int number, const auto&, auto& value) {
        if (number == edit.item) answer = EditSection(value, edit);
    });
    return answer;
}

std::optional<int> VideoCategoryIn(const SettingsGroup& group) {
    if (group.rows.empty() || group.rows.front().item != kVideoTypeSection) return std::nullopt;
    return group.index;
}

SettingsEdit SwitchCommandEdit(int category, const std::string& command) {
    SettingsEdit edit{category, kVideoTypeSection, 0, "", "", command};
    VideoCategory sample;
    VisitValues(sample, [&](const Place& place, const FieldFacts&, auto& value) {
        if (static_cast<void*>(&value) == &sample.sendCommand) edit.position = place.position;
    });
    return edit;
}

}  // namespace sontaro
