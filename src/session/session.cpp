#include "session/session.h"

#include <utility>

namespace sontaro {

namespace {

using namespace std::chrono_literals;

/// For waiting that something else ends.
constexpr std::chrono::milliseconds kForever = std::chrono::hours(24 * 365);

Target TargetOf(const Endpoint& player) { return {FormatIpv4(player.address), player.port, 0}; }

}  // namespace

Result<std::unique_ptr<Session>> Session::Open(const Endpoint& player, SessionOptions options) {
    std::unique_ptr<Session> session(new Session(player, std::move(options)));
    if (!session->links_.Claim(player))
        return Error{Told({End::kNotSent, 0, NotSent::kNoSlot, LinkTrouble::kTaken, {}})};
    return session;
}

Session::Session(const Endpoint& player, SessionOptions options)
    : player_(player),
      options_(std::move(options)),
      links_(
          loop_, hub_, [this](WindowMessage& message) { Hear(message); }, options_.connectLimit),
      talk_({links_, hub_, loop_}, TargetOf(player),
            {[this](WindowMessage& message) { heard_(message); }, [] {}}, Boxes::kMuted),
      stop_(options_.stop, [this] { loop_.Wake(); }) {}

Session::~Session() = default;

/// The conversation hears of the end of a connection by itself.
void Session::Hear(WindowMessage& message) {
    if (message.id != MessageId::kLinkEnded) talk_.Take(message);
}

Answered<WindowMessage> Session::Ask(Request request,
                                     std::optional<std::chrono::milliseconds> limit) {
    HandleArrivals();
    request.limit = limit.value_or(options_.limit);
    request.atLimit = [](auto) { return AtLimit::kEnd; };
    std::optional<Answered<WindowMessage>> answer;
    if (!IsCancelled()) {
        talk_.Ask(std::move(request), [&](Ended& ended) {
            if (ended.how == End::kReply)
                answer.emplace(std::move(*ended.reply));
            else
                answer.emplace(EndOf(ended));
        });
        static_cast<void>(loop_.RunUntil([&] { return answer || IsCancelled(); }, kForever));
    }
    if (!answer) return CloseCancelled();
    if (answer->HowItEnded().how == End::kTimedOut) Close();
    return std::move(*answer);
}

SessionEnd Session::Post(const SharedPacket& packet,
                         std::optional<std::chrono::milliseconds> limit) {
    HandleArrivals();
    if (IsCancelled()) return CloseCancelled();
    const Sending sending = talk_.Post(packet);
    if (!sending) return EndOf({End::kNotSent, 0, sending.Reason()});
    const auto isOver = [&] { return links_.HasSentAll(player_) || IsCancelled(); };
    const bool isInTime = loop_.RunUntil(isOver, limit.value_or(options_.limit));
    if (IsCancelled()) return CloseCancelled();
    if (!isInTime) {
        Close();
        return {End::kTimedOut};
    }
    return IsConnected() ? SessionEnd{End::kReply} : EndOf({End::kLinkEnded});
}

SessionEnd Session::Listen(std::chrono::milliseconds limit, const std::function<bool()>& isEnough) {
    const auto isOver = [&] { return isEnough() || !IsConnected() || IsCancelled(); };
    const bool isInTime = loop_.RunUntil(isOver, limit);
    if (IsCancelled()) return CloseCancelled();
    if (!isInTime) return {End::kTimedOut};
    return isEnough() ? SessionEnd{End::kReply} : EndOf({End::kLinkEnded});
}

void Session::Cancel() {
    cancelled_ = true;
    loop_.Wake();
}

bool Session::IsCancelled() const { return cancelled_ || options_.stop.stop_requested(); }

/// What a cancelled request would still be answered must not come to another one.
SessionEnd Session::CloseCancelled() {
    cancelled_ = false;
    talk_.Cancel();
    Close();
    return {End::kCancelled};
}

/// The end of the connection may have come while nothing was asked.
void Session::HandleArrivals() {
    static_cast<void>(loop_.RunUntil([] { return false; }, 0ms));
}

SessionEnd Session::EndOf(const Ended& ended) const {
    const bool isOfLink = ended.how == End::kNotSent || ended.how == End::kLinkEnded;
    return {ended.how,
            ended.code,
            ended.reason,
            isOfLink ? links_.TroubleWith(player_) : LinkTrouble::kNone,
            {}};
}

}  // namespace sontaro
