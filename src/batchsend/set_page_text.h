// What the parameter page tells the user.
#pragma once

#include <span>
#include <string>

#include "batchsend/set_page_run.h"

namespace sontaro {

[[nodiscard]] std::string TextOf(InquiryState state);
[[nodiscard]] std::string TextOf(PlayerMode mode);

/// Lines behind a heading, no more than a box has room for.
[[nodiscard]] std::string ListText(const std::string& heading, std::span<const std::string> lines);

/// A problem with the video or the player that has it.
[[nodiscard]] std::string ProblemText(const VideoSet& set, const SetProblem& problem);

/// What the player at that place gets in all, or what every player gets: how many videos, and how
/// many bytes as far as they are known.
[[nodiscard]] std::string AmountText(const VideoSet& set, SetPageRun::Place player);

/// What is shown, and what goes on.
[[nodiscard]] std::string TotalsText(const SetPageRun& run);
/// The first problem with what is shown, and how many more there are; empty: there is none.
[[nodiscard]] std::string FirstProblemText(const SetPageRun& run);

/// A category as it is offered: its number from 1, a question mark where that may change, its name,
/// and a mark where players differ.
[[nodiscard]] std::string SlotText(const SetPageRun& run, std::size_t slot);

}  // namespace sontaro
