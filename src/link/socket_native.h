// The platform's socket types, for the files of the socket shim alone.
#pragma once

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include "link/socket.h"

namespace sontaro::native {

#ifdef _WIN32
using Handle = SOCKET;
using OptionData = const char*;
using Data = char*;
using ConstData = const char*;
using DataSize = int;
inline constexpr int kNoSignal = 0;
inline constexpr int kNotInherited = 0;
#else
using Handle = int;
using OptionData = const void*;
using Data = void*;
using ConstData = const void*;
using DataSize = std::size_t;
inline constexpr int kNoSignal = MSG_NOSIGNAL;
inline constexpr int kNotInherited = SOCK_CLOEXEC;
#endif

/// Bytes of the system's send and receive buffers of every socket.
inline constexpr int kSocketBuffer = 0xA00000;

inline Handle Of(Socket::Handle handle) { return static_cast<Handle>(handle); }

/// Sets a socket option; false when the system refuses it.
template <class Value>
bool SetOption(Socket::Handle handle, int level, int option, const Value& value) {
    return setsockopt(Of(handle), level, option, reinterpret_cast<OptionData>(&value),
                      sizeof value) == 0;
}

/// The address and port in an IPv4 socket address.
[[nodiscard]] Endpoint ToEndpoint(const sockaddr_in& address);

/// Switches between blocking and non-blocking calls.
void SetBlocking(Socket::Handle handle, bool blocking);

/// Whether the socket becomes writable within `limit`.
[[nodiscard]] bool AwaitWritable(Socket::Handle handle, std::chrono::milliseconds limit);

}  // namespace sontaro::native
