// What is asked of one player, one thing after another, and how each of it ends.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "base/timers.h"
#include "exchange/exchange_hub.h"
#include "exchange/player_channel.h"
#include "exchange/request.h"

namespace sontaro {

/// What conversations stand on; all of it outlives them.
struct ExchangeServices {
    PlayerChannel& channel;
    ExchangeHub& hub;
    Timers& timers;
};

/// One player and one owner: a dialog's procedure, a wizard's page, a command. Whatever is asked
/// ends exactly once. Hears its own player alone, and of it nothing from an earlier connection.
/// The thread of its owner. The destructor calls nobody, and may run within any of the calls.
class Conversation {
   public:
    /// What the owner hears besides the ends of its requests.
    struct Listener {
        /// A message that nobody asked for; the owner may move from it.
        std::function<void(WindowMessage&)> unasked = [](WindowMessage&) {};
        /// The connection has ended; the open request, if there was one, has been told before.
        std::function<void()> linkEnded = [] {};
    };
    using EndedCall = std::function<void(Ended&)>;

    Conversation(const ExchangeServices& services, Target player, Listener listener,
                 Boxes boxes = Boxes::kShown);
    ~Conversation();
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    /// Sends the request as soon as those before it have ended. `ended` is called exactly once,
    /// which may be before this returns.
    void Ask(Request request, EndedCall ended);

    /// Sends a packet at once that no answer belongs to; nothing waits for it. `boxes` are the
    /// conversation's own unless they are given.
    Sending Post(const SharedPacket& packet, std::optional<Boxes> boxes = {});

    /// Sends the open request once more; whichever of its replies comes first ends it.
    void Repeat();

    /// Ends every request as cancelled. Replies to what has gone out stay owed: the next request
    /// of their kind does not take them for its own.
    void Cancel();

    /// Whether a request is open or waits for its turn.
    [[nodiscard]] bool IsAsking() const { return open_ || !waiting_.empty(); }
    /// Replies that the player still owes on this connection, the open request's among them.
    [[nodiscard]] std::size_t Owed() const;
    /// The connection that was used last, as long as it lasts; 0: none.
    [[nodiscard]] ConnectionNumber Connection() const { return connection_; }

    /// Takes a message of the main window's. False when it is another player's, or came over an
    /// earlier connection.
    bool Take(WindowMessage& message);

   private:
    struct Entry {
        Request request;
        EndedCall ended;
        std::uint64_t id = 0;
        ConnectionNumber connection = 0;
        std::size_t sent = 0;  // how often over this connection
        std::size_t paid = 0;  // of its replies that may have been taken for a debt's
        std::chrono::milliseconds waited{0};
    };
    struct Debt {
        std::uint8_t command = 0;
        std::function<Verdict(const WindowMessage&)> judge;
        std::size_t replies = 0;
    };

    void Proceed();
    void Transmit();
    void WaitFor(std::chrono::milliseconds delay);
    void LimitReached(std::chrono::milliseconds delay);
    void Finish(Ended ended, std::size_t replies);
    void Use(ConnectionNumber connection);
    void Owe(const Request& request, std::size_t replies);
    [[nodiscard]] std::size_t Owed(const Entry& entry, std::size_t replies) const;
    [[nodiscard]] bool PaysDebt(const std::function<bool(const Debt&)>& fits);
    [[nodiscard]] bool HearRefusal(const Origin& origin);
    Boxes Hear(const ExchangeNews& news);
    void LinkEnded(ConnectionNumber connection);
    [[nodiscard]] bool IsOpen(std::uint64_t id) const { return open_ && open_->id == id; }

    const ExchangeServices services_;
    const Target player_;
    const Listener listener_;
    const Boxes boxes_;
    std::deque<Entry> waiting_;
    std::optional<Entry> open_;
    std::vector<Debt> debts_;  // on `connection_`
    ConnectionNumber connection_ = 0;
    ConnectionNumber oldest_ = 0;  // that is still listened to
    std::uint64_t lastId_ = 0;
    bool proceeding_ = false;
    bool transmitting_ = false;
    Timer limit_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>();
    ExchangeHub::Subscription subscription_;
};

}  // namespace sontaro
