// What a simulated player answers to a request.
#pragma once

#include "link/packet.h"
#include "simulator/player_state.h"

namespace sontaro::simulator {

struct Answer {
    DevicePacket reply;
    bool startPushes = false;  ///< from now on the player reports position and USB videos unasked
};

/// Handles a request by the table of commands: changes the state and makes the reply. A request
/// that the table does not know is answered as not supported.
[[nodiscard]] Answer HandleRequest(PlayerState& state, const DevicePacket& request);

/// The answer to a request that the player does not support: a header alone.
[[nodiscard]] Answer NotSupported(const DevicePacket& request);

}  // namespace sontaro::simulator
