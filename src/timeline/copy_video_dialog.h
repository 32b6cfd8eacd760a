// Which video's commands are to be copied, and to which one.
#pragma once

#include "base/prompts.h"
#include "timeline/timeline_document.h"
#include "timeline/video_fields.h"

namespace sontaro {

/// Control numbers of the dialog, besides OK and Cancel. The player, category and video are three.
inline constexpr int kCopySource = 3401;
inline constexpr int kCopyPlayer = 3402;

/// Asks, modally, whose nodes are to be copied, `source`'s at first, and for which video, and adds
/// the copies as one step. Their numbers; empty when the user leaves without OK. There is one group
/// at least.
[[nodiscard]] NodeIds AskAndCopyVideo(wxWindow* parent, TimelineDocument& document,
                                      const VideoKey& source, VideoOffer& videos, Prompts& prompts);

}  // namespace sontaro
