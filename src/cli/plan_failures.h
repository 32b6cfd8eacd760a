// What keeps a document from being sent to a player, in words.
#pragma once

#include "cli/player_report.h"
#include "venue/restore_plan.h"

namespace sontaro::cli {

/// Why nothing is sent of a block; none: it is sent, or there is nothing to send.
[[nodiscard]] std::optional<Failure> FailureOf(const BlockPlan& plan);

}  // namespace sontaro::cli
