// The timeline of a simulated player: block 23 of command 3.
#pragma once

#include "simulator/fault_script.h"
#include "simulator/player_commands.h"
#include "simulator/player_state.h"
#include "timeline/time_node.h"

namespace sontaro::simulator {

/// A request without argument and payload reads the timeline. One with argument 1 saves it, if it
/// is a JSON object, and is answered so; one with argument 2 has a command carried out at once,
/// which the answer notes.
void HandleTimeline(PlayerState& state, const DevicePacket& request, Answer& answer);

/// Makes of a timeline that is read what the faults make of it.
void SpoilTimeline(Answer& answer, const FaultScript& faults);

/// A command as the log has it, where it goes and its bytes: "232:0 A5 01".
[[nodiscard]] std::string LogText(const TimeNode& node);

}  // namespace sontaro::simulator
