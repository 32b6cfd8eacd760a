// What a simulated player is started with.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "link/socket.h"
#include "simulator/connection.h"
#include "simulator/discovery_reply.h"
#include "simulator/event_log.h"

namespace sontaro::simulator {

struct PlayerOptions {
    Ipv4Address address{{127, 0, 0, 2}};  ///< within 127.0.0.0/8
    std::uint16_t port = 0;               ///< TCP port; 0: the system picks one at the first start
    PlayerIdentity identity;
    PlayerState state = FactoryState();
    /// Takes the place of the settings that describe themselves, at every start.
    std::optional<std::string> schema = {};
    FaultScript faults;
    Pacing pacing;
    std::chrono::milliseconds restartTime{3000};  ///< how long a restart takes that a tool asks for
    double speed = 1;                             ///< seconds of video that go by in a second
    std::filesystem::path
        file;                 ///< keeps the state from one start to the next; empty: nothing does
    EventLog* log = nullptr;  ///< outlives the player
};

}  // namespace sontaro::simulator
