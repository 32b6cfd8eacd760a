#include "link/tcp_client.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace sontaro {

namespace {

using namespace std::chrono_literals;

constexpr auto kConnectLimit = 1000ms;
constexpr auto kSettleTime = 200ms;
constexpr auto kSendingLimit = 1000ms;  // of what is queued when the owner closes
constexpr auto kShutdownPause = 50ms;
constexpr auto kClosePause = 100ms;
constexpr auto kDestructionPause = 300ms;

ConnectionNumber NextNumber() {
    static std::atomic<ConnectionNumber> last = 0;
    return ++last;
}

}  // namespace

/// A socket with its two threads, alive as long as one of them runs. The socket is closed with
/// the last of them: closing it under a thread that is in a call would let the system give its
/// number to another socket.
class CTCPClient::Connection {
   public:
    Connection(std::string eventWindow, LinkServices services, Target target)
        : eventWindow_(std::move(eventWindow)),
          services_(std::move(services)),
          target_(std::move(target)),
          tag_(target_.deviceTag),
          receiveBuffer_(std::make_unique_for_overwrite<std::uint8_t[]>(kBufferSize)) {}

    [[nodiscard]] bool Open() {
        const std::optional<Ipv4Address> address = ParseIpv4(target_.ip);
        socket_ = Socket::Tcp();
        if (!address || !socket_.IsOpen()) return false;
        socket_.SetLinkOptions();
        return socket_.Connect({*address, target_.port}, kConnectLimit);
    }

    [[nodiscard]] static bool StartThreads(const std::shared_ptr<Connection>& self) {
        ThreadGroup& threads = self->services_.threads;
        const bool started = threads.Start([self] { self->ReceiveLoop(); }) &&
                             threads.Start([self] { self->SendLoop(); });
        if (!started) self->Close();
        self->sendEvent_.Signal();
        return started;
    }

    /// After the threads have settled: true when the connection is still there.
    [[nodiscard]] bool Establish() {
        if (receiveEnded_) Close();
        addressKnown_ = true;
        connected_ = true;
        if (!closing_) return true;
        ForgetPeer();
        return false;
    }

    void ForgetPeer() {
        connected_ = false;
        addressKnown_ = false;
    }

    /// On the owner's wish; what is queued goes out first. The peer's end does not wait for it.
    void SendAndClose() {
        if (!leaving_.exchange(true)) outbox_.WaitUntilEmpty(kSendingLimit);
        Close();
    }

    void Close() {
        if (closing_.exchange(true)) return;
        outbox_.Abandon();
        addressKnown_ = false;
        running_ = false;
        sendEvent_.Signal();
        socket_.ClearReceiveTimeout();
        std::this_thread::sleep_for(kShutdownPause);
        socket_.Shutdown();
        std::this_thread::sleep_for(kShutdownPause);
        Release();
        std::this_thread::sleep_for(kClosePause);
    }

    [[nodiscard]] Sending Queue(SharedPacket packet) {
        const std::size_t size = packet->size();
        if (!running_ || leaving_ || receiveEnded_) return NotSent::kNotRunning;
        if (!outbox_.Push(std::move(packet), size, kBufferSize)) return NotSent::kTooMuchWaiting;
        sendEvent_.Signal();
        return Sending::Over(number_);
    }

    void SetDeviceTag(std::uint16_t tag) { tag_ = tag; }
    [[nodiscard]] bool IsConnected() const { return connected_; }
    [[nodiscard]] bool HasSocket() const { return hasSocket_; }
    [[nodiscard]] const std::string& PeerIp() const { return target_.ip; }
    [[nodiscard]] std::string RemoteIp() const { return addressKnown_ ? target_.ip : ""; }

   private:
    void Release() {
        hasSocket_ = false;
        connected_ = false;
    }

    void SendLoop() {
        while (running_) {
            switch (services_.io->WaitToSend(sendEvent_)) {
                case WaitResult::kSignalled: SendWaiting(); break;
                case WaitResult::kTimedOut: FailSending(LinkCode::kSendWaitTimedOut); break;
                case WaitResult::kFailed: FailSending(LinkCode::kSendWaitFailed); break;
            }
        }
    }

    void SendWaiting() {
        while (running_) {
            const auto packet = outbox_.Take();
            if (!packet) return;
            const auto size = static_cast<std::int64_t>((*packet)->size());
            if (services_.io->Send(socket_, **packet) != size) FailSending(LinkCode::kShortSend);
        }
    }

