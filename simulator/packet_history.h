// The requests that a simulated player has received.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "link/packet.h"

namespace sontaro::simulator {

using PacketPredicate = std::function<bool(const DevicePacket&)>;

/// The latest requests in order, up to 64 MiB of them. Any thread.
class PacketHistory {
   public:
    void Add(DevicePacket packet);
    void Clear();
    [[nodiscard]] std::vector<DevicePacket> Copy() const;

    /// The first packet that `matches`, which may have been received before; none when none has
    /// come after `limit`. `matches` must not call back.
    [[nodiscard]] std::optional<DevicePacket> WaitFor(const PacketPredicate& matches,
                                                      std::chrono::milliseconds limit) const;

   private:
    mutable std::mutex mutex_;
    mutable std::condition_variable added_;
    std::deque<DevicePacket> packets_;
    std::size_t size_ = 0;  // bytes of all packets
};

}  // namespace sontaro::simulator
