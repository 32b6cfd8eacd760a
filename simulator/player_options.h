// What a simulated player is started with.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "link/socket.h"
#include "simulator/connection.h"
#include "simulator/discovery_reply.h"
#include "simulator/event_log.h"
#include "simulator/serial_text.h"

namespace sontaro::simulator {

/// How long a restart takes that a tool asks for.
inline constexpr std::chrono::milliseconds kRestartTime{3000};

struct PlayerOptions {
    Ipv4Address address{{127, 0, 0, 2}};  ///< within 127.0.0.0/8
    std::uint16_t port = 0;               ///< TCP port; 0: the system picks one at the first start
    PlayerIdentity identity;
    PlayerState state = FactoryState();
    /// Takes the place of the settings that describe themselves, at every start.
    std::optional<std::string> schema = {};
    Screens screens;  ///< what the player drives, from every start on
    bool olderNames =
        false;  ///< command 10 has the layouts in one of its forms, from every start on
    FaultScript faults;
    Pacing pacing;
    std::vector<SerialEvent> serialScript;  ///< in the order of their times, from each start
    std::chrono::milliseconds restartTime = kRestartTime;
    std::int64_t player = 0;  ///< the number that a timeline knows it by
    double speed = 1;         ///< seconds of video that go by in a second
    std::filesystem::path
        file;  ///< keeps the state from one start to the next; empty: nothing does
    std::filesystem::path videoFolder = {};  ///< keeps the videos it is sent; empty: nothing does
    /// Is told what the player sends to its ports, as the log is; must not call the player.
    std::function<void(std::string_view)> printed = [](std::string_view) {};
    EventLog* log = nullptr;        ///< outlives the player
    bool remembersRequests = true;  ///< for `SimulatedPlayer::ReceivedPackets`
};

}  // namespace sontaro::simulator
