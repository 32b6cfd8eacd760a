#include <cerrno>

#include "link/socket_native.h"

namespace sontaro {

void native::SetBlocking(Socket::Handle handle, bool blocking) {
    u_long nonBlocking = blocking ? 0 : 1;
    ioctlsocket(Of(handle), static_cast<long>(FIONBIO), &nonBlocking);
}

bool native::AwaitWritable(Socket::Handle handle, std::chrono::milliseconds limit) {
    fd_set writable;
    FD_ZERO(&writable);
    FD_SET(Of(handle), &writable);
    timeval wait{static_cast<long>(limit.count() / 1000),
                 static_cast<long>(limit.count() % 1000 * 1000)};
    return select(0, nullptr, &writable, nullptr, &wait) > 0;
}

NetworkStart StartNetwork() {
    WSADATA data{};
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) return NetworkStart::kFailed;
    if (data.wVersion == MAKEWORD(2, 2)) return NetworkStart::kReady;
    WSACleanup();
    return NetworkStart::kWrongVersion;
}

void StopNetwork() { WSACleanup(); }

int LastSocketError() { return WSAGetLastError(); }

bool IsTransientReceiveError(int error) {
    return error == EINTR || error == EAGAIN || error == EWOULDBLOCK || error == WSAEINTR ||
           error == WSAEWOULDBLOCK;
}

void Socket::Close() {
    if (IsOpen()) closesocket(native::Of(std::exchange(handle_, kNone)));
}

void Socket::SetLinkOptions() {
    const std::int32_t none = 0;
    native::SetOption(handle_, SOL_SOCKET, SO_LINGER, none);
    native::SetOption(handle_, SOL_SOCKET, SO_DONTLINGER, none);
    native::SetOption(handle_, SOL_SOCKET, SO_SNDBUF, native::kSocketBuffer);
    native::SetOption(handle_, SOL_SOCKET, SO_RCVBUF, native::kSocketBuffer);
    const std::int32_t fiveSeconds[2] = {5, 0};  // the eight-byte form is kept on purpose
    native::SetOption(handle_, SOL_SOCKET, SO_SNDTIMEO, fiveSeconds);
}

void Socket::ClearReceiveTimeout() {
    const std::int32_t none[2] = {0, 0};
    native::SetOption(handle_, SOL_SOCKET, SO_RCVTIMEO, none);
}

bool Socket::SetDiscoveryOptions() {
    return native::SetOption(handle_, SOL_SOCKET, SO_BROADCAST, std::uint8_t{1}) &&
           native::SetOption(handle_, SOL_SOCKET, SO_RCVBUF, native::kSocketBuffer);
}

/// Here no socket can be bound to the broadcast address itself.
bool Socket::BindToBroadcasts(std::uint16_t port) { return Bind({{{0, 0, 0, 0}}, port}); }

bool Socket::ShareLoopbackAddress() {
    return native::SetOption(handle_, SOL_SOCKET, SO_REUSEADDR, int{1});
}

/// Here the option would let two programs have the port at once.
void Socket::AllowRebinding() {}

void Socket::Shutdown() {
    shutdown(native::Of(handle_), SD_BOTH);
    CancelIoEx(reinterpret_cast<HANDLE>(handle_), nullptr);  // a blocked receive stays otherwise
}

}  // namespace sontaro
