// A node as it is entered in its editor, and what has to be right about it.
#pragma once

#include <optional>
#include <string>

#include "base/local_text.h"
#include "timeline/time_node.h"
#include "timeline/time_text.h"

namespace sontaro {

/// What the editor of a node holds. Texts are UTF-8.
struct NodeEntry {
    std::int64_t player = 0;
    std::string typeName;
    std::string videoName;
    ClockTime time;         ///< as typed: the parts may be beyond their bounds
    std::int32_t port = 0;  ///< one that there is not stays until another is chosen
    std::string ip;         ///< incomplete unless it has four numbers
    std::int32_t peerPort = 0;
    std::string command;  ///< as typed

    bool operator==(const NodeEntry&) const = default;
};

/// Whether `ip` is four numbers of 0 to 255 with points between them.
[[nodiscard]] bool IsCompleteAddress(const std::string& ip);

/// The first thing that is wrong with an entry; none when it can be taken.
[[nodiscard]] std::optional<LocalText> RefusalOf(const NodeEntry& entry);

/// The node of an entry that can be taken. A port without a peer has peer port 0 and may have an
/// address, of which an incomplete one is dropped. `original` is the node that is edited, if there
/// is one: a time that the editor cannot show stays unless another is entered, and so does a peer
/// as long as the port does.
[[nodiscard]] TimeNode NodeOf(const NodeEntry& entry, const TimeNode* original = nullptr);

/// The entry that shows a node.
[[nodiscard]] NodeEntry EntryOf(const TimeNode& node);

}  // namespace sontaro
