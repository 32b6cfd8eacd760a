// What is to be sent to players so that they are as a document or a backup says.
#pragma once

#include <span>

#include "session/block_document.h"
#include "venue/venue_player.h"

namespace sontaro {

/// A part of a player's settings: a block, or what stands under a key of it.
struct SettingsPart {
    const SettingsBlockKind* kind = nullptr;
    std::string key = {};  ///< a path of a row, or the beginning of one up to a slash; empty: all
};

/// The part that "BLOCK[/KEY]" names. Fails, with a reason for the user, for what is no block.
[[nodiscard]] Result<SettingsPart> PartOf(std::string_view text);

/// What is to become of one block.
struct BlockPlan {
    const SettingsBlockKind* kind = nullptr;
    std::string text = {};  ///< the document to send; empty: nothing is to be sent
    /// What changes: `first` is as it is, `second` as it will be.
    std::vector<RowDifference> rows = {};
    std::size_t notListed = 0;              ///< of what changes
    std::vector<std::string> unknown = {};  ///< paths that the player's document does not have
    std::vector<std::string> missing = {};  ///< paths of the player's that the wanted one lacks
    std::map<std::string, std::string> refused = {};  ///< path, and why the player's value stays
    std::string trouble = {};  ///< why nothing at all can be done, for the user; empty: it can

    /// Whether not everything of the wanted document fits the player.
    [[nodiscard]] bool HasDoubts() const {
        return !unknown.empty() || !missing.empty() || !refused.empty();
    }
    /// Whether nothing is sent because of that, or of the trouble.
    [[nodiscard]] bool IsRefused() const {
        return !trouble.empty() || (text.empty() && HasDoubts());
    }
};

struct PlanOptions {
    /// Sends what has doubts: unknown keys as well, where settings do not describe themselves, and
    /// missing ones as the player has them. What is refused stays the player's all the same; a
    /// value of another type than the player's keeps the whole block from being sent.
    bool force = false;
    std::string key = {};  ///< only what stands under it; empty: everything
};

/// What to send so that a player, whose document is `present`, has the values of `wanted`. Settings
/// that describe themselves get values alone, by the keys that the player knows them by, and never
/// ones beyond its limits.
[[nodiscard]] BlockPlan PlanBlock(const SettingsBlockKind& kind, const std::string& wanted,
                                  const std::string& present, const PlanOptions& options = {});

/// The plans of all blocks that `wanted` has and that differ, in the order of the table of blocks;
/// of `only` these parts, unless that is empty.
[[nodiscard]] std::vector<BlockPlan> PlanPlayer(const PlayerDocuments& wanted,
                                                const PlayerDocuments& present,
                                                std::span<const SettingsPart> only,
                                                bool force = false);

}  // namespace sontaro
