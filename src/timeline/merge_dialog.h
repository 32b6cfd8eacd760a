// Which videos of another timeline are to be merged, and into which ones here.
#pragma once

#include "base/prompts.h"
#include "timeline/timeline_document.h"
#include "timeline/video_fields.h"

namespace sontaro {

/// Control numbers of the dialog, besides OK and Cancel. The player, category and video are three.
inline constexpr int kMergeGrid = 3501;
inline constexpr int kMergePlayer = 3502;

/// Asks for a file and, modally, which videos of its timeline are to be added to which ones here,
/// and adds their nodes as one step. Their numbers; empty when nothing has changed: the user has
/// thought better of it, or been told which file has no timeline to be merged and why.
[[nodiscard]] NodeIds MergeFromFile(wxWindow* parent, TimelineDocument& document,
                                    VideoOffer& videos, Prompts& prompts);

}  // namespace sontaro
