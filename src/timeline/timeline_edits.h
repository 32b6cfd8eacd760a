// What is done to many nodes of a timeline at once, each as one step that can be undone.
#pragma once

#include <span>

#include "base/local_text.h"
#include "timeline/timeline_document.h"

namespace sontaro {

/// The chosen nodes; numbers that name no node are passed over.
using ChosenNodes = std::span<const NodeId>;

void DeleteNodes(TimelineDocument& document, ChosenNodes chosen);

/// Adds a copy of each; says their numbers.
NodeIds DuplicateNodes(TimelineDocument& document, ChosenNodes chosen);

/// Moves all of them by so many milliseconds, or none, and says false, when one would come to lie
/// before 0 or beyond all times.
bool ShiftNodes(TimelineDocument& document, ChosenNodes chosen, std::int64_t milliseconds,
                TimelineDocument::Series series = 0);

/// What is to be the same in all chosen nodes; the rest stays.
struct CommonValues {
    std::optional<std::int64_t> player = {};
    std::optional<std::string> typeName = {};
    std::optional<std::string> videoName = {};
    std::optional<std::int32_t> port = {};
    std::optional<std::string> ip = {};
    std::optional<std::int32_t> peerPort = {};
    std::optional<std::string> command = {};  ///< as typed
};

/// The first thing that is wrong with them, as the editor of one node has it; none when they can be
/// given to those nodes. An address may be empty, unless a node's port needs it.
[[nodiscard]] std::optional<LocalText> RefusalOf(const CommonValues& values,
                                                 const TimelineDocument& document,
                                                 ChosenNodes chosen);

/// Gives the nodes these values, of which none is wrong. A port without a peer gets no peer port.
void ChangeNodes(TimelineDocument& document, ChosenNodes chosen, const CommonValues& values);

/// The video that a group belongs to.
[[nodiscard]] VideoKey VideoOf(const NodeGroup& group);
/// The group of a video; absent when it has no node.
[[nodiscard]] const NodeGroup* FindGroup(const GroupOrder& order, const VideoKey& video);

/// Adds copies of one video's nodes to another one; says their numbers.
NodeIds CopyVideo(TimelineDocument& document, const VideoKey& source, const VideoKey& target);

/// A group of another timeline, and the video here that it is for.
struct MergedGroup {
    SharedGroup group;
    VideoKey video;
};

/// Adds the nodes of those groups; says their numbers. The groups come from `ReadTimeline`.
NodeIds MergeGroups(TimelineDocument& document, const std::vector<MergedGroup>& groups);

}  // namespace sontaro
