// The settings documents of a simulated player: blocks of command 3.
#pragma once

#include <optional>

#include "link/packet.h"
#include "simulator/fault_script.h"
#include "simulator/player_commands.h"
#include "simulator/player_state.h"

namespace sontaro::simulator {

/// A document of the state.
using Document = std::string PlayerState::*;

// A request without argument and payload reads the document. A save is only taken when it is a
// JSON object, and not answered at all otherwise. Any other request is not supported.

/// The on-screen display: saved with argument 0, and a save is answered with what is now kept.
void HandleOsd(PlayerState& state, const DevicePacket& request, Answer& answer);

/// The control protocol: any payload is a save, and is answered with its own qualifier, which says
/// whether the player is to restart, and argument.
void HandleControlProtocol(PlayerState& state, const DevicePacket& request, Answer& answer);

/// Settings that the player describes itself: saved with argument 1, and answered so.
void HandleSchema(PlayerState& state, Document document, const DevicePacket& request,
                  Answer& answer);

/// The player control protocol: saved with argument 1, and answered so.
void HandlePlayerControl(PlayerState& state, const DevicePacket& request, Answer& answer);

/// The answer that the faults have in place of a player's own, whose state stays; none: there is no
/// such fault.
[[nodiscard]] std::optional<Answer> FaultyAnswer(const DevicePacket& request,
                                                 const FaultScript& faults);

/// Makes of an answer what the faults make of what it is about.
void Spoil(Answer& answer, const FaultScript& faults);

}  // namespace sontaro::simulator
