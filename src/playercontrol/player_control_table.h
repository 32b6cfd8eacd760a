// Every key of the player control protocol, with all that is to be said of it.
#pragma once

#include "playercontrol/player_control_document.h"

namespace sontaro {

[[nodiscard]] const RecordSchema<PlayerControlModel>& PlayerControlSchema();

/// One of its players by itself: a grid shows one at a time.
[[nodiscard]] const RecordSchema<ControlledPlayer>& ControlledPlayerSchema();

}  // namespace sontaro
