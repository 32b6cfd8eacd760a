// All documents of a player.
#pragma once

#include <span>

#include "cli/player_report.h"
#include "session/session.h"
#include "venue/venue_player.h"

namespace sontaro::cli {

struct ReadDocuments {
    PlayerDocuments documents;
    std::vector<Failure> failures = {};  ///< blocks that it has not answered as it should

    /// Whether anything was read.
    [[nodiscard]] bool HasAny() const;
};

/// Reads these blocks of a player. One that it does not support is no failure. A player that has
/// never answered is not asked for all of them.
[[nodiscard]] ReadDocuments ReadAll(Session& session, const DeviceRecord& player,
                                    std::span<const SettingsBlockKind* const> kinds);

/// Counts documents that end halfway, as those that were cut on the player, as failures:
/// `unreadable`.
void RefuseBroken(ReadDocuments& read);

/// All blocks.
[[nodiscard]] std::vector<const SettingsBlockKind*> AllKinds();

}  // namespace sontaro::cli
