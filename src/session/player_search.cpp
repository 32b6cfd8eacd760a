#include "session/player_search.h"

#include <algorithm>
#include <charconv>
#include <memory>

#include "base/local_text.h"
#include "base/thread_group.h"
#include "devices/scan_run.h"
#include "exchange/plain_loop.h"
#include "link/discovery.h"
#include "link/local_adapters.h"

namespace sontaro {

namespace {

using namespace std::chrono_literals;

constexpr LocalText kNoAddress = {"本机没有可用于查找的地址。",
                                  "This machine has no address to search from."};
constexpr LocalText kNotBound = {"无法从本机地址 %s 查找。",
                                 "It is not possible to search from the local address %s."};

/// Between two requests: a hundred a second.
constexpr auto kBetweenRequests = 10ms;
/// Between the two ports of one request.
constexpr auto kBetweenPorts = 20ms;

/// A bound socket and the thread that hands what comes over to the loop.
class SearchSocket {
   public:
    using Heard = std::function<void(ByteView)>;

    SearchSocket(PlainLoop& loop, Heard heard) : loop_(loop), heard_(std::move(heard)) {}
    SearchSocket(const SearchSocket&) = delete;
    SearchSocket& operator=(const SearchSocket&) = delete;
    ~SearchSocket() {
        ended_ = true;
        if (socket_.IsOpen()) socket_.Shutdown();
        thread_.Join();
    }

    [[nodiscard]] bool Open(const Ipv4Address& local) {
        socket_ = Socket::Udp();
        return socket_.IsOpen() && socket_.SetDiscoveryOptions() && socket_.Bind({local, 0}) &&
               thread_.Start([this] { Receive(); });
    }
    bool Send(const Endpoint& destination, const Bytes& request) {
        return socket_.SendTo(request, destination) == static_cast<std::int64_t>(request.size());
    }

   private:
    void Receive() {
        constexpr std::size_t kLongestDatagram = 65'536;
        Bytes buffer(kLongestDatagram);
        while (!ended_) {
            Endpoint sender;
            const std::int64_t count = socket_.ReceiveFrom(buffer, sender);
            // What says that a request has reached nobody comes as an error of a receive.
            if (count <= 0) continue;
            const ByteView datagram(buffer.data(), static_cast<std::size_t>(count));
            if (!loop_.Call([&] { heard_(datagram); })) return;
        }
    }

    PlainLoop& loop_;
    const Heard heard_;
    Socket socket_;
    std::atomic<bool> ended_ = false;
    ThreadGroup thread_;
};

}  // namespace
}  // namespace sontaro
