// Requests out of a byte stream.
#pragma once

#include <optional>

#include "base/bytes.h"
#include "base/result.h"
#include "link/packet.h"

namespace sontaro::simulator {

/// Most payload bytes that a simulated player takes; what a request buffer of the tool holds.
inline constexpr std::uint32_t kLargestPayload = 0xA00000;

/// Cuts the bytes of a connection into packets, however they were cut or joined on their way.
class PacketParser {
   public:
    void Append(ByteView bytes) { pending_.insert(pending_.end(), bytes.begin(), bytes.end()); }

    /// The next whole packet; none when its bytes have not all arrived. Fails on a wrong magic
    /// number or an absurd length: the stream is lost then.
    [[nodiscard]] Result<std::optional<DevicePacket>> Next();

   private:
    Bytes pending_;
};

}  // namespace sontaro::simulator
