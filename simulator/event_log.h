// What happens to the simulated players, line by line.
#pragma once

#include <chrono>
#include <mutex>
#include <ostream>
#include <string>
#include <string_view>

#include "link/packet.h"

namespace sontaro::simulator {

/// Writes one line per event: seconds since the log began, the player's address, what happened.
/// Every line is flushed. Any thread.
class EventLog {
   public:
    /// `out` belongs to the caller and outlives the log.
    explicit EventLog(std::ostream& out) : out_(out) {}

    void Write(std::string_view player, std::string_view event);

   private:
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::mutex mutex_;
    std::ostream& out_;
};

/// A packet on one line: command, sub-command, argument and the payload. A JSON payload is printed
/// with readable UTF-8 characters, cut off after a thousand bytes, another one as its length and
/// its first bytes.
[[nodiscard]] std::string Describe(const DevicePacket& packet);

}  // namespace sontaro::simulator
