// The lines that tell how a player's timeline stands.
#pragma once

#include <string>

#include "timeline/timeline_run.h"

namespace sontaro {

/// How the exchange stands, and what is missing of the player's videos; may have several lines.
[[nodiscard]] std::string StateTextOf(const TimelineRun& run);

/// What became of the command that was tried last; empty before there is one.
[[nodiscard]] std::string TestTextOf(const TimelineTests& tests);

}  // namespace sontaro
