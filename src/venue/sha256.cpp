#include "venue/sha256.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace sontaro {

namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
// clang-format off
constexpr std::uint32_t kRounds[64] = {
    0x428A2F98, 0x71374491, 0xB5C0FBCF, 0xE9B5DBA5, 0x3956C25B, 0x59F111F1, 0x923F82A4, 0xAB1C5ED5,
    0xD807AA98, 0x12835B01, 0x243185BE, 0x550C7DC3, 0x72BE5D74, 0x80DEB1FE, 0x9BDC06A7, 0xC19BF174,
    0xE49B69C1, 0xEFBE4786, 0x0FC19DC6, 0x240CA1CC, 0x2DE92C6F, 0x4A7484AA, 0x5CB0A9DC, 0x76F988DA,
    0x983E5152, 0xA831C66D, 0xB00327C8, 0xBF597FC7, 0xC6E00BF3, 0xD5A79147, 0x06CA6351, 0x14292967,
    0x27B70A85, 0x2E1B2138, 0x4D2C6DFC, 0x53380D13, 0x650A7354, 0x766A0ABB, 0x81C2C92E, 0x92722C85,
    0xA2BFE8A1, 0xA81A664B, 0xC24B8B70, 0xC76C51A3, 0xD192E819, 0xD6990624, 0xF40E3585, 0x106AA070,
    0x19A4C116, 0x1E376C08, 0x2748774C, 0x34B0BCB5, 0x391C0CB3, 0x4ED8AA4A, 0x5B9CCA4F, 0x682E6FF3,
    0x748F82EE, 0x78A5636F, 0x84C87814, 0x8CC70208, 0x90BEFFFA, 0xA4506CEB, 0xBEF9A3F7, 0xC67178F2};
// clang-format on

using Words = std::array<std::uint32_t, std::size(kRounds)>;

Words Schedule(const std::uint8_t* block) {
    Words words{};
    for (std::size_t i = 0; i < 16; ++i) {
        const std::uint8_t* bytes = block + 4 * i;
        words[i] = std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
                   std::uint32_t{bytes[2]} << 8 | bytes[3];
    }
    for (std::size_t i = 16; i < words.size(); ++i) {
        const std::uint32_t near = words[i - 2];
        const std::uint32_t far = words[i - 15];
        words[i] = words[i - 16] + (std::rotr(far, 7) ^ std::rotr(far, 18) ^ far >> 3) +
                   words[i - 7] + (std::rotr(near, 17) ^ std::rotr(near, 19) ^ near >> 10);
    }
    return words;
}

}  // namespace

void Sha256::AddBlock(const std::uint8_t* block) {
    const Words words = Schedule(block);
    std::array<std::uint32_t, 8> mixed = state_;
    // Eight rounds bring every word back to its place: none is moved.
    const auto round = [&](std::size_t number, std::size_t turn) {
        const auto word = [&](std::size_t place) -> std::uint32_t& {
            return mixed[(place + 8 - turn) % 8];
        };
        const std::uint32_t head = word(0);
        const std::uint32_t middle = word(4);
        const std::uint32_t first =
            word(7) + (std::rotr(middle, 6) ^ std::rotr(middle, 11) ^ std::rotr(middle, 25)) +
            ((middle & word(5)) ^ (~middle & word(6))) + kRounds[number] + words[number];
        word(3) += first;
        word(7) = first + (std::rotr(head, 2) ^ std::rotr(head, 13) ^ std::rotr(head, 22)) +
                  ((head & word(1)) ^ (head & word(2)) ^ (word(1) & word(2)));
    };
    for (std::size_t i = 0; i < words.size(); i += 8) {
        round(i, 0);
        round(i + 1, 1);
        round(i + 2, 2);
        round(i + 3, 3);
        round(i + 4, 4);
        round(i + 5, 5);
        round(i + 6, 6);
        round(i + 7, 7);
    }
    for (std::size_t i = 0; i < state_.size(); ++i) state_[i] += mixed[i];
}

void Sha256::Add(std::string_view bytes) {
    bytes_ += bytes.size();
    while (!bytes.empty()) {
        const auto* begin = reinterpret_cast<const std::uint8_t*>(bytes.data());
        if (waitingBytes_ == 0 && bytes.size() >= kBlockBytes) {
            AddBlock(begin);
            bytes.remove_prefix(kBlockBytes);
            continue;
        }
        const std::size_t taken = std::min(bytes.size(), kBlockBytes - waitingBytes_);
        std::memcpy(waiting_.data() + waitingBytes_, begin, taken);
        bytes.remove_prefix(taken);
        waitingBytes_ = (waitingBytes_ + taken) % kBlockBytes;
        if (waitingBytes_ == 0) AddBlock(waiting_.data());
    }
}

Sha256::Digest Sha256::Finish() {
    const std::uint64_t bits = 8 * bytes_;
    constexpr std::size_t kLengthBytes = 8;
    std::string tail = "\x80";
    while ((waitingBytes_ + tail.size() + kLengthBytes) % kBlockBytes != 0) tail += '\0';
    for (std::size_t i = 0; i < kLengthBytes; ++i)
        tail += static_cast<char>(bits >> 8 * (kLengthBytes - 1 - i) & 0xFF);
    Add(tail);
    Digest digest{};
    for (std::size_t i = 0; i < digest.size(); ++i)
        digest[i] = static_cast<std::uint8_t>(state_[i / 4] >> 8 * (3 - i % 4));
    return digest;
}

std::string Sha256Text(std::string_view bytes) {
    Sha256 sum;
    sum.Add(bytes);
    std::string text;
    for (const std::uint8_t byte : sum.Finish())
        (text += kDigits[byte >> 4]) += kDigits[byte & 0x0F];
    return text;
}

bool IsSha256Text(std::string_view text) {
    return text.size() == 2 * Sha256::kBytes &&
           text.find_first_not_of(kDigits) == std::string_view::npos;
}

}  // namespace sontaro
