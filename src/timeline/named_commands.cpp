#include "timeline/named_commands.h"

#include <algorithm>
#include <charconv>

#include "base/hex_command.h"
#include "controlprotocol/control_protocol_rows.h"
#include "timeline/node_checks.h"

namespace sontaro {

namespace {

constexpr std::string_view kProjectors = "Projector/";
constexpr std::string_view kNameKey = "Name";  // ends the keys of all names
constexpr std::string_view kReplyKey = "/RecvCmd";
constexpr std::int32_t kTcpTransport = 1;  // of a projector

/// The projector that a group shows; absent for other groups.
const Projector* ProjectorOf(const SettingsGroup& group, const ControlProtocolModel& model) {
    std::size_t place = 0;
    if (!group.key.starts_with(kProjectors)) return nullptr;
    const char* const end = group.key.data() + group.key.size();
    std::from_chars(group.key.data() + kProjectors.size(), end, place);
    return place < model.projectors.size() ? &model.projectors[place] : nullptr;
}

std::optional<CommandPeer> PeerOf(const Projector* projector) {
    if (projector == nullptr || !IsCompleteAddress(projector->ip)) return std::nullopt;
    if (projector->port <= 0 || projector->port > kLastPeerPort) return std::nullopt;
    const bool isTcp = projector->transport == kTcpTransport;
    return CommandPeer{isTcp ? kPortTcp : kPortUdp, projector->ip, projector->port};
}

/// The caption of a group, with the name that the user has given to what it shows.
std::string NameOf(const SettingsGroup& group) {
    const auto isName = [](const SettingsRow& row) {
        return row.kind == RowKind::kText && row.key.ends_with(kNameKey);
    };
    const auto named = std::ranges::find_if(group.rows, isName);
    if (named == group.rows.end() || named->value.empty()) return group.name;
    return group.name + ' ' + named->value;
}

// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
void AddCommands(const SettingsRows& groups, const ControlProtocolModel& model,
                 std::vector<NamedCommand>& commands) {
    for (const SettingsGroup& group : groups) {
        const std::optional<CommandPeer> peer = PeerOf(ProjectorOf(group, model));
        for (const SettingsRow& row : group.rows) {
            const auto command = NormalizedHexCommand(row.value);
            if (row.kind != RowKind::kHexCommand || row.key.ends_with(kReplyKey)) continue;
            if (command && !command->empty())
                commands.push_back({NameOf(group), row.name, *command, peer});
        }
        AddCommands(group.groups, model, commands);
    }
}

}  // namespace

Result<std::vector<NamedCommand>> ReadNamedCommands(std::string_view text) {
    ControlProtocolModel model;
    const Result<int> sections = ReadControlProtocol(text, model);
    if (!sections) return Error{sections.reason()};
    if (*sections == 0) return Error{"the text has nothing of a control protocol"};
    std::vector<NamedCommand> commands;
    for (const SettingsRows& grid : ControlProtocolRows(model)) AddCommands(grid, model, commands);
    return commands;
}

}  // namespace sontaro
