// What the user is told and asked about the names of categories.
#pragma once

#include <filesystem>
#include <span>

#include "base/prompts.h"
#include "batchsend/heard_names.h"

namespace sontaro {

/// Says which provisional names have taken their videos to another slot, and which are dropped.
void TellSettled(std::span<const SettledName> settled, Prompts& prompts);

/// Keeps the document of the names in `file` where players need it, else sees to it that there is
/// none. Asks before names of players are replaced, or the user's are not sent, and once more when
/// `set` or `heard` has changed behind a question. `shown` is the player whose names those are that
/// the user has not given. False: the user does not want that, or has been told why it cannot be.
[[nodiscard]] bool KeepNames(const VideoSet& set, const HeardNames& heard,
                             std::optional<std::size_t> shown, const std::filesystem::path& file,
                             Prompts& prompts);

}  // namespace sontaro
