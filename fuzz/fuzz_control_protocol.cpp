// A control protocol of anything, shown, edited by anything, written and read again.
#include <algorithm>
#include <cstdlib>

#include "base/bytes.h"
#include "base/encoding.h"
#include "controlprotocol/control_protocol_rows.h"

namespace sontaro {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

/// The row that an edit is for; absent when there is none.
// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
const SettingsRow* Find(const SettingsRows& groups, const SettingsEdit& edit) {
    for (const SettingsGroup& group : groups) {
        for (const SettingsRow& row : group.rows)
            if (row.key == edit.key) return &row;
        if (const SettingsRow* row = Find(group.groups, edit)) return row;
    }
    return nullptr;
}

// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
void CollectKeys(const SettingsRows& groups, std::vector<std::string>& keys) {
    for (const SettingsGroup& group : groups) {
        for (const SettingsRow& row : group.rows) keys.push_back(row.key);
        CollectKeys(group.groups, keys);
    }
}

/// Of every row, and one that no row has.
std::vector<std::string> AllKeys() {
    ControlProtocolModel model;
    std::vector<std::string> keys = {"VideoType/64/TypeName"};
    for (const SettingsRows& grid : ControlProtocolRows(model)) CollectKeys(grid, keys);
    return keys;
}

/// Lines of three bytes that choose a row, and a text for it. The row shows what an accepted edit
/// says; anything else leaves the model alone.
void EditRows(ControlProtocolModel& model, std::string_view lines) {
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        const std::string_view line = lines.substr(0, end);
        lines.remove_prefix(std::min(end + 1, lines.size()));
        if (line.size() < 3) continue;
        static const std::vector<std::string> keys = AllKeys();
        const auto number = [&](std::size_t at) { return static_cast<unsigned char>(line[at]); };
        const std::size_t place = (number(0) << 16 | number(1) << 8 | number(2)) % keys.size();
        const SettingsEdit edit{keys[place], DecodeUtf8(line.substr(3))};
        const ControlProtocolModel before = model;
        const EditAnswer answer = EditControlProtocol(model, edit);
        const bool accepted = answer.outcome == EditAnswer::Outcome::kAccepted;
        Expect(accepted || model == before);
        if (!accepted) continue;
        bool shown = false;
        for (const SettingsRows& grid : ControlProtocolRows(model))
            if (const SettingsRow* row = Find(grid, edit)) shown = row->value == answer.text;
        Expect(shown);
    }
}

/// A document up to the first zero byte, then edits.
void Run(std::string_view input) {
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::string_view text = input.substr(0, end);
    ControlProtocolModel model;
    const bool isRead = ReadControlProtocol(text, model);
    Expect(isRead || model == ControlProtocolModel());
    Expect(isRead || !HoldsControlProtocol(text));
    static_cast<void>(ControlProtocolRows(model));
    EditRows(model, input.substr(std::min(end + 1, input.size())));
    ControlProtocolModel again;
    Expect(ReadControlProtocol(ControlProtocolText(model), again));
    Expect(again == model);
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run(sontaro::AsText({data, size}));
    return 0;
}
