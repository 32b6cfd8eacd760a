#include <arpa/inet.h>
#include <fcntl.h>
#include <net/if.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "link/socket.h"

namespace sontaro {

namespace {

constexpr int kSocketBuffer = 0xA00000;

template <class Value>
bool SetOption(Socket::Handle handle, int option, const Value& value) {
    return setsockopt(static_cast<int>(handle), SOL_SOCKET, option, &value, sizeof value) == 0;
}

sockaddr_in ToNative(const Endpoint& endpoint) {
    sockaddr_in native{};
    native.sin_family = AF_INET;
    native.sin_port = htons(endpoint.port);
    std::ranges::copy(endpoint.address.octets, reinterpret_cast<std::uint8_t*>(&native.sin_addr));
    return native;
}

Endpoint FromNative(const sockaddr_in& native) {
    Endpoint endpoint;
    endpoint.port = ntohs(native.sin_port);
    const auto* octets = reinterpret_cast<const std::uint8_t*>(&native.sin_addr);
    std::copy_n(octets, endpoint.address.octets.size(), endpoint.address.octets.begin());
    return endpoint;
}

void SetBlocking(int handle, bool blocking) {
    const int flags = fcntl(handle, F_GETFL);
    fcntl(handle, F_SETFL, blocking ? flags & ~O_NONBLOCK : flags | O_NONBLOCK);
}

/// Whether a connect in progress has succeeded within `limit`.
bool AwaitConnected(int handle, std::chrono::milliseconds limit) {
    pollfd writable{handle, POLLOUT, 0};
    if (poll(&writable, 1, static_cast<int>(limit.count())) <= 0) return false;
    int error = 0;
    socklen_t size = sizeof error;
    return getsockopt(handle, SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

}  // namespace

std::optional<Ipv4Address> ParseIpv4(const std::string& text) {
    Ipv4Address address;
    if (inet_pton(AF_INET, text.c_str(), address.octets.data()) != 1) return std::nullopt;
    return address;
}

std::string FormatIpv4(const Ipv4Address& address) {
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, address.octets.data(), text, sizeof text);
    return text;
}

NetworkStart StartNetwork() { return NetworkStart::kReady; }

void StopNetwork() {}

int LastSocketError() { return errno; }

bool IsTransientReceiveError(int error) {
    constexpr int kWouldBlockElsewhere = 140;  // EWOULDBLOCK of other C runtimes
    return error == EINTR || error == EAGAIN || error == kWouldBlockElsewhere;
}

Socket Socket::Tcp() { return Socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, IPPROTO_TCP)); }

Socket Socket::Udp() { return Socket(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP)); }

void Socket::Close() {
    if (IsOpen()) close(static_cast<int>(std::exchange(handle_, kNone)));
}

void Socket::SetLinkOptions() {
    SetOption(handle_, SO_LINGER, linger{0, 0});
    SetOption(handle_, SO_SNDBUF, kSocketBuffer);
    SetOption(handle_, SO_RCVBUF, kSocketBuffer);
    // Eight bytes are not this platform's form and are refused. That is wanted: a send time-out
    // of five seconds would break the upload of large files.
    const std::int32_t fiveSeconds[2] = {5, 0};
    SetOption(handle_, SO_SNDTIMEO, fiveSeconds);
}

void Socket::ClearReceiveTimeout() {
    const std::int32_t none[2] = {0, 0};
    SetOption(handle_, SO_RCVTIMEO, none);
}

bool Socket::SetDiscoveryOptions() {
    return SetOption(handle_, SO_BROADCAST, int{1}) &&
           SetOption(handle_, SO_RCVBUF, kSocketBuffer);
}

bool Socket::ShareLoopbackAddress() {
    const ifreq loopback = [] {
        ifreq request{};
        std::copy_n("lo", 3, request.ifr_name);
        return request;
    }();
    return SetOption(handle_, SO_REUSEADDR, int{1}) &&
           SetOption(handle_, SO_BINDTODEVICE, loopback);
}

void Socket::ResetOnClose() { SetOption(handle_, SO_LINGER, linger{1, 0}); }

void Socket::SendAtOnce() {
    const int enabled = 1;
    setsockopt(static_cast<int>(handle_), IPPROTO_TCP, TCP_NODELAY, &enabled, sizeof enabled);
}

bool Socket::Connect(const Endpoint& remote, std::chrono::milliseconds limit) {
    const auto handle = static_cast<int>(handle_);
    const sockaddr_in native = ToNative(remote);
    SetBlocking(handle, false);
    const bool connected =
        connect(handle, reinterpret_cast<const sockaddr*>(&native), sizeof native) == 0 ||
        AwaitConnected(handle, limit);
    if (connected) SetBlocking(handle, true);
    return connected;
}

bool Socket::Bind(const Endpoint& local) {
    const sockaddr_in native = ToNative(local);
    return bind(static_cast<int>(handle_), reinterpret_cast<const sockaddr*>(&native),
                sizeof native) == 0;
}

Socket Socket::ListenAt(const Endpoint& local) {
    Socket socket = Tcp();
    SetOption(socket.handle_, SO_REUSEADDR, int{1});
    if (!socket.Bind(local) || listen(static_cast<int>(socket.handle_), SOMAXCONN) != 0)
        socket.Close();
    return socket;
}

Socket Socket::Accept() {
    return Socket(accept4(static_cast<int>(handle_), nullptr, nullptr, SOCK_CLOEXEC));
}

Endpoint Socket::Local() const {
    sockaddr_in native{};
    socklen_t size = sizeof native;
    getsockname(static_cast<int>(handle_), reinterpret_cast<sockaddr*>(&native), &size);
    return FromNative(native);
}

std::int64_t Socket::Send(ByteView bytes) {
    return send(static_cast<int>(handle_), bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

std::int64_t Socket::SendTo(ByteView bytes, const Endpoint& destination) {
    const sockaddr_in native = ToNative(destination);
    return sendto(static_cast<int>(handle_), bytes.data(), bytes.size(), MSG_NOSIGNAL,
                  reinterpret_cast<const sockaddr*>(&native), sizeof native);
}

std::int64_t Socket::Receive(std::span<std::uint8_t> buffer) {
    return recv(static_cast<int>(handle_), buffer.data(), buffer.size(), 0);
}

std::int64_t Socket::ReceiveFrom(std::span<std::uint8_t> buffer, Endpoint& sender) {
    sockaddr_in native{};
    socklen_t size = sizeof native;
    const ssize_t count = recvfrom(static_cast<int>(handle_), buffer.data(), buffer.size(), 0,
                                   reinterpret_cast<sockaddr*>(&native), &size);
    if (count >= 0) sender = FromNative(native);
    return count;
}

void Socket::Shutdown() { shutdown(static_cast<int>(handle_), SHUT_RDWR); }

}  // namespace sontaro