    void FailSending(LinkCode code) {
        outbox_.Abandon();
        ReportFailure(code, 0);
        if (connected_) Close();
    }

    void ReceiveLoop() {
        while (running_ && ReceiveOnce()) {
        }
        Close();    // whatever ended the loop: a dead connection must not block its slot,
        Release();  // nor does it while the send thread is still closing
        ReportFailure(LinkCode::kReceiveEnded, LastSocketError());
    }

    /// False when the loop is to end.
    bool ReceiveOnce() try {
        const std::int64_t count =
            services_.io->Receive(socket_, {receiveBuffer_.get(), kBufferSize});
        const int error = LastSocketError();
        if (count > 0) {
            Report(LinkCode::kReceived, 0, {receiveBuffer_.get(), static_cast<std::size_t>(count)});
            return true;
        }
        if (count < 0 && IsTransientReceiveError(error)) return true;
        outbox_.Abandon();
        receiveEnded_ = true;  // before the report, which waits for a thread that may be in Connect
        if (count == 0)
            ReportFailure(LinkCode::kPeerClosed, 0);
        else
            ReportFailure(LinkCode::kReceiveFailed, error);
        return false;
    } catch (const std::exception&) {
        ReportFailure(LinkCode::kReceiveException, LastSocketError());
        if (connected_) Close();
        return true;
    }

    void Report(LinkCode code, int error, ByteView bytes) {
        LinkEvent event{target_.ip, target_.port, tag_, code, static_cast<std::uint16_t>(error),
                        bytes,      number_};
        services_.directory.Send(eventWindow_,
                                 {MessageId::kLinkEvent, event.deviceTag, std::move(event), 0});
    }

    void ReportFailure(LinkCode code, int error) try {
        Report(code, error, {});
    } catch (const std::exception&) {
        // The window failed at the news of a failure: there is no one left to tell.
    }

    const std::string eventWindow_;
    LinkServices services_;
    const Target target_;
    Socket socket_;
    AutoResetEvent sendEvent_;
    Outbox<SharedPacket> outbox_;
    const ConnectionNumber number_ = NextNumber();
    std::atomic<std::uint16_t> tag_;
    std::atomic<bool> running_ = true;
    std::atomic<bool> connected_ = false;
    std::atomic<bool> addressKnown_ = false;
    std::atomic<bool> hasSocket_ = true;
    std::atomic<bool> receiveEnded_ = false;
    std::atomic<bool> leaving_ = false;  // the owner has had enough
    std::atomic<bool> closing_ = false;
    const std::unique_ptr<std::uint8_t[]> receiveBuffer_;
};

CTCPClient::CTCPClient(std::string eventWindow, LinkServices services)
    : eventWindow_(std::move(eventWindow)), services_(std::move(services)), network_(services_) {}

CTCPClient::~CTCPClient() {
    Close();
    std::this_thread::sleep_for(kDestructionPause);
}

bool CTCPClient::Connect(const Target& target) {
    if (const auto present = connection_.lock(); present && present->HasSocket()) {
        present->ForgetPeer();
        return true;
    }
    const auto connection = std::make_shared<Connection>(eventWindow_, services_, target);
    if (!connection->Open() || !Connection::StartThreads(connection)) return false;
    connection_ = connection;
    std::this_thread::sleep_for(kSettleTime);
    return connection->Establish();
}

void CTCPClient::Close() {
    if (const auto connection = connection_.lock()) connection->SendAndClose();
}

Sending CTCPClient::Queue(SharedPacket packet) {
    const auto connection = connection_.lock();
    return connection ? connection->Queue(std::move(packet)) : NotSent::kNotRunning;
}

void CTCPClient::SetDeviceTag(std::uint16_t tag) {
    if (const auto connection = connection_.lock()) connection->SetDeviceTag(tag);
}

bool CTCPClient::IsConnected() const {
    const auto connection = connection_.lock();
    return connection && connection->IsConnected();
}

bool CTCPClient::HasSocket() const {
    const auto connection = connection_.lock();
    return connection && connection->HasSocket();
}

std::string CTCPClient::PeerIp() const {
    const auto connection = connection_.lock();
    return connection && connection->HasSocket() ? connection->PeerIp() : "";
}

std::string CTCPClient::RemoteIp() const {
    const auto connection = connection_.lock();
    return connection ? connection->RemoteIp() : "";
}

}  // namespace sontaro
