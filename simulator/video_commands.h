// The remote control of a simulated player: the JSON commands of command 59.
#pragma once

#include "link/packet.h"
#include "simulator/player_commands.h"
#include "simulator/player_state.h"

namespace sontaro::simulator {

/// Handles a JSON command. The reply's "code" is 0 when it was carried out and 1 when it is
/// unknown, malformed or names what the player does not have.
void HandleVideoCommand(PlayerState& state, const DevicePacket& request, Answer& answer);

/// The packet that reports what is played and where in it, sent unasked.
[[nodiscard]] DevicePacket PositionPacket(const PlayerState& state);

/// The packet that reports the videos on the USB disk and which of them is played, sent unasked.
[[nodiscard]] DevicePacket UsbVideosPacket(const PlayerState& state);

}  // namespace sontaro::simulator
