// What a backup says of itself.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "venue/json_text.h"
#include "venue/venue_player.h"

namespace sontaro {

/// The name of the file in a backup's folder.
inline constexpr const char* kManifestName = "manifest.json";

/// The most that a manifest has.
inline constexpr std::size_t kLongestManifest = std::size_t{16} << 20;
inline constexpr std::size_t kMostManifestPlayers = 10'000;

/// A block of a player in a backup.
struct ManifestBlock {
    const SettingsBlockKind* kind = nullptr;
    BlockReading::Outcome outcome = BlockReading::Outcome::kRead;
    std::string why = {};     ///< of a failure
    bool hasFile = false;     ///< of a failure: the file is that of an earlier run
    std::uint64_t bytes = 0;  ///< of the file
    std::string sha256 = {};

    /// The name of its file in the player's folder: "osd.json".
    [[nodiscard]] std::string FileName() const { return std::string(kind->name) + ".json"; }
    bool operator==(const ManifestBlock&) const = default;
};

struct ManifestPlayer {
    VenuePlayer player;
    std::string folder;  ///< beside the manifest
    std::vector<ManifestBlock> blocks;

    bool operator==(const ManifestPlayer&) const = default;
};

struct BackupManifest {
    std::string program;  ///< the version that has written it
    std::string begun;    ///< UTC, "2026-11-21T20:30:00Z"; empty in a backup without times
    std::string ended;
    std::vector<ManifestPlayer> players;  ///< by their folders' names

    bool operator==(const BackupManifest&) const = default;
};

/// The manifest as a file: the same bytes for the same content.
[[nodiscard]] std::string WriteManifest(const BackupManifest& manifest);

/// Reads such a file. Whatever cannot be true is refused: other folders and files than the IDs and
/// blocks say, players and blocks that are there twice, sums that are none.
[[nodiscard]] Placed<BackupManifest> ReadManifest(std::string_view text);

/// A file of a backup.
struct ManifestFile {
    const ManifestPlayer& player;
    const ManifestBlock& block;
};

/// Whether files of the same block with other bytes are as good as each other.
using AreAlike = std::function<bool(const ManifestFile& first, const ManifestFile& second)>;

/// Whether both tell of the same players and documents, at whatever time.
[[nodiscard]] bool HoldTheSame(const BackupManifest& first, const BackupManifest& second,
                               const AreAlike& areAlike);

}  // namespace sontaro
