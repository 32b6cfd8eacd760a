// The commands of a simulated player's timeline, at their moments.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simulator/player_state.h"
#include "timeline/time_node.h"

namespace sontaro::simulator {

/// Lets a player's videos play and tells which commands of its timeline fall due meanwhile. One
/// thread at a time.
class TimelinePlayback {
   public:
    using Due = std::function<void(const TimeNode&)>;

    /// `player` is the number by which the timeline knows the player, from 0.
    TimelinePlayback(std::int64_t player, Due due) : player_(player), due_(std::move(due)) {}

    /// Lets `elapsed` go by, and tells every command whose moment comes by then, in the order of
    /// time. Whatever else has become of the state since is taken for a jump.
    void Advance(PlayerState& state, std::chrono::microseconds elapsed);

    /// Time of the video until its next command or its end; none when neither is to come.
    [[nodiscard]] std::optional<std::chrono::microseconds> UntilNext(const PlayerState& state);

   private:
    void Follow(const PlayerState& state);
    void ReadNodes(const PlayerState& state);
    void TellDue(const PlayerState& state);
    [[nodiscard]] std::chrono::microseconds Step(const PlayerState& state,
                                                 std::chrono::microseconds most) const;

    const std::int64_t player_;
    const Due due_;
    std::string timeline_;         // that the nodes are from
    std::string folder_, video_;   // that they belong to
    std::vector<TimeNode> nodes_;  // in the order of time
    std::size_t next_ = 0;
    std::chrono::microseconds position_{-1};
};

}  // namespace sontaro::simulator
