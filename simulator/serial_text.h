// What the serial ports of simulated players receive, as people write it.
#pragma once

#include <chrono>
#include <optional>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/result.h"

namespace sontaro::simulator {

/// What a serial port receives at a time.
struct SerialEvent {
    std::chrono::milliseconds time{0};  ///< since the player's start
    Bytes bytes;                        ///< 1 to `kMostSerialBytes`
};

/// The events of a script in the order of their times. Its lines are "SECONDS HEX", such as
/// "2.5 A5 01 02"; blank lines and those that begin with "#" are skipped. Fails at any other line
/// and names it.
[[nodiscard]] Result<std::vector<SerialEvent>> ParseSerialScript(std::string_view text);

/// What one player's serial port receives.
struct SerialLine {
    std::size_t player = 0;  ///< its place in the row, from 0
    Bytes bytes;             ///< 1 to `kMostSerialBytes`
};

/// What a typed line says to one of so many players: "A5 01 02", which is for the first, or
/// "2: A5 01 02", which is for the second. None for any other line.
[[nodiscard]] std::optional<SerialLine> ParseSerialLine(std::string_view line, std::size_t players);

}  // namespace sontaro::simulator
