#include "link/udp_server.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace sontaro {

namespace {

using namespace std::chrono_literals;

constexpr auto kSettleTime = 200ms;
constexpr auto kClosePause = 100ms;
constexpr auto kReleasePause = 300ms;

}  // namespace

/// The bound socket with its two threads.
class CUDPServer::Channel {
   public:
    Channel(std::string eventWindow, LinkServices services)
        : eventWindow_(std::move(eventWindow)),
          services_(std::move(services)),
          receiveBuffer_(std::make_unique_for_overwrite<std::uint8_t[]>(kBufferSize)) {}

    [[nodiscard]] bool Bind(const std::string& localIp) {
        const std::optional<Ipv4Address> address = ParseIpv4(localIp);
        socket_ = Socket::Udp();
        return address && socket_.IsOpen() && socket_.SetDiscoveryOptions() &&
               socket_.Bind({*address, 0});
    }

    [[nodiscard]] static bool StartThreads(const std::shared_ptr<Channel>& self) {
        ThreadGroup& threads = self->services_.threads;
        const bool started = threads.Start([self] { self->ReceiveLoop(); }) &&
                             threads.Start([self] { self->SendLoop(); });
        self->sendEvent_.Signal();
        return started;
    }

    void SetConnected() { connected_ = true; }
    [[nodiscard]] bool IsConnected() const { return connected_; }

    [[nodiscard]] bool Queue(const Endpoint& destination, Bytes datagram) {
        const std::size_t size = datagram.size();
        if (!running_ || !outbox_.Push({destination, std::move(datagram)}, size, kBufferSize))
            return false;
        sendEvent_.Signal();
        return true;
    }

    /// No event is reported once this has been called.
    void Stop() { running_ = false; }

    /// The rest of closing, with the pauses that let both threads leave first. On a thread of its
    /// own, so that a dialog closes without a delay.
    void Release() {
        std::this_thread::sleep_for(kClosePause);
        sendEvent_.Signal();
        std::this_thread::sleep_for(kClosePause);
        socket_.Shutdown();
        std::this_thread::sleep_for(kClosePause + kReleasePause);
        connected_ = false;
    }

   private:
    struct Datagram {
        Endpoint destination;
        Bytes bytes;
    };

    void SendLoop() {
        while (running_) {
            switch (services_.io->WaitToSend(sendEvent_)) {
                case WaitResult::kSignalled: SendWaiting(); break;
                case WaitResult::kTimedOut: Report(LinkCode::kSendWaitTimedOut, 0); break;
                case WaitResult::kFailed: Report(LinkCode::kSendWaitFailed, 0); break;
            }
        }
    }

    void SendWaiting() {
        while (running_) {
            const auto datagram = outbox_.Take();
            if (!datagram) return;
            const auto size = static_cast<std::int64_t>(datagram->bytes.size());
            if (services_.io->SendTo(socket_, datagram->bytes, datagram->destination) != size)
                Report(LinkCode::kShortSend, 0);
        }
    }

    void ReceiveLoop() {
        while (running_) ReceiveOnce();
        connected_ = false;
    }

    void ReceiveOnce() try {
        Endpoint sender;
        const std::int64_t count =
            services_.io->ReceiveFrom(socket_, {receiveBuffer_.get(), kBufferSize}, sender);
        if (count > 0) {
            Report(LinkCode::kReceived, 0, sender,
                   {receiveBuffer_.get(), static_cast<std::size_t>(count)});
        } else if (count == 0) {
            Report(LinkCode::kPeerClosed, 0, sender);
        } else if (count == -1) {
            Report(LinkCode::kReceiveFailed, LastSocketError());
        }
    } catch (const std::exception&) {
        Report(LinkCode::kReceiveException, LastSocketError());
    }

    /// An exception of the window is shown: it must not end the thread, and nobody else sees it.
    void Report(LinkCode code, int error, const Endpoint& sender = {}, ByteView bytes = {}) try {
        if (!running_ || eventWindow_.empty()) return;
        services_.directory.Send(eventWindow_, {MessageId::kUdpEvent, 0,
                                                UdpEvent{sender.address.octets, sender.port, code,
                                                         static_cast<std::uint16_t>(error), bytes},
                                                0});
    } catch (const std::exception& exception) {
        services_.directory.Call(
            [&, text = std::string(exception.what())] { services_.prompts.Warn(text); });
    }

    const std::string eventWindow_;
    LinkServices services_;
    Socket socket_;
    AutoResetEvent sendEvent_;
    Outbox<Datagram> outbox_;
    std::atomic<bool> running_ = true;
    std::atomic<bool> connected_ = false;
    const std::unique_ptr<std::uint8_t[]> receiveBuffer_;
};

CUDPServer::CUDPServer(std::string eventWindow, LinkServices services)
    : eventWindow_(std::move(eventWindow)), services_(std::move(services)), network_(services_) {}

CUDPServer::~CUDPServer() { Close(); }

bool CUDPServer::Open(const std::string& localIp) {
    if (channel_) return true;
    const auto channel = std::make_shared<Channel>(eventWindow_, services_);
    if (!channel->Bind(localIp)) return false;
    channel_ = channel;
    if (!Channel::StartThreads(channel)) {
        Close();
        return false;
    }
    std::this_thread::sleep_for(kSettleTime);
    channel->SetConnected();
    return true;
}

void CUDPServer::Close() {
    const std::shared_ptr<Channel> channel = std::exchange(channel_, nullptr);
    if (!channel) return;
    channel->Stop();
    if (!services_.threads.Start([channel] { channel->Release(); })) channel->Release();
}

bool CUDPServer::Send(const Endpoint& destination, Bytes datagram) {
    return channel_ && channel_->Queue(destination, std::move(datagram));
}

bool CUDPServer::IsConnected() const { return channel_ && channel_->IsConnected(); }

}  // namespace sontaro
