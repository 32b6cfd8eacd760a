// Several simulated players that are found together.
#pragma once

#include <atomic>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/result.h"
#include "base/thread_group.h"
#include "simulator/simulated_player.h"

namespace sontaro::simulator {

/// What is to be said of all players of a row.
struct LineUpOptions {
    std::size_t count = 1;                    ///< 1 to 200
    Ipv4Address baseAddress{{127, 0, 0, 2}};  ///< the first player's; the others' follow it
    std::uint16_t port = 0;                   ///< TCP port of each; 0: the system picks them
    std::string name;             ///< start of the IDs; a number follows unless there is one player
    std::filesystem::path store;  ///< folder of a state file per player; empty: none is kept
    std::filesystem::path schema;  ///< file with the settings that all describe; empty: the sample
    std::filesystem::path serialScript;  ///< file of what all serial ports receive; empty: nothing
    std::chrono::milliseconds restartTime = kRestartTime;
    std::chrono::milliseconds spacing = Pacing().spacing;
    bool olderNames = false;   ///< see `PlayerOptions`
    std::vector<int> outputs;  ///< of each, 1 or 2, the last for all after it; empty: as its model
    int width = Screens().width;    ///< of every output, in pixels
    int height = Screens().height;  ///< of every output, in pixels
    FaultScript faults;
    std::map<std::size_t, FaultScript> ownFaults;  ///< of single players, by their place from 0
    EventLog* log = nullptr;                       ///< outlives the players
};

/// Players on consecutive addresses with versions and outputs that differ as in a real list.
/// Without a name they are SIMPLAYER1, SIMPLAYER2 and so on. Fails, with a reason for the user,
/// when an address leaves the /24 network or 127.0.0.0/8, an ID would be too long, faults are for a
/// player that there is not, or a file cannot be used.
[[nodiscard]] Result<std::vector<PlayerOptions>> LineUp(const LineUpOptions& options);

/// Owns its players, and hears broadcast discovery requests for them. One thread.
class PlayerGroup {
   public:
    explicit PlayerGroup(const std::vector<PlayerOptions>& players);
    ~PlayerGroup() { Stop(); }
    PlayerGroup(const PlayerGroup&) = delete;
    PlayerGroup& operator=(const PlayerGroup&) = delete;

    /// Starts every player, or none. The reason of a failure names the address.
    Status Start();
    /// Stops every player. The group can be started again.
    void Stop();

    [[nodiscard]] std::size_t Size() const { return players_.size(); }
    /// A player, by its place in the row from 0; it may be stopped and started by itself.
    [[nodiscard]] SimulatedPlayer& Player(std::size_t index) { return *players_.at(index); }

   private:
    Status StartPlayers();
    Status HearBroadcasts();
    void PassOn(Socket& socket);

    std::vector<std::unique_ptr<SimulatedPlayer>> players_;
    std::vector<std::unique_ptr<Socket>> sockets_;  // one per port, while started
    std::atomic<bool> hearing_ = false;
    ThreadGroup threads_;
};

}  // namespace sontaro::simulator
