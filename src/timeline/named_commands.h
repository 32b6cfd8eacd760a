// The commands that a control protocol has names for.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "timeline/time_node.h"

namespace sontaro {

/// Where a command goes over the network.
struct CommandPeer {
    std::int32_t port = kPortUdp;  ///< TCP or UDP
    std::string ip;
    std::int32_t peerPort = 0;

    bool operator==(const CommandPeer&) const = default;
};

/// A command of a control protocol. Texts are UTF-8.
struct NamedCommand {
    std::string group;  ///< what it belongs to: a category with its name, a projector
    std::string name;
    std::string command;                   ///< hexadecimal, in capitals
    std::optional<CommandPeer> peer = {};  ///< of a projector that has an address and a port

    bool operator==(const NamedCommand&) const = default;
};

/// The commands of a control protocol in the order of its rows, named as its editor captions them.
/// Those that are empty or invalid, and replies, are left out. Fails when the text is no JSON
/// object, or has nothing of a control protocol.
[[nodiscard]] Result<std::vector<NamedCommand>> ReadNamedCommands(std::string_view text);

}  // namespace sontaro
