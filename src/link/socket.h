// The socket calls of both platforms behind one face.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "base/bytes.h"

namespace sontaro {

/// An IPv4 address, its octets in the order they are written.
struct Ipv4Address {
    std::array<std::uint8_t, 4> octets{};

    // NOLINTNEXTLINE(modernize-use-nullptr): it takes the 0 of a comparison for a pointer
    auto operator<=>(const Ipv4Address&) const = default;
};

inline constexpr Ipv4Address kBroadcastAddress{{255, 255, 255, 255}};

/// The address that `text` ("192.168.1.20") stands for; none for anything else.
[[nodiscard]] std::optional<Ipv4Address> ParseIpv4(const std::string& text);
[[nodiscard]] std::string FormatIpv4(const Ipv4Address& address);

/// An address and a port in host order.
struct Endpoint {
    Ipv4Address address;
    std::uint16_t port = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): the zero is the comparison's own
    auto operator<=>(const Endpoint&) const = default;
};

/// How starting the platform's socket library went.
enum class NetworkStart { kReady, kFailed, kWrongVersion };

/// Starts the socket library (version 2.2 where it has versions); balanced by `StopNetwork`
/// unless it failed or had the wrong version.
[[nodiscard]] NetworkStart StartNetwork();
void StopNetwork();

/// The calling thread's last socket error, 0 when there is none.
[[nodiscard]] int LastSocketError();

/// What `Socket::Receive` says of an interrupted or momentarily empty receive.
[[nodiscard]] bool IsTransientReceiveError(int error);

/// A socket; closed on destruction. `Shutdown` may be called while another thread is in a call.
class Socket {
   public:
    using Handle = std::intptr_t;

    Socket() = default;
    ~Socket() { Close(); }
    Socket(Socket&& other) noexcept : handle_(std::exchange(other.handle_, kNone)) {}
    Socket& operator=(Socket&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }

    /// IPv4 stream (TCP) or datagram (UDP) sockets; not open on failure.
    [[nodiscard]] static Socket Tcp();
    [[nodiscard]] static Socket Udp();

    [[nodiscard]] bool IsOpen() const { return handle_ != kNone; }
    void Close();

    /// Options of a link before it connects: no lingering, 10 MiB buffers, and the send time-out
    /// in the eight-byte form that this system has always passed, whatever the platform makes of
    /// it.
    void SetLinkOptions();
    /// Drops the receive time-out.
    void ClearReceiveTimeout();
    /// Allows broadcasts and sets a 10 MiB receive buffer; false when either is refused.
    [[nodiscard]] bool SetDiscoveryOptions();
    /// Lets several sockets share one address and port, and keeps the socket on the loopback
    /// interface; for simulated players.
    [[nodiscard]] bool ShareLoopbackAddress();
    /// Lets a listening address be bound again while old connections of it linger.
    void AllowRebinding();
    /// Makes closing reset the connection instead of ending it orderly.
    void ResetOnClose();
    /// Sends every piece at once instead of joining small ones.
    void SendAtOnce();

    /// Connects within `limit`; false on refusal or time-out.
    [[nodiscard]] bool Connect(const Endpoint& remote, std::chrono::milliseconds limit);
    [[nodiscard]] bool Bind(const Endpoint& local);
    /// Binds to what is broadcast on `port`; some systems add what is sent to single addresses.
    [[nodiscard]] bool BindToBroadcasts(std::uint16_t port);
    /// A socket that listens for connections at `local`; not open on failure.
    [[nodiscard]] static Socket ListenAt(const Endpoint& local);
    /// The next connection of a listening socket; not open once the socket was shut down.
    [[nodiscard]] Socket Accept();
    /// Address and port that the socket is bound to.
    [[nodiscard]] Endpoint Local() const;

    /// Bytes sent, or a negative number; blocks. Never raises a signal.
    std::int64_t Send(ByteView bytes);
    std::int64_t SendTo(ByteView bytes, const Endpoint& destination);
    /// Bytes received, 0 when the peer has closed, or a negative number; blocks.
    std::int64_t Receive(std::span<std::uint8_t> buffer);
    std::int64_t ReceiveFrom(std::span<std::uint8_t> buffer, Endpoint& sender);

    /// Ends both directions and every blocked call.
    void Shutdown();

   private:
    static constexpr Handle kNone = -1;

    explicit Socket(Handle handle) : handle_(handle) {}

    Handle handle_ = kNone;
};

}  // namespace sontaro
