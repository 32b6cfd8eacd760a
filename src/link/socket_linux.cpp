#include <fcntl.h>
#include <net/if.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "link/socket_native.h"

namespace sontaro {

void native::SetBlocking(Socket::Handle handle, bool blocking) {
    const int flags = fcntl(Of(handle), F_GETFL);
    fcntl(Of(handle), F_SETFL, blocking ? flags & ~O_NONBLOCK : flags | O_NONBLOCK);
}

bool native::AwaitWritable(Socket::Handle handle, std::chrono::milliseconds limit) {
    pollfd writable{Of(handle), POLLOUT, 0};
    return poll(&writable, 1, static_cast<int>(limit.count())) > 0;
}

NetworkStart StartNetwork() { return NetworkStart::kReady; }

void StopNetwork() {}

int LastSocketError() { return errno; }

bool IsTransientReceiveError(int error) {
    constexpr int kWouldBlockElsewhere = 140;  // EWOULDBLOCK of other C runtimes
    return error == EINTR || error == EAGAIN || error == kWouldBlockElsewhere;
}

void Socket::Close() {
    if (IsOpen()) close(native::Of(std::exchange(handle_, kNone)));
}

void Socket::SetLinkOptions() {
    native::SetOption(handle_, SOL_SOCKET, SO_LINGER, linger{0, 0});
    native::SetOption(handle_, SOL_SOCKET, SO_SNDBUF, native::kSocketBuffer);
    native::SetOption(handle_, SOL_SOCKET, SO_RCVBUF, native::kSocketBuffer);
    // Eight bytes are not this platform's form and are refused. That is wanted: a send time-out
    // of five seconds would break the upload of large files.
    const std::int32_t fiveSeconds[2] = {5, 0};
    native::SetOption(handle_, SOL_SOCKET, SO_SNDTIMEO, fiveSeconds);
}

void Socket::ClearReceiveTimeout() {
    const std::int32_t none[2] = {0, 0};
    native::SetOption(handle_, SOL_SOCKET, SO_RCVTIMEO, none);
}

bool Socket::SetDiscoveryOptions() {
    return native::SetOption(handle_, SOL_SOCKET, SO_BROADCAST, int{1}) &&
           native::SetOption(handle_, SOL_SOCKET, SO_RCVBUF, native::kSocketBuffer);
}

bool Socket::BindToBroadcasts(std::uint16_t port) { return Bind({{{255, 255, 255, 255}}, port}); }

bool Socket::ShareLoopbackAddress() {
    ifreq loopback{};
    std::copy_n("lo", 3, loopback.ifr_name);
    return native::SetOption(handle_, SOL_SOCKET, SO_REUSEADDR, int{1}) &&
           native::SetOption(handle_, SOL_SOCKET, SO_BINDTODEVICE, loopback);
}

void Socket::AllowRebinding() { native::SetOption(handle_, SOL_SOCKET, SO_REUSEADDR, int{1}); }

void Socket::Shutdown() { shutdown(native::Of(handle_), SHUT_RDWR); }

}  // namespace sontaro
