#include "session/session_links.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "exchange/reply_router.h"
#include "link/link_services.h"

namespace sontaro {

namespace {

constexpr std::size_t kReceiveBuffer = 256U << 10;

}  // namespace

/// A socket with its two threads, which own it together with the links: it is closed with the last
/// of them. What happens is handed over to the loop; the links outlive the threads.
class SessionLinks::Connection {
   public:
    Connection(SessionLinks& links, ConnectionNumber number, Socket socket)
        : links_(links), number_(number), socket_(std::move(socket)) {}

    /// False when the system has no thread left.
    [[nodiscard]] static bool StartThreads(const std::shared_ptr<Connection>& self) {
        ThreadGroup& threads = self->links_.threads_;
        return threads.Start([self] { self->ReceiveLoop(); }) &&
               threads.Start([self] { self->SendLoop(); });
    }

    [[nodiscard]] ConnectionNumber Number() const { return number_; }
    [[nodiscard]] bool IsRunning() const { return running_; }

    [[nodiscard]] Sending Queue(SharedPacket packet) {
        const std::size_t size = packet->size();
        if (!running_) return NotSent::kNotRunning;
        ++unsent_;
        if (!outbox_.Push(std::move(packet), size, kBufferSize)) {
            --unsent_;
            return NotSent::kTooMuchWaiting;
        }
        sendEvent_.Signal();
        return Sending::Over(number_);
    }

    [[nodiscard]] bool HasSentAll() const { return unsent_ == 0; }
    void WaitUntilSent(std::chrono::milliseconds limit) { outbox_.WaitUntilEmpty(limit); }

    /// Any thread.
    void End() {
        running_ = false;
        outbox_.Abandon();
        socket_.Shutdown();
        sendEvent_.Signal();
    }

   private:
    void SendLoop() {
        while (running_) {
            sendEvent_.Wait();
            while (const auto packet = outbox_.Take()) {
                if (!SendWhole(**packet)) {
                    broken_ = true;
                    return End();
                }
                --unsent_;
                links_.loop_.Wake();
            }
        }
    }

    [[nodiscard]] bool SendWhole(ByteView bytes) {
        while (!bytes.empty()) {
            const std::int64_t sent = socket_.Send(bytes);
            if (sent < 0 && running_ && IsTransientReceiveError(LastSocketError())) continue;
            if (sent <= 0) return false;
            bytes = bytes.subspan(static_cast<std::size_t>(sent));
        }
        return true;
    }

    void ReceiveLoop() {
        const bool isOrderly = ReceiveAll() && !broken_;
        links_.loop_.Call([&] { links_.PlayerEnded(number_, isOrderly); });
        End();
    }

    /// Whether it was the player that has ended the connection, and not in the middle of something
    /// that could not be handled.
    [[nodiscard]] bool ReceiveAll() try {
        const auto buffer = std::make_unique_for_overwrite<std::uint8_t[]>(kReceiveBuffer);
        std::int64_t count = 0;
        while ((count = ReceiveOnce({buffer.get(), kReceiveBuffer})) > 0) {
            const ByteView piece(buffer.get(), static_cast<std::size_t>(count));
            if (!links_.loop_.Call([&] { links_.Received(number_, piece); })) return false;
        }
        return count == 0;
    } catch (const std::exception&) {  // no memory for what has come: the connection is lost
        return false;
    }

    [[nodiscard]] std::int64_t ReceiveOnce(std::span<std::uint8_t> buffer) {
        std::int64_t count = 0;
        do count = socket_.Receive(buffer);
        while (count < 0 && running_ && IsTransientReceiveError(LastSocketError()));
        return count;
    }

