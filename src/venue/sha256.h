// The checksum SHA-256 (FIPS 180-4), by which a backup knows its files.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace sontaro {

/// Takes bytes in pieces of any size.
class Sha256 {
   public:
    static constexpr std::size_t kBytes = 32;
    using Digest = std::array<std::uint8_t, kBytes>;

    void Add(std::string_view bytes);
    /// Of all bytes so far; nothing may be added afterwards.
    [[nodiscard]] Digest Finish();

   private:
    static constexpr std::size_t kBlockBytes = 64;

    void AddBlock(const std::uint8_t* block);

    std::array<std::uint32_t, 8> state_ = {0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A,
                                           0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};
    std::array<std::uint8_t, kBlockBytes> waiting_ = {};  // bytes of a block that is not whole
    std::size_t waitingBytes_ = 0;
    std::uint64_t bytes_ = 0;
};

/// The checksum of `bytes` in 64 hexadecimal digits, small letters.
[[nodiscard]] std::string Sha256Text(std::string_view bytes);

/// Whether `text` is such a checksum.
[[nodiscard]] bool IsSha256Text(std::string_view text);

}  // namespace sontaro
