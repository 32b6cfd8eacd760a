// What is wrong with the uploads to a simulated player.
#pragma once

#include <optional>

#include "simulator/fault_script.h"
#include "simulator/player_commands.h"

namespace sontaro::simulator {

/// Has the faults of uploads happen, and counts how often they have.
class UploadFaults {
   public:
    /// What they have in place of a player's own answer; none: there is no such fault. Whether the
    /// disk is full is noted in the state.
    [[nodiscard]] std::optional<Answer> AnswerTo(const DevicePacket& request,
                                                 const FaultScript& faults, PlayerState& state);
    /// Makes of the player's answer, and of what the request has left behind, what they have.
    void Spoil(const DevicePacket& request, const FaultScript& faults, PlayerState& state,
               Answer& answer);

   private:
    std::size_t chunks_ = 0;    // that have come
    std::size_t withheld_ = 0;  // packets that were not acknowledged
};

}  // namespace sontaro::simulator
