// The document of a timeline: {"cmdInfos": [{"playerID", "typeName", "videoName", "cmdList":
// [{"milliseconds", "expendCmdIndex", "ip", "port", "cmd"}]}]}.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"
#include "timeline/node_groups.h"

namespace sontaro {

/// What a document holds. Groups are as it has them, those of equal names joined to the first of
/// them; none is empty.
struct TimelineContent {
    GroupOrder order;
    OtherKeys others;
};

/// Who is asked for what: a player's answer may leave anything out, a file must be a timeline.
enum class TimelineSource { kPlayer, kFile };

/// Reads a document. A key that is missing or of another type gives 0 or an empty text; what is no
/// object in a list is passed over; keys that nobody here knows, and whole numbers beyond their
/// fields, are kept. Commands are normalised, invalid ones left as they are. The nodes have no
/// numbers yet. Fails on what is no JSON object, and on a file without a list of groups; the
/// reason is one for the user.
[[nodiscard]] Result<TimelineContent> ReadTimeline(std::string_view text, TimelineSource source,
                                                   NameTable& names);

/// The document as players read it.
[[nodiscard]] std::string TimelineText(const GroupOrder& order, const OtherKeys& others);

/// The object by which a player tries a node's command.
[[nodiscard]] std::string TestText(const TimeNode& node);

// What that text takes, without writing it. Each part counts the separator that follows it.

/// Of a text with its quotes.
[[nodiscard]] std::size_t JsonBytes(std::string_view text);
/// Of a node.
[[nodiscard]] std::size_t JsonBytes(const GroupNode& node);
/// Of a group without its nodes.
[[nodiscard]] std::size_t JsonFrameBytes(const NodeGroup& group);
/// Of the whole document, whose groups take `groupBytes`.
[[nodiscard]] std::size_t JsonBytes(std::size_t groupBytes, const OtherKeys& others);

/// `node` and the video of `group`, as one record.
[[nodiscard]] TimeNode NodeOf(const NodeGroup& group, const GroupNode& node);
/// Gives `stored` the values of `node`, video excluded. What the document had in the place of a
/// value that is another one now is dropped.
void StoreNode(const TimeNode& node, GroupNode& stored);

}  // namespace sontaro
