// The datagram socket that finds players.
#pragma once

#include <memory>
#include <string>

#include "link/link_services.h"
#include "link/window_message.h"

namespace sontaro {

/// Bound to one local address; sends datagrams and reports every one that comes back, and every
/// failure, as a `UdpEvent` to a window found by its title. Owned and called by the
/// user-interface thread; its threads keep their socket alive themselves.
class CUDPServer {
   public:
    /// `eventWindow` is the title of the window that receives the events; with an empty one
    /// nothing is reported.
    CUDPServer(std::string eventWindow, LinkServices services);
    ~CUDPServer();
    CUDPServer(const CUDPServer&) = delete;
    CUDPServer& operator=(const CUDPServer&) = delete;

    /// Binds to `localIp` and a port of the system's choice and starts both threads; blocks 200 ms
    /// until they have settled. True at once when already open. False when the address is not
    /// one of this machine's or the socket cannot be had.
    [[nodiscard]] bool Open(const std::string& localIp);

    /// Closes the socket. Events end at once; the socket's threads leave within 600 ms on their
    /// own.
    void Close();

    /// Hands a datagram to the send thread. False when the socket is not open.
    bool Send(const Endpoint& destination, Bytes datagram);

    [[nodiscard]] bool IsConnected() const;

   private:
    class Channel;

    std::string eventWindow_;
    LinkServices services_;
    NetworkSession network_;
    std::shared_ptr<Channel> channel_;
};

}  // namespace sontaro
