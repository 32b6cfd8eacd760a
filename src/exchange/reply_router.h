// Brings each reply of a player to the open dialog that asked for it.
#pragma once

#include <vector>

#include "base/prompts.h"
#include "base/window_directory.h"
#include "exchange/exchange_hub.h"
#include "exchange/reassembly.h"
#include "link/window_message.h"

namespace sontaro {

/// What is to be done with a reply.
enum class ReplyKind : std::uint8_t {
    kNotSupported,  ///< the player does not know the command
    kUnknown,       ///< nobody here knows the command
    kLayoutLocked,  ///< it refuses command 52
    kForwarded,     ///< it becomes messages
};
[[nodiscard]] ReplyKind KindOf(const PacketHeader& received);

/// The messages that a forwarded reply becomes, for whoever has no windows: documents that are no
/// news to a window are among them. None of a reply of a wrong length.
[[nodiscard]] std::vector<WindowMessage> MessagesOf(const Reply& received);

/// What routing asks of the main window.
class RouterActions {
   public:
    virtual ~RouterActions() = default;
    /// Closes every link.
    virtual void CloseLinks() = 0;
    /// Sends a packet to one player.
    virtual void SendPacket(const Target& target, const DevicePacket& packet) = 0;
};

/// Routes replies by command number and settings block to windows found by title. Replies that
/// no window waits for, and those of a wrong length, are dropped. User-interface thread.
class ReplyRouter {
   public:
    ReplyRouter(WindowDirectory& directory, Prompts& prompts, ExchangeHub& hub,
                RouterActions& actions)
        : directory_(directory), prompts_(prompts), hub_(hub), actions_(actions) {}

    void Route(const Reply& received);

    /// The receive loop of the connection to `player` has ended: tells the dialogs that depend on
    /// it, and everyone who listens.
    void LinkEnded(const Target& player, ConnectionNumber connection);

   private:
    void RouteByTable(const Reply& reply);
    void AcknowledgeControlProtocol(const Reply& reply);
    void RefuseNotSupported(const Origin& origin);
    void RefuseLocked(const Origin& origin);

    WindowDirectory& directory_;
    Prompts& prompts_;
    ExchangeHub& hub_;
    RouterActions& actions_;
};

}  // namespace sontaro
