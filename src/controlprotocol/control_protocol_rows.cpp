#include "controlprotocol/control_protocol_rows.h"

#include <charconv>

#include "controlprotocol/control_protocol_table.h"

namespace sontaro {

namespace {

constexpr std::string_view kVideoTypes = "VideoType/";

}  // namespace

ControlProtocolGrids ControlProtocolRows(ControlProtocolModel& model) {
    ControlProtocolGrids grids;
    ControlProtocolSchema().Clamp(model);
    ControlProtocolSchema().Show(model, grids);
    return grids;
}

std::optional<SettingsRow> ControlProtocolRow(const ControlProtocolModel& model,
                                              std::string_view key) {
    return ControlProtocolSchema().RowAt(model, key);
}

EditAnswer EditControlProtocol(ControlProtocolModel& model, const SettingsEdit& edit) {
    return ControlProtocolSchema().Edit(edit, model);
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
