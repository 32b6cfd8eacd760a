// The part of a simulated player in a video wall: command 54, blocks 12 and 13 of command 3.
#pragma once

#include "simulator/fault_script.h"
#include "simulator/player_commands.h"
#include "simulator/player_state.h"

namespace sontaro::simulator {

/// What the player drives, as a block of 6,524 bytes, or 6,515 in the shorter form, and the
/// checksum of it. Other forms of the command than 1 are not supported.
void HandleParameterBlock(PlayerState& state, const DevicePacket& request, Answer& answer);

/// The configuration of the wall, which is read with neither argument nor payload.
void HandleWall(PlayerState& state, const DevicePacket& request, Answer& answer);

/// Takes over another configuration, if it is a JSON object. The answer has no payload, and notes
/// where the screens stand; to anything else there is none.
void HandleNewWall(PlayerState& state, const DevicePacket& request, Answer& answer);

/// Makes of a parameter block what the faults make of it.
void SpoilParameterBlock(Answer& answer, const FaultScript& faults);

/// Where the screens of a configuration stand, for the log: "wall of 3840 x 1080: screen 0 at 0,0;
/// screen 1 at 1920,0".
[[nodiscard]] std::string WallText(std::string_view configuration);

}  // namespace sontaro::simulator
