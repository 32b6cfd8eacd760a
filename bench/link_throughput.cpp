#include <fmt/core.h>

#include <future>
#include <semaphore>
#include <stdexcept>
#include <thread>

#include "bench/figures.h"
#include "bench/no_prompts.h"
#include "bench/stopwatch.h"
#include "link/tcp_client.h"

namespace sontaro::bench {

namespace {

using namespace std::chrono_literals;

constexpr int kPackets = 64;
constexpr std::size_t kPacketSize = 8'192'016;
constexpr double kMegabytes = kPackets * (kPacketSize / 1e6);
constexpr Ipv4Address kLoopback{{127, 0, 0, 1}};

/// A peer that takes one connection and reads everything that a run sends.
class Sink {
   public:
    Sink() : listener_(Socket::ListenAt({kLoopback, 0})) {
        if (!listener_.IsOpen()) throw std::runtime_error("no port to listen at");
        reader_ = std::jthread([this] { Read(); });
    }

    [[nodiscard]] std::uint16_t Port() const { return listener_.Local().port; }

    /// Returns when the last byte has been read.
    void AwaitAll() { all_.get_future().get(); }

   private:
    void Read() {
        Socket peer = listener_.Accept();
        peer.SetLinkOptions();
        Bytes buffer(1U << 20);
        std::size_t received = 0;
        while (received < kPackets * kPacketSize) {
            const std::int64_t count = peer.Receive(buffer);
            if (count <= 0) break;
            received += static_cast<std::size_t>(count);
        }
        if (received == kPackets * kPacketSize) {
            all_.set_value();
        } else {
            all_.set_exception(std::make_exception_ptr(std::runtime_error("bytes are missing")));
        }
    }

    Socket listener_;
    std::promise<void> all_;
    std::jthread reader_;
};

/// A user interface that nobody sits at: link events go nowhere.
class NoUi : public UiThread {
   public:
    bool Call(const std::function<void()>&) override { return false; }
    void Close() override {}
};

/// Sends like any other, and says so whenever a packet has left the queue.
class AnnouncingIo : public LinkIo {
   public:
    std::int64_t Send(Socket& socket, ByteView bytes) override {
        taken_.release();
        return LinkIo::Send(socket, bytes);
    }
    void AwaitTaken() { taken_.acquire(); }

   private:
    std::counting_semaphore<> taken_{0};
};

double MegabytesPerSecondOfLink(const std::shared_ptr<const Bytes>& packet) {
    NoUi ui;
    WindowDirectory directory(ui);
    ThreadGroup threads;
    NoPrompts prompts;
    Sink sink;
    const auto io = std::make_shared<AnnouncingIo>();
    CTCPClient link("", {directory, threads, prompts, io});
    if (!link.Connect({FormatIpv4(kLoopback), sink.Port(), 0}))
        throw std::runtime_error("the link does not connect");
    const Stopwatch stopwatch;
    for (int i = 0; i < kPackets; ++i)
        while (!link.Queue(packet)) io->AwaitTaken();
    sink.AwaitAll();
    return kMegabytes / stopwatch.Seconds();
}

double MegabytesPerSecondOfBareCalls(const Bytes& packet) {
    Sink sink;
    Socket socket = Socket::Tcp();
    socket.SetLinkOptions();
    if (!socket.Connect({kLoopback, sink.Port()}, 1s))
        throw std::runtime_error("the bare socket does not connect");
    const Stopwatch stopwatch;
    for (int i = 0; i < kPackets; ++i)
        if (socket.Send(packet) != static_cast<std::int64_t>(packet.size()))
            throw std::runtime_error("a bare send was cut short");
    sink.AwaitAll();
    return kMegabytes / stopwatch.Seconds();
}

}  // namespace

Figure LinkThroughput() {
    constexpr int kRepetitions = 11;
    const auto packet = std::make_shared<const Bytes>(kPacketSize, std::uint8_t{0x5A});
    const Comparison speed = CompareInTurn(
        kRepetitions, [&] { return MegabytesPerSecondOfLink(packet); },
        [&] { return MegabytesPerSecondOfBareCalls(*packet); });
    return {"link_throughput", speed.ratio, Goal::kAtLeast, 0.8,
            fmt::format("link {:.0f} MB/s, bare calls {:.0f} MB/s", speed.ours, speed.baseline)};
}

}  // namespace sontaro::bench
