// Loopback addresses that no other running test uses.
#pragma once

#include "link/socket.h"
#include "support/platform.h"

namespace sontaro::test {

/// A /24 network within 127.0.0.0/8 of this process alone: simulated players hear only requests
/// from their own, so that tests run side by side. 127.0.0.x is left to demonstrations, and to
/// tests on Windows, which run one at a time: Wine has datagram sockets of any loopback address
/// send from 127.0.0.1.
class TestNetwork {
   public:
    TestNetwork() { started_ = StartNetwork() == NetworkStart::kReady; }
    ~TestNetwork() {
        if (started_) StopNetwork();
    }
    TestNetwork(const TestNetwork&) = delete;
    TestNetwork& operator=(const TestNetwork&) = delete;

    /// The address to scan from.
    [[nodiscard]] Ipv4Address Local() const { return {{127, high_, low_, 1}}; }
    /// The address of a player, counted from 0.
    [[nodiscard]] Ipv4Address Player(std::size_t index) const {
        return {{127, high_, low_, static_cast<std::uint8_t>(2 + index)}};
    }

   private:
    bool started_ = false;
    const std::uint8_t high_ =
        kOnWindows ? 0 : static_cast<std::uint8_t>(1 + ProcessNumber() / 256 % 254);
    const std::uint8_t low_ = kOnWindows ? 0 : static_cast<std::uint8_t>(ProcessNumber() % 256);
};

}  // namespace sontaro::test
