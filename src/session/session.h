// Blocking calls to one player, for scripts and programs without windows.
#pragma once

#include <atomic>
#include <memory>
#include <stop_token>
#include <utility>

#include "base/result.h"
#include "exchange/conversation.h"
#include "session/session_links.h"

namespace sontaro {

struct SessionOptions {
    /// How long an answer may take where a call says nothing else.
    std::chrono::milliseconds limit = kAnswerLimit;
    std::chrono::milliseconds connectLimit = SessionLinks::kConnectLimit;
    /// Ends every call as cancelled once it has been asked to stop.
    std::stop_token stop = {};
};

/// One player, over a connection of its own that is made when it is needed. A request that has not
/// been answered in time or was cancelled costs the connection, so that its answer is never taken
/// for another one's; the next call connects anew. "Not supported" and refusals cost nothing.
///
/// All calls are those of the thread that has opened it, which blocks; `Cancel` is any thread's.
/// A call that is cancelled ends within `connectLimit` while it connects, else at once. Sessions
/// share nothing, so that each may have a thread of its own.
class Session {
   public:
    /// What nobody has asked for: positions and states, replies that were given up.
    using Heard = std::function<void(WindowMessage&)>;

    /// Does not connect yet. Fails when this process has a session or other link to the player.
    [[nodiscard]] static Result<std::unique_ptr<Session>> Open(const Endpoint& player,
                                                               SessionOptions options = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Asks and waits. The request's own limit and patience do not count. Ends in a reply (the
    /// message is in the answer) or as `HowItEnded` says.
    Answered<WindowMessage> Ask(Request request,
                                std::optional<std::chrono::milliseconds> limit = {});

    /// Sends what has no answer, and waits until it has gone out: a reply means that.
    SessionEnd Post(const SharedPacket& packet,
                    std::optional<std::chrono::milliseconds> limit = {});

    /// Who hears what nobody has asked for, within the calls of this class; must not call the
    /// session. Nobody at first. Gives back who did before.
    Heard SetListener(Heard heard) { return std::exchange(heard_, std::move(heard)); }

    /// Listens for as long, or until `isEnough`, which is asked after everything that comes: a
    /// reply means that it was, timed out that it was not, which costs no connection. It connects
    /// nobody: without a connection it is a link that has ended.
    SessionEnd Listen(
        std::chrono::milliseconds limit,
        const std::function<bool()>& isEnough = [] { return false; });

    /// Ends the call that runs, or else the next one, as cancelled. Any thread.
    void Cancel();

    /// Ends the connection, if there is one.
    void Close() { links_.Close(player_); }
    [[nodiscard]] bool IsConnected() const { return links_.IsConnected(player_); }
    [[nodiscard]] const Endpoint& Player() const { return player_; }
    [[nodiscard]] const SessionOptions& Options() const { return options_; }

   private:
    Session(const Endpoint& player, SessionOptions options);

    void Hear(WindowMessage& message);
    [[nodiscard]] bool IsCancelled() const;
    SessionEnd CloseCancelled();
    void HandleArrivals();
    [[nodiscard]] SessionEnd EndOf(const Ended& ended) const;

    const Endpoint player_;
    const SessionOptions options_;
    Heard heard_ = [](WindowMessage&) {};
    std::atomic<bool> cancelled_ = false;
    PlainLoop loop_;
    ExchangeHub hub_;
    SessionLinks links_;
    Conversation talk_;
    std::stop_callback<std::function<void()>> stop_;
};

}  // namespace sontaro
