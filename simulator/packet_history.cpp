#include "simulator/packet_history.h"

#include <algorithm>

namespace sontaro::simulator {

namespace {

constexpr std::size_t kMostBytes = 64U << 20;

std::size_t SizeOf(const DevicePacket& packet) { return sizeof packet + packet.payload.size(); }

}  // namespace

void PacketHistory::Add(DevicePacket packet) {
    {
        const std::lock_guard lock(mutex_);
        size_ += SizeOf(packet);
        packets_.push_back(std::move(packet));
        for (; size_ > kMostBytes; packets_.pop_front()) size_ -= SizeOf(packets_.front());
    }
    added_.notify_all();
}

void PacketHistory::Clear() {
    const std::lock_guard lock(mutex_);
    packets_.clear();
    size_ = 0;
}

std::vector<DevicePacket> PacketHistory::Copy() const {
    const std::lock_guard lock(mutex_);
    return {packets_.begin(), packets_.end()};
}

std::optional<DevicePacket> PacketHistory::WaitFor(const PacketPredicate& matches,
                                                   std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    auto found = packets_.end();
    added_.wait_for(lock, limit, [&] {
        found = std::ranges::find_if(packets_, matches);
        return found != packets_.end();
    });
    if (found == packets_.end()) return std::nullopt;
    return *found;
}

}  // namespace sontaro::simulator
