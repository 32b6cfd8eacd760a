// What keeps a player passing on its serial line.
#pragma once

#include <functional>

#include "base/timers.h"
#include "exchange/player_requests.h"

namespace sontaro {

/// Command 50, without which a player soon stops.
[[nodiscard]] inline SharedPacket KeepAlivePacket() { return ReadyPacket(kCommandSerialData, 0); }

/// Has that packet sent every 2000 ms for as long as it is wanted. One that could not be sent does
/// not end it.
class KeepAlive {
   public:
    static constexpr std::chrono::milliseconds kPeriod{2000};

    /// `send` may say that it is wanted no more; it must not destroy this object.
    KeepAlive(Timers& timers, std::function<void()> send)
        : timer_(timers), send_(std::move(send)) {}

    void Want(bool wanted) {
        if (!wanted)
            timer_.Stop();
        else if (!timer_.IsRunning())
            Wait();
    }

   private:
    void Wait() {
        timer_.Start(kPeriod, [this] {
            Wait();
            send_();
        });
    }

    Timer timer_;
    const std::function<void()> send_;
};

}  // namespace sontaro
