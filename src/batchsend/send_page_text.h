// What the last page says of its players, its plan and its runs, in the language of the user.
#pragma once

#include <span>
#include <string>

#include "batchsend/batch_plan.h"
#include "batchsend/journal_writer.h"

namespace sontaro {

/// So many of the players have been asked, before a run and after it.
[[nodiscard]] std::string PlanningText(std::size_t done, std::size_t all);
[[nodiscard]] std::string ProvingText(std::size_t done, std::size_t all);

/// What a plan comes to. `facts` are those that it was made of, `speed` is that of an earlier run
/// in bytes a second; 0: it is not known.
[[nodiscard]] std::string PlanText(const BatchPlan& plan, std::span<const PlayerFacts> facts,
                                   double speed);

/// How a run has ended: how many players have everything, and which have not, and why.
[[nodiscard]] std::string ResultText(std::span<const UploadRow> rows);

/// What is to be said of the journals; empty: nothing. `isKept`: the journal of the last run is, as
/// far as there was one.
[[nodiscard]] std::string JournalText(const LatestJournal& latest, bool isKept);

}  // namespace sontaro
