#include "exchange/reassembly.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "bench/figures.h"
#include "bench/stopwatch.h"

namespace sontaro::bench {

namespace {

constexpr std::size_t kChunk = 1'460;
constexpr int kReplies = 500;  // a measurement

Bytes MakeReply() {
    PacketHeader header;
    header.command = kCommandPlayerData | kReplyBit;
    DevicePacket packet{header, Bytes(kPlayerDataSize, std::uint8_t{0x31})};
    packet.header.payloadLength = static_cast<std::uint32_t>(packet.payload.size());
    return packet.Serialize();
}

template <class Take>
void ForEachChunk(ByteView bytes, Take take) {
    for (std::size_t at = 0; at < bytes.size(); at += kChunk)
        take(at, bytes.subspan(at, std::min(kChunk, bytes.size() - at)));
}

double GigabytesPerSecond(const Bytes& reply, const Stopwatch& stopwatch) {
    return static_cast<double>(reply.size()) * kReplies / stopwatch.Seconds() / 1e9;
}

double SpeedOfReassembly(const Bytes& reply) {
    std::size_t payloadBytes = 0;
    Reassembly reassembly([&](const Reply& whole) { payloadBytes += whole.payload.size(); });
    LinkEvent event{"127.0.0.2", 5000, 0, LinkCode::kReceived, 0, {}};
    const Stopwatch stopwatch;
    for (int i = 0; i < kReplies; ++i)
        ForEachChunk(reply, [&](std::size_t, ByteView chunk) {
            event.bytes = chunk;
            reassembly.Handle(event);
        });
    const double speed = GigabytesPerSecond(reply, stopwatch);
    if (payloadBytes != kReplies * kPlayerDataSize) throw std::runtime_error("replies are missing");
    return speed;
}

double SpeedOfMemcpy(const Bytes& reply) {
    Bytes copy(reply.size());
    std::uint8_t* volatile destination = copy.data();  // keeps the compiler from skipping copies
    const Stopwatch stopwatch;
    for (int i = 0; i < kReplies; ++i)
        ForEachChunk(reply, [&](std::size_t at, ByteView chunk) {
            std::memcpy(destination + at, chunk.data(), chunk.size());
        });
    const double speed = GigabytesPerSecond(reply, stopwatch);
    if (copy != reply) throw std::runtime_error("bytes are missing");
    return speed;
}

}  // namespace

Figure ReassemblyThroughput() {
    constexpr int kRepetitions = 51;
    const Bytes reply = MakeReply();
    const Comparison speed = CompareInTurn(
        kRepetitions, [&] { return SpeedOfReassembly(reply); },
        [&] { return SpeedOfMemcpy(reply); });
    return {"reassembly", speed.ratio, Goal::kAtLeast, 0.5,
            fmt::format("reassembly {:.1f} GB/s, memcpy {:.1f} GB/s", speed.ours, speed.baseline)};
}

}  // namespace sontaro::bench
