// Whole packets from the bytes of one connection, however they are cut or joined.
#pragma once

#include <functional>

#include "link/packet.h"
#include "session/session_end.h"

namespace sontaro {

/// Collects the packets of one connection. Keeps no more memory than has arrived. One thread.
class PacketStream {
   public:
    /// A payload beyond that is announced by nobody who means it.
    static constexpr std::size_t kLongestAnnounced = 64U << 20;

    using PacketHandler = std::function<void(const PacketHeader&, ByteView payload)>;

    /// Passes every packet on that is whole with this piece, in their order. `kNone` as long as all
    /// of it is packets; anything else is for good, and nothing more is taken. `handler` must not
    /// call the stream.
    [[nodiscard]] LinkTrouble Take(ByteView piece, const PacketHandler& handler);

    /// Whether a packet has begun that is not whole.
    [[nodiscard]] bool IsWithinPacket() const { return !collected_.empty(); }

   private:
    [[nodiscard]] std::size_t Collect(ByteView piece);
    [[nodiscard]] LinkTrouble Check() const;

    Bytes collected_;  // of the packet that is not whole, header and payload
    std::size_t wanted_ = kHeaderSize;
    LinkTrouble trouble_ = LinkTrouble::kNone;
};

}  // namespace sontaro
