// What keeps a player passing on its serial line.
#pragma once

#include "base/timers.h"
#include "exchange/conversation.h"
#include "exchange/player_requests.h"

namespace sontaro {

/// Sends command 50 every 2000 ms for as long as it is wanted. One that could not be sent does not
/// end it.
class KeepAlive {
   public:
    static constexpr std::chrono::milliseconds kPeriod{2000};

    KeepAlive(Timers& timers, Conversation& talk) : timer_(timers), talk_(talk) {}

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
            talk_.Post(ReadyPacket(kCommandSerialData, 0), Boxes::kMuted);
        });
    }

    Timer timer_;
    Conversation& talk_;
};

}  // namespace sontaro
