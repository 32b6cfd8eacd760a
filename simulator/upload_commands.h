// The videos that a simulated player is sent.
#pragma once

#include "simulator/player_commands.h"

namespace sontaro::simulator {

/// Takes an announcement or a chunk (command 20) and checks order, numbers, sizes and the mark of
/// the last one. What is wrong stands in the state, and in the log; it is not acknowledged.
void HandleUpload(PlayerState& state, const DevicePacket& request, Answer& answer);

/// How the player plays together with others (command 36).
void HandleMode(PlayerState& state, const DevicePacket& request, Answer& answer);

/// MiB that are free on the player's disk.
[[nodiscard]] std::uint32_t FreeMebibytes(const PlayerState& state);

/// Forgets the video that has not come to its end.
void ForgetIncoming(PlayerState& state);

/// Takes the last byte, if there is one, from the video that has been stored last.
void CutNewestVideo(PlayerState& state);

}  // namespace sontaro::simulator
