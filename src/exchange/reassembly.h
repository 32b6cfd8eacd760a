// Whole packets from the chunks that the links deliver.
#pragma once

#include <functional>

#include "link/packet.h"
#include "link/window_message.h"

namespace sontaro {

/// A complete reply and the player that it came from.
struct Reply {
    PacketHeader header;
    ByteView payload;
    Target sender;
    ConnectionNumber connection = 0;  ///< that its last piece came over
};

/// Collects one packet at a time out of the chunks of all links together. Players leave a pause
/// between two packets; what arrives joined is lost, and so is a packet that another link's
/// packet interrupts. User-interface thread.
class Reassembly {
   public:
    using PacketHandler = std::function<void(const Reply&)>;

    /// Payloads beyond this size are followed to their end but not kept.
    static constexpr std::size_t kLargestPayload = 64U << 20;

    /// `handler` gets every complete packet. It may run a modal dialog: chunks that arrive
    /// meanwhile are handled as any other.
    explicit Reassembly(PacketHandler handler) : handler_(std::move(handler)) {}

    /// Takes a link's event: data is collected, the end of a link or a failure discards what has
    /// been collected, unknown codes are ignored.
    void Handle(const LinkEvent& event);

   private:
    enum class State : std::uint8_t { kIdle = 16, kHeader = 32, kPayload = 64, kComplete = 128 };

    [[nodiscard]] bool Completes(ByteView chunk);
    void TakeHeader(ByteView chunk);
    void TakePayload(ByteView chunk);
    void Append(ByteView chunk);
    void Discard();
    void Deliver(const LinkEvent& event);

    PacketHandler handler_;
    State state_ = State::kIdle;
    PacketHeader header_;
    std::uint64_t received_ = 0;
    Bytes payload_;
};

}  // namespace sontaro
