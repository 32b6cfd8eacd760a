// Requests out of a byte stream.
#pragma once

#include <array>

#include "base/bytes.h"
#include "base/result.h"
#include "link/packet.h"

namespace sontaro::simulator {

/// Most payload bytes that a simulated player takes; what a request buffer of the tool holds.
inline constexpr std::uint32_t kLargestPayload = 0xA00000;

/// Cuts the bytes of a connection into packets, however they were cut or joined on their way. The
/// memory of a packet is used again for the next one: chunks of videos have megabytes.
class PacketParser {
   public:
    /// Takes bytes from the front of `bytes`, up to the end of a packet. That packet, until the
    /// next call; null when it is not whole yet. Fails on a wrong magic number or an absurd length:
    /// the stream is lost then.
    [[nodiscard]] Result<const DevicePacket*> Take(ByteView& bytes);

   private:
    /// Takes up to `count` bytes from the front.
    [[nodiscard]] static ByteView Cut(ByteView& bytes, std::size_t count);

    std::array<std::uint8_t, kHeaderSize> header_{};
    std::size_t headerBytes_ = 0;
    DevicePacket packet_{};
    bool isWhole_ = false;
};

}  // namespace sontaro::simulator
