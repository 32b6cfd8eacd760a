// Faults that the platform does not give on demand.
#pragma once

#include <stdexcept>

#include "link/link_services.h"

namespace sontaro::test {

/// The platform's calls, the first one after `Arm` failing in the way that leads to `code`.
class FaultyIo final : public LinkIo {
   public:
    explicit FaultyIo(LinkCode code) : code_(code) {}

    void Arm() { armed_ = true; }

    WaitResult WaitToSend(AutoResetEvent& event) override {
        const WaitResult result = event.Wait();
        if (Strikes(LinkCode::kSendWaitTimedOut)) return WaitResult::kTimedOut;
        return Strikes(LinkCode::kSendWaitFailed) ? WaitResult::kFailed : result;
    }
    std::int64_t SendTo(Socket& socket, ByteView bytes, const Endpoint& destination) override {
        const std::int64_t sent = LinkIo::SendTo(socket, bytes, destination);
        return Strikes(LinkCode::kShortSend) ? sent - 1 : sent;
    }
    std::int64_t ReceiveFrom(Socket& socket, std::span<std::uint8_t> buffer,
                             Endpoint& sender) override {
        const std::int64_t count = LinkIo::ReceiveFrom(socket, buffer, sender);
        if (Strikes(LinkCode::kReceiveException)) throw std::runtime_error("no memory");
        return Strikes(LinkCode::kReceiveFailed) ? -1 : count;
    }

   private:
    bool Strikes(LinkCode code) { return code == code_ && armed_.exchange(false); }

    const LinkCode code_;
    std::atomic<bool> armed_ = false;
};

}  // namespace sontaro::test
