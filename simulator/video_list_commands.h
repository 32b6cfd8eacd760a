// The list of videos of a simulated player: command 10.
#pragma once

#include "simulator/player_commands.h"

namespace sontaro::simulator {

/// Answers with the folders of the player as its first screen, and with samples of others, one of
/// which has a number that no tool knows.
void HandleVideoList(PlayerState& state, const DevicePacket& request, Answer& answer);

}  // namespace sontaro::simulator
