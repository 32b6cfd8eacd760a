// What both platforms' sockets have in common.
#include "link/socket.h"

#include <algorithm>

#include "link/socket_native.h"

namespace sontaro {

namespace {

sockaddr_in ToNative(const Endpoint& endpoint) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(endpoint.port);
    std::ranges::copy(endpoint.address.octets, reinterpret_cast<std::uint8_t*>(&address.sin_addr));
    return address;
}

const sockaddr* AsAddress(const sockaddr_in& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

sockaddr* AsAddress(sockaddr_in& address) { return reinterpret_cast<sockaddr*>(&address); }

/// Whether a connect in progress has succeeded within `limit`.
bool AwaitConnected(Socket::Handle handle, std::chrono::milliseconds limit) {
    if (!native::AwaitWritable(handle, limit)) return false;
    int error = 0;
    socklen_t size = sizeof error;
    return getsockopt(native::Of(handle), SOL_SOCKET, SO_ERROR,
                      reinterpret_cast<native::Data>(&error), &size) == 0 &&
           error == 0;
}

}  // namespace

Endpoint native::ToEndpoint(const sockaddr_in& address) {
    Endpoint endpoint;
    endpoint.port = ntohs(address.sin_port);
    const auto* octets = reinterpret_cast<const std::uint8_t*>(&address.sin_addr);
    std::copy_n(octets, endpoint.address.octets.size(), endpoint.address.octets.begin());
    return endpoint;
}

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

Socket Socket::Tcp() {
    return Socket(
        static_cast<Handle>(socket(AF_INET, SOCK_STREAM | native::kNotInherited, IPPROTO_TCP)));
}

Socket Socket::Udp() {
    return Socket(
        static_cast<Handle>(socket(AF_INET, SOCK_DGRAM | native::kNotInherited, IPPROTO_UDP)));
}

void Socket::ResetOnClose() { native::SetOption(handle_, SOL_SOCKET, SO_LINGER, linger{1, 0}); }

void Socket::SendAtOnce() { native::SetOption(handle_, IPPROTO_TCP, TCP_NODELAY, int{1}); }

bool Socket::Connect(const Endpoint& remote, std::chrono::milliseconds limit) {
    const sockaddr_in address = ToNative(remote);
    native::SetBlocking(handle_, false);
    const bool connected = connect(native::Of(handle_), AsAddress(address), sizeof address) == 0 ||
                           AwaitConnected(handle_, limit);
    if (connected) native::SetBlocking(handle_, true);
    return connected;
}

bool Socket::Bind(const Endpoint& local) {
    const sockaddr_in address = ToNative(local);
    return bind(native::Of(handle_), AsAddress(address), sizeof address) == 0;
}

Socket Socket::ListenAt(const Endpoint& local) {
    Socket socket = Tcp();
    socket.AllowRebinding();
    if (!socket.Bind(local) || listen(native::Of(socket.handle_), SOMAXCONN) != 0) socket.Close();
    return socket;
}

Socket Socket::Accept() {
    return Socket(static_cast<Handle>(accept(native::Of(handle_), nullptr, nullptr)));
}

Endpoint Socket::Local() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(native::Of(handle_), AsAddress(address), &size);
    return native::ToEndpoint(address);
}

std::int64_t Socket::Send(ByteView bytes) {
    return send(native::Of(handle_), reinterpret_cast<native::ConstData>(bytes.data()),
                static_cast<native::DataSize>(bytes.size()), native::kNoSignal);
}

std::int64_t Socket::SendTo(ByteView bytes, const Endpoint& destination) {
    const sockaddr_in address = ToNative(destination);
    return sendto(native::Of(handle_), reinterpret_cast<native::ConstData>(bytes.data()),
                  static_cast<native::DataSize>(bytes.size()), native::kNoSignal,
                  AsAddress(address), sizeof address);
}

std::int64_t Socket::Receive(std::span<std::uint8_t> buffer) {
    return recv(native::Of(handle_), reinterpret_cast<native::Data>(buffer.data()),
                static_cast<native::DataSize>(buffer.size()), 0);
}

std::int64_t Socket::ReceiveFrom(std::span<std::uint8_t> buffer, Endpoint& sender) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    const auto count =
        recvfrom(native::Of(handle_), reinterpret_cast<native::Data>(buffer.data()),
                 static_cast<native::DataSize>(buffer.size()), 0, AsAddress(address), &size);
    if (count >= 0) sender = native::ToEndpoint(address);
    return count;
}

}  // namespace sontaro
