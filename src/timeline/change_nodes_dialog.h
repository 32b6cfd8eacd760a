// What is to be the same in many commands of a timeline.
#pragma once

#include "base/prompts.h"
#include "timeline/timeline_document.h"
#include "timeline/video_fields.h"

namespace sontaro {

/// What can be the same.
enum class CommonField { kPlayer, kType, kVideo, kPort, kIp, kPeerPort, kCommand };
inline constexpr int kCommonFields = 7;

/// Control numbers of the dialog, besides OK and Cancel. There is a tick for each field; the
/// player, category and video are three numbers, the address is four.
inline constexpr int kChangeTick = 3301;
inline constexpr int kChangePlayer = 3311;
inline constexpr int kChangePort = 3314;
inline constexpr int kChangeIp = 3315;
inline constexpr int kChangePeerPort = 3319;
inline constexpr int kChangeCommand = 3320;

/// Asks, modally, for values of the nodes `ids`, of which there is one at least and the filter
/// hides `hidden`, and gives them these values as one step. False when nothing was changed.
[[nodiscard]] bool AskAndChangeNodes(wxWindow* parent, TimelineDocument& document,
                                     const NodeIds& ids, std::size_t hidden, VideoOffer& videos,
                                     Prompts& prompts);

}  // namespace sontaro
