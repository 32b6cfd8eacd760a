// Which players a venue should have, and what else is to be known of it.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "base/result.h"
#include "venue/json_text.h"

namespace sontaro {

/// A player as people name it: "192.168.1.20", "192.168.1.20:5000", an ID or a remark.
struct PlayerName {
    std::string text;        ///< as it stands there, without blanks around it
    std::string ip = {};     ///< of an address; empty: the text is an ID or a remark
    std::uint16_t port = 0;  ///< of an address that has one; 0: it has none
    TextPlace place = {};

    bool operator==(const PlayerName&) const = default;
};

/// Reads one name. Fails, with a reason for the user, for nothing at all, and for an address whose
/// port is none.
[[nodiscard]] Result<PlayerName> ReadPlayerName(std::string_view text);

/// Reads a list of expected players: plain lines of names, where empty ones and what follows '#' at
/// the beginning or behind a blank do not count, or JSON: {"format": "sontaro-players",
/// "version": 1, "players": [NAME, ...]}, and the file of a venue as well. A player that is named
/// twice is trouble.
[[nodiscard]] Placed<std::vector<PlayerName>> ReadExpectedPlayers(std::string_view text);

/// What "--venue NAME" stands for.
struct Venue {
    std::string localAddress = {};  ///< empty: the file has none
    std::vector<PlayerName> players = {};
    std::string backupFolder = {};  ///< relative ones are relative to the file; empty: none

    bool operator==(const Venue&) const = default;
};

/// Reads the file of a venue: {"format": "sontaro-venue", "version": 1, "localAddress": "...",
/// "players": [NAME, ...], "backupFolder": "..."}, of which the first two have to be there.
[[nodiscard]] Placed<Venue> ReadVenue(std::string_view text);

/// The file of the venue of that name in a data folder: "venues/NAME.json". None when no file can
/// have that name.
[[nodiscard]] std::optional<std::filesystem::path> VenuePath(const std::filesystem::path& data,
                                                             std::string_view name);

/// Reads it; the backup folder's path is an absolute one. Fails with a reason for the user, which
/// names file, line and column.
[[nodiscard]] Result<Venue> OpenVenue(const std::filesystem::path& data, std::string_view name);

/// Likewise the file of "--expect".
[[nodiscard]] Result<std::vector<PlayerName>> OpenExpectedPlayers(
    const std::filesystem::path& path);

}  // namespace sontaro
