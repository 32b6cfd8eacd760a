// What two states of a venue differ in.
#pragma once

#include <algorithm>
#include <span>

#include "session/block_document.h"
#include "venue/backup_store.h"

namespace sontaro {

/// What two documents of a block differ in.
struct BlockComparison {
    enum class Sides : std::uint8_t { kBoth, kFirstOnly, kSecondOnly, kNeither };

    const SettingsBlockKind* kind = nullptr;
    Sides sides = Sides::kBoth;  ///< where the block was read
    /// Values that differ, those of rows first; then, by their paths in the document and without a
    /// caption, values that no row shows. A document that nothing can be read from differs as a
    /// whole: its path is empty.
    std::vector<RowDifference> differences = {};
    std::size_t notListed = 0;  ///< differences beyond `kMostDifferences`
    std::string why = {};       ///< of a block that could not be read on one side, or on both
    /// No value differs, but how they are written down, or described: keys that are left out where
    /// they stand for what is meant without them, the captions and limits of settings that describe
    /// themselves, the order of their elements, kinds of numbers.
    bool isOtherForm = false;

    /// Whether a technician would find the same settings on both sides.
    [[nodiscard]] bool HasSameValues() const {
        return sides == Sides::kBoth && differences.empty();
    }
};

/// A player of either side, or both.
struct PlayerComparison {
    const VenuePlayer* first = nullptr;   ///< absent: only the second side has it
    const VenuePlayer* second = nullptr;  ///< absent: only the first side has it
    /// Those that differ, if in their form alone, or that cannot be told.
    std::vector<BlockComparison> blocks = {};

    /// Whether a block could be read on neither side.
    [[nodiscard]] bool IsUncertain() const {
        return std::ranges::any_of(blocks, [](const BlockComparison& block) {
            return block.sides == BlockComparison::Sides::kNeither;
        });
    }
    /// Whether all values are the same.
    [[nodiscard]] bool IsSame() const {
        return first != nullptr && second != nullptr &&
               std::ranges::all_of(blocks, &BlockComparison::HasSameValues);
    }
};

/// Most differences of a block that are listed.
inline constexpr std::size_t kMostDifferences = 1000;

/// What two texts of a block differ in.
[[nodiscard]] BlockComparison CompareTexts(const SettingsBlockKind& kind, const std::string& first,
                                           const std::string& second);

/// Compares the blocks of a player. One that neither side supports or was asked for does not
/// differ; one that neither has, as it could not be read, cannot be told. The players' facts
/// outlive the comparison.
[[nodiscard]] PlayerComparison ComparePlayers(const PlayerDocuments& first,
                                              const PlayerDocuments& second);

/// Which players of two lists are the same, by their IDs, and where several have one ID by their
/// MAC addresses. First those of the first list, in its order, then those that the second alone
/// has; a place that is not there is absent.
struct MatchedPlayers {
    std::optional<std::size_t> first, second;

    bool operator==(const MatchedPlayers&) const = default;
};
[[nodiscard]] std::vector<MatchedPlayers> MatchPlayers(std::span<const VenuePlayer> first,
                                                       std::span<const VenuePlayer> second);

/// Every player of either side. The backups outlive the comparison. Fails when a file cannot be
/// read.
[[nodiscard]] Result<std::vector<PlayerComparison>> CompareBackups(const Backup& first,
                                                                   const Backup& second);
/// The same for a backup and what was just read. `isWhole` says whether that is all of the venue:
/// else players that only the backup has are passed over.
[[nodiscard]] Result<std::vector<PlayerComparison>> CompareWithVenue(
    const Backup& first, std::span<const PlayerDocuments> second, bool isWhole);

}  // namespace sontaro
