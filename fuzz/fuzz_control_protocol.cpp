// A control protocol of anything, edited by anything, written and read again.
#include <algorithm>
#include <cstdlib>

#include "base/bytes.h"
#include "base/encoding.h"
#include "controlprotocol/control_protocol_rows.h"

namespace sontaro {
namespace {

constexpr std::size_t kMostEdits = 4;
constexpr std::size_t kRoundTripEvery = 8;

void Expect(bool holds) {
    if (!holds) std::abort();
}

// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
void CollectKeys(const SettingsRows& groups, std::vector<std::string>& keys) {
    for (const SettingsGroup& group : groups) {
        for (const SettingsRow& row : group.rows) keys.push_back(row.key);
        CollectKeys(group.groups, keys);
    }
}

/// Of every row, and of some that there are not.
std::vector<std::string> AllKeys() {
    ControlProtocolModel model;
    std::vector<std::string> keys = {"", "Serial", "Serial/Parity", "VideoType/64/TypeName"};
    for (const SettingsRows& grid : ControlProtocolRows(model)) CollectKeys(grid, keys);
    return keys;
}

/// The row shows what an accepted edit says; anything else leaves the model alone.
void Edit(ControlProtocolModel& model, const SettingsEdit& edit) {
    const ControlProtocolModel before = model;
    const EditAnswer answer = EditControlProtocol(model, edit);
    if (answer.outcome != EditAnswer::Outcome::kAccepted) return Expect(model == before);
    const auto row = ControlProtocolRow(model, edit.key);
    Expect(row && row->value == answer.text && row->caution == answer.caution);
}

/// Lines of three bytes that choose a row, and a text for it. A line without a text shows its row.
void EditRows(ControlProtocolModel& model, std::string_view lines) {
    static const std::vector<std::string> keys = AllKeys();
    for (std::size_t edits = 0; !lines.empty() && edits < kMostEdits; ++edits) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        const std::string_view line = lines.substr(0, end);
        lines.remove_prefix(std::min(end + 1, lines.size()));
        if (line.size() < 3) continue;
        std::size_t number = 0;
        for (std::size_t i = 0; i < 3; ++i)
            number = number << 8 | static_cast<unsigned char>(line[i]);
        const std::size_t place = number % keys.size();
        static_cast<void>(ControlProtocolRow(model, keys[place]));
        Edit(model, {keys[place], DecodeUtf8(line.substr(3))});
    }
}

/// A document up to the first zero byte, then edits. Writing all slots and reading them again takes
/// as long as eight edits: inputs of every eighth size do it, and blanks make any input one.
void Run(std::string_view input) {
    static const ControlProtocolModel initial;
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::string_view text = input.substr(0, end);
    ControlProtocolModel model = initial;
    if (!ReadControlProtocol(text, model)) Expect(model == initial);
    EditRows(model, input.substr(std::min(end + 1, input.size())));
    if (input.size() % kRoundTripEvery != 0) return;
    ControlProtocolModel again = initial;
    const std::string written = ControlProtocolText(model);
    Expect(ReadControlProtocol(written, again).ok());
    Expect(ControlProtocolText(again) == written);
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run(sontaro::AsText({data, size}));
    return 0;
}
