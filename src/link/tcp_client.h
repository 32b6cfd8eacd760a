// The TCP link to one player.
#pragma once

#include <memory>
#include <string>

#include "link/link_services.h"
#include "link/window_message.h"

namespace sontaro {

/// One connection at a time to one player. Connects on demand, sends what is queued from a send
/// thread, reads from a receive thread and reports every happening as a `LinkEvent` to a window
/// found by its title. The byte stream is not split into packets here.
///
/// Owned and called by the user-interface thread. The link's threads keep their connection alive
/// themselves, so that the link may be destroyed while they still wait for that thread.
class CTCPClient {
   public:
    /// `eventWindow` is the title of the window that receives the events.
    CTCPClient(std::string eventWindow, LinkServices services);
    /// Closes and gives the link's threads 300 ms to leave.
    ~CTCPClient();
    CTCPClient(const CTCPClient&) = delete;
    CTCPClient& operator=(const CTCPClient&) = delete;

    /// Connects to `target` within a second and starts both threads; blocks 200 ms more until they
    /// have settled. A link that still has a socket keeps it: the connected flag and the remote
    /// address are cleared and the answer is true at once.
    /// False when there is no connection, or the player has ended it within the 200 ms.
    [[nodiscard]] bool Connect(const Target& target);

    /// Ends the connection once what was queued has been sent, within a second; blocks about
    /// 200 ms more. Nothing happens without one.
    void Close();

    /// Hands a packet to the send thread, which sends it in one call. Not sent when the link is not
    /// running or when, with it, more than 10 MiB would be waiting.
    [[nodiscard]] Sending Queue(SharedPacket packet);

    /// The tag that the events carry from now on.
    void SetDeviceTag(std::uint16_t tag);

    [[nodiscard]] bool IsConnected() const;
    [[nodiscard]] bool HasSocket() const;
    /// Who is at the other end of the socket, whether or not the link counts as connected; empty
    /// without a socket.
    [[nodiscard]] std::string PeerIp() const;
    /// Remote address of the current connection, dotted; empty when not connected.
    [[nodiscard]] std::string RemoteIp() const;

   private:
    class Connection;

    std::string eventWindow_;
    LinkServices services_;
    NetworkSession network_;
    std::weak_ptr<Connection> connection_;  // its threads own it
};

}  // namespace sontaro
