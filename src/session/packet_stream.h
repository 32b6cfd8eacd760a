// Whole packets from the bytes of one connection, however they are cut or joined.
#pragma once

#include <optional>
#include <vector>

#include "link/packet.h"
#include "session/session_end.h"

namespace sontaro {

/// Collects the packets of one connection. Keeps no more memory than has arrived. One thread.
class PacketStream {
   public:
    /// Appends every packet that is whole with this piece, in their order. `kNone` as long as all
    /// of it belongs to packets; anything else is for good, and nothing more is taken: `kGarbage`
    /// where no packet begins, `kTooLong` where more than `kLongestPayload` is announced.
    [[nodiscard]] LinkTrouble Take(ByteView piece, std::vector<DevicePacket>& packets);

    /// Whether a packet has begun that is not whole.
    [[nodiscard]] bool IsWithinPacket() const { return header_ || !collected_.empty(); }

   private:
    [[nodiscard]] LinkTrouble TakeHeader();

    std::optional<PacketHeader> header_;  // of the packet that is being collected
    Bytes collected_;                     // of the header, or of the payload behind it
    std::size_t wanted_ = kHeaderSize;    // of either
    LinkTrouble trouble_ = LinkTrouble::kNone;
};

}  // namespace sontaro
