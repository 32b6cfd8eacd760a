// The files that a timeline is kept in and exchanged by.
#pragma once

#include <filesystem>
#include <optional>

#include "base/prompts.h"
#include "timeline/timeline_document.h"

namespace sontaro {

/// Which file the user wants opened, or written; none when the user has thought better of it.
[[nodiscard]] std::optional<std::filesystem::path> AskForTimelineToOpen(Prompts& prompts);
[[nodiscard]] std::optional<std::filesystem::path> AskForTimelineToSave(Prompts& prompts);

/// Asks for a table, and whether its nodes are to be added or put in place of all others. Takes all
/// of it or says what cannot be read and changes nothing. The new nodes; empty when nothing has
/// changed.
NodeIds ImportCsv(TimelineDocument& document, Prompts& prompts);

/// Asks where to write the nodes as a table, and says whether that worked.
void ExportCsv(const TimelineDocument& document, Prompts& prompts);

}  // namespace sontaro