    SessionLinks& links_;
    const ConnectionNumber number_;
    Socket socket_;
    AutoResetEvent sendEvent_;
    Outbox<SharedPacket> outbox_;
    std::atomic<std::size_t> unsent_ = 0;
    std::atomic<bool> running_ = true;
    std::atomic<bool> broken_ = false;
};

SessionLinks::SessionLinks(PlainLoop& loop, ExchangeHub& hub, Heard heard,
                           std::chrono::milliseconds connectLimit)
    : loop_(loop),
      hub_(hub),
      heard_(std::move(heard)),
      connectLimit_(connectLimit),
      started_(StartNetwork() == NetworkStart::kReady) {}

SessionLinks::~SessionLinks() {
    for (auto& [endpoint, player] : players_)
        if (player.connection) std::exchange(player.connection, nullptr)->End();
    loop_.Close();
    threads_.Join();
    if (started_) StopNetwork();
}

bool SessionLinks::Claim(const Endpoint& player) {
    if (players_.contains(player)) return true;
    std::optional<EndpointClaim> claim = EndpointClaim::Take(player);
    if (claim) players_.emplace(player, Player{std::move(*claim)});
    return claim.has_value();
}

Sending SessionLinks::Send(const Target& target, const SharedPacket& packet, Boxes) {
    if (!packet || packet->empty()) {
        CloseWhenSent();
        return NotSent::kNobodyThere;
    }
    const std::optional<Ipv4Address> address = ParseIpv4(target.ip);
    if (!address) return NotSent::kConnectFailed;
    const Endpoint endpoint{*address, target.port};
    if (!Claim(endpoint)) return NotSent::kNoSlot;
    Player& player = players_.at(endpoint);
    if (player.connection && !player.connection->IsRunning())
        End(player.connection->Number(),
            player.isClosing ? LinkTrouble::kClosed : LinkTrouble::kBroken);
    player.target = target;
    if (!player.connection) player.trouble = Connect(endpoint, player);
    return player.connection ? player.connection->Queue(packet) : NotSent::kConnectFailed;
}

/// A refusal comes at once: what takes as long as it may is no answer at all.
LinkTrouble SessionLinks::Connect(const Endpoint& endpoint, Player& player) {
    const auto end = PlainLoop::Clock::now() + connectLimit_;
    Socket socket = Socket::Tcp();
    if (!socket.IsOpen()) return LinkTrouble::kConnectRefused;
    socket.SendAtOnce();
    if (!socket.Connect(endpoint, connectLimit_))
        return PlainLoop::Clock::now() < end ? LinkTrouble::kConnectRefused
                                             : LinkTrouble::kConnectTimedOut;
    const auto connection = std::make_shared<Connection>(*this, ++lastNumber_, std::move(socket));
    if (!Connection::StartThreads(connection)) {
        connection->End();
        return LinkTrouble::kBroken;
    }
    player.stream = {};
    player.connection = connection;
    return LinkTrouble::kNone;
}

SessionLinks::Player* SessionLinks::Find(ConnectionNumber connection) {
    const auto found = std::ranges::find_if(players_, [&](const auto& entry) {
        return entry.second.connection && entry.second.connection->Number() == connection;
    });
    return found == players_.end() ? nullptr : &found->second;
}

const SessionLinks::Player* SessionLinks::Find(const Endpoint& player) const {
    const auto found = players_.find(player);
    return found == players_.end() ? nullptr : &found->second;
}

/// Whoever hears of a packet may close the connection.
void SessionLinks::Received(ConnectionNumber connection, ByteView piece) {
    Player* player = Find(connection);
    if (!player) return;
    std::vector<DevicePacket> packets;
    const LinkTrouble trouble = player->stream.Take(piece, packets);
    for (const DevicePacket& packet : packets) {
        player = Find(connection);
        if (!player) return;
        PassOn({packet.header, packet.payload, player->target, connection});
    }
    if (trouble != LinkTrouble::kNone) End(connection, trouble);
}

void SessionLinks::PlayerEnded(ConnectionNumber connection, bool isOrderly) {
    const Player* player = Find(connection);
    if (!player) return;
    if (player->isClosing) return End(connection, LinkTrouble::kClosed);
    if (!isOrderly) return End(connection, LinkTrouble::kBroken);
    End(connection, player->stream.IsWithinPacket() ? LinkTrouble::kCutOff : LinkTrouble::kHungUp);
}

void SessionLinks::End(ConnectionNumber connection, LinkTrouble trouble) {
    Player* player = Find(connection);
    if (!player) return;
    std::exchange(player->connection, nullptr)->End();
    player->isClosing = false;
    player->trouble = trouble;
    const Origin origin{player->target, {}, connection};
    WindowMessage message{MessageId::kLinkEnded, 0, {}, 0, origin};
    heard_(message);
    hub_.Report({ExchangeNews::Kind::kLinkEnded, origin});
}

void SessionLinks::PassOn(const Reply& reply) {
    Origin origin{reply.sender, reply.header, reply.connection};
    origin.header.command &= kCommandMask;
    switch (KindOf(reply.header)) {
        case ReplyKind::kUnknown: return;
        case ReplyKind::kNotSupported:
            hub_.Report({ExchangeNews::Kind::kNotSupported, origin});
            if (closesOnNotSupported_) CloseWhenSent();
            return;
        case ReplyKind::kLayoutLocked:
            hub_.Report({ExchangeNews::Kind::kLayoutLocked, origin});
            return;
        case ReplyKind::kForwarded:
            for (WindowMessage& message : MessagesOf(reply)) heard_(message);
    }
}

void SessionLinks::Close(const Endpoint& player) {
    const Player* found = Find(player);
    if (found && found->connection) End(found->connection->Number(), LinkTrouble::kClosed);
}

void SessionLinks::CloseWhenSent() {
    constexpr std::chrono::milliseconds kSendingLimit{1000};
    for (auto& [endpoint, player] : players_) {
        if (!player.connection) continue;
        player.connection->WaitUntilSent(kSendingLimit);
        player.connection->End();
        player.isClosing = true;
    }
}

bool SessionLinks::HasSentAll(const Endpoint& player) const {
    const Player* found = Find(player);
    return found == nullptr || !found->connection || found->connection->HasSentAll();
}

bool SessionLinks::IsConnected(const Endpoint& player) const {
    const Player* found = Find(player);
    return found != nullptr && found->connection != nullptr;
}

LinkTrouble SessionLinks::TroubleWith(const Endpoint& player) const {
    const Player* found = Find(player);
    if (!found || found->connection) return LinkTrouble::kNone;
    return found->trouble;
}

}  // namespace sontaro
