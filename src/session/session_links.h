// Connections of one's own to players, for programs without a main window.
#pragma once

#include <map>
#include <memory>

#include "base/thread_group.h"
#include "exchange/exchange_hub.h"
#include "exchange/plain_loop.h"
#include "exchange/player_channel.h"
#include "exchange/reassembly.h"
#include "session/endpoint_claim.h"
#include "session/packet_stream.h"

namespace sontaro {

/// Connects to whom it is sent to, and keeps the connection until either side ends it. What comes
/// is passed on as the messages that windows get, the end of a connection (`kLinkEnded`) among
/// them; refusals and ends are reported at the hub as well. Shows no boxes. The loop's thread.
class SessionLinks : public PlayerChannel {
   public:
    using Heard = std::function<void(WindowMessage&)>;

    /// How long connecting may take, during which nothing else happens.
    static constexpr std::chrono::milliseconds kConnectLimit{1000};

    /// All references outlive the links. The loop is closed with them.
    SessionLinks(PlainLoop& loop, ExchangeHub& hub, Heard heard,
                 std::chrono::milliseconds connectLimit = kConnectLimit);
    /// Ends every connection at once.
    ~SessionLinks() override;
    SessionLinks(const SessionLinks&) = delete;
    SessionLinks& operator=(const SessionLinks&) = delete;

    /// Has what a player does not support cost all connections, as in the main window: procedures
    /// that were written for that wait for the end of theirs.
    void CloseOnNotSupported() { closesOnNotSupported_ = true; }

    /// Keeps the player for these links; sending to it does so as well. False when something else
    /// in this process has it.
    [[nodiscard]] bool Claim(const Endpoint& player);

    /// Queues a packet; 10 MiB may wait. Without a packet every connection is closed once what is
    /// queued has gone out, within a second each; their ends are told later. A player that
    /// something else has is `kNoSlot`.
    Sending Send(const Target& target, const SharedPacket& packet, Boxes boxes) override;

    /// Ends the connection at once, and tells so; what waits is not sent.
    void Close(const Endpoint& player);
    /// Whether everything that was sent to the player has gone out, or cannot any more.
    [[nodiscard]] bool HasSentAll(const Endpoint& player) const;
    [[nodiscard]] bool IsConnected(const Endpoint& player) const;
    /// What is wrong with the last connection to the player; none while there is one.
    [[nodiscard]] LinkTrouble TroubleWith(const Endpoint& player) const;

   private:
    class Connection;
    struct Player {
        EndpointClaim claim;
        Target target = {};
        std::shared_ptr<Connection> connection = {};  // its threads own it as well
        PacketStream stream = {};                     // of that connection
        bool isClosing = false;                       // its end is still to be told
        LinkTrouble trouble = LinkTrouble::kNone;
    };

    [[nodiscard]] LinkTrouble Connect(const Endpoint& endpoint, Player& player);
    [[nodiscard]] Player* Find(ConnectionNumber connection);
    [[nodiscard]] const Player* Find(const Endpoint& player) const;
    void Received(ConnectionNumber connection, ByteView piece);
    void PassOn(const Reply& reply);
    void PlayerEnded(ConnectionNumber connection, bool isOrderly);
    void End(ConnectionNumber connection, LinkTrouble trouble);
    void CloseWhenSent();

    PlainLoop& loop_;
    ExchangeHub& hub_;
    const Heard heard_;
    const std::chrono::milliseconds connectLimit_;
    const bool started_;  // the platform's sockets
    bool closesOnNotSupported_ = false;
    ConnectionNumber lastNumber_ = 0;
    std::map<Endpoint, Player> players_;
    ThreadGroup threads_;
};

}  // namespace sontaro
