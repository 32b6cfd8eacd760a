#include "exchange/conversation.h"

#include <algorithm>
#include <utility>

namespace sontaro {

namespace {

/// Calls a copy: the call may destroy the original.
template <class Function, class... Arguments>
void Call(Function function, Arguments&... arguments) {
    function(arguments...);
}

}  // namespace

// Whatever calls the owner may find the conversation gone afterwards: `alive` tells.

Conversation::Conversation(const ExchangeServices& services, Target player, Listener listener,
                           Boxes boxes)
    : services_(services),
      player_(std::move(player)),
      listener_(std::move(listener)),
      boxes_(boxes),
      limit_(services.timers),
      subscription_(services.hub.Subscribe([this](const auto& news) { return Hear(news); })) {}

Conversation::~Conversation() = default;

void Conversation::Ask(Request request, EndedCall ended) {
    waiting_.push_back({std::move(request), std::move(ended), ++lastId_});
    Proceed();
}

// NOLINTNEXTLINE(misc-no-recursion): `proceeding_` ends it
void Conversation::Proceed() {
    if (std::exchange(proceeding_, true)) return;  // whoever does takes the next one up as well
    const std::weak_ptr alive = alive_;
    while (!open_ && !waiting_.empty()) {
        open_ = std::move(waiting_.front());
        waiting_.pop_front();
        Transmit();
        if (alive.expired()) return;
    }
    proceeding_ = false;
}

/// Connecting may block, and a box may be open meanwhile: anything can have happened by the time
/// that the outcome is known.
// NOLINTNEXTLINE(misc-no-recursion): `proceeding_` ends it
void Conversation::Transmit() {
    const std::weak_ptr alive = alive_;
    const std::uint64_t id = open_->id;
    const Request request = open_->request;
    const Target player = player_;  // not even the player may be there any more
    const bool isNested = std::exchange(transmitting_, true);
    const Sending sending =
        services_.channel.Send(player, request.packet, request.boxes.value_or(boxes_));
    if (alive.expired()) return;
    transmitting_ = isNested;
    if (sending) Use(sending.Connection());
    if (alive.expired()) return;
    if (!IsOpen(id)) return Owe(request, sending ? 1 : 0);
    if (!sending) return Finish({End::kNotSent, 0, sending.Reason()}, 0);
    if (std::exchange(open_->connection, connection_) != connection_) open_->sent = 0;
    ++open_->sent;
    if (open_->request.limit.count() > 0) WaitFor(open_->request.limit);
}

void Conversation::WaitFor(std::chrono::milliseconds delay) {
    limit_.Start(delay, [this, delay] { LimitReached(delay); });
}

void Conversation::LimitReached(std::chrono::milliseconds delay) {
    if (!open_) return;
    const std::weak_ptr alive = alive_;
    const std::uint64_t id = open_->id;
    open_->waited += delay;
    const auto atLimit = open_->request.atLimit;
    const AtLimit decision = atLimit(open_->waited);
    if (alive.expired() || !IsOpen(id)) return;
    switch (decision) {
        case AtLimit::kEnd: Finish({End::kTimedOut}, 0); break;
        case AtLimit::kWaitOn: WaitFor(kWaitingStep); break;
        case AtLimit::kRepeat: Repeat(); break;
    }
}

void Conversation::Repeat() {
    if (!open_ || transmitting_) return;
    const std::weak_ptr alive = alive_;
    Transmit();
    if (!alive.expired()) Proceed();
}

/// Ends the open request, of which `replies` have come.
// NOLINTNEXTLINE(misc-no-recursion): `proceeding_` ends it
void Conversation::Finish(Ended ended, std::size_t replies) {
    const Entry entry = std::move(*open_);
    open_.reset();
    limit_.Stop();
    Owe(entry.request, Owed(entry, replies));
    const std::weak_ptr alive = alive_;
    if (entry.ended) entry.ended(ended);
    if (!alive.expired()) Proceed();
}

void Conversation::Owe(const Request& request, std::size_t replies) {
    if (replies > 0)
        debts_.push_back({DecodeHeader(*request.packet).command, request.judge, replies});
}

/// How many replies to a request are still to come when `replies` have.
std::size_t Conversation::Owed(const Entry& entry, std::size_t replies) const {
    const std::size_t come = replies + entry.paid;
    return entry.connection == connection_ && entry.sent > come ? entry.sent - come : 0;
}

Sending Conversation::Post(const SharedPacket& packet, std::optional<Boxes> boxes) {
    const std::weak_ptr alive = alive_;
    const Target player = player_;
    const Sending sending = services_.channel.Send(player, packet, boxes.value_or(boxes_));
    if (!alive.expired() && sending) Use(sending.Connection());
    return sending;
}

void Conversation::Cancel() {
    const std::weak_ptr alive = alive_;
    std::deque<Entry> cancelled = std::exchange(waiting_, {});
    if (open_) {
        Owe(open_->request, Owed(*open_, 0));
        cancelled.push_front(std::move(*open_));
        open_.reset();
        limit_.Stop();
    }
    for (const Entry& entry : cancelled) {
        Ended ended{End::kCancelled};
        if (entry.ended) entry.ended(ended);
        if (alive.expired()) return;
    }
}

/// Whatever is sent while a link is closing goes over a new one: the end of the old one is told
/// before that. Whoever hears of it may have sent something over one that is newer still.
void Conversation::Use(ConnectionNumber connection) {
    if (connection <= connection_) return;
    const std::weak_ptr alive = alive_;
    if (connection_ != 0) LinkEnded(connection_);
    if (alive.expired() || connection <= connection_) return;
    connection_ = connection;
    oldest_ = std::max(oldest_, connection);
}

std::size_t Conversation::Owed() const {
    std::size_t replies = open_ && open_->connection == connection_ ? open_->sent : 0;
    for (const Debt& debt : debts_) replies += debt.replies;
    return replies;
}

bool Conversation::Take(WindowMessage& message) {
    if (message.origin.sender.ip != player_.ip || message.origin.connection < oldest_) return false;
    const auto fits = [&](const Debt& debt) {
        return debt.judge(message).kind != Verdict::Kind::kNotMine;
    };
    if (message.origin.connection == connection_ && PaysDebt(fits)) return true;
    const bool mayAnswer = open_ && open_->connection == message.origin.connection;
    const Verdict verdict = mayAnswer ? open_->request.judge(message) : Verdict{};
    switch (verdict.kind) {
        case Verdict::Kind::kNotMine: Call(listener_.unasked, message); break;
        case Verdict::Kind::kReply: Finish({End::kReply, 0, {}, &message}, 1); break;
        case Verdict::Kind::kRefused: Finish({End::kRefused, verdict.code, {}, &message}, 1); break;
    }
    return true;
}

/// An answer goes to the oldest request that it fits, unless the open one has been repeated: then
/// it has waited long enough.
bool Conversation::PaysDebt(const std::function<bool(const Debt&)>& fits) {
    if (open_ && open_->sent > 1 &&
        fits({DecodeHeader(*open_->request.packet).command, open_->request.judge}))
        return false;
    const auto debt = std::ranges::find_if(debts_, fits);
    if (debt == debts_.end()) return false;
    if (--debt->replies == 0) debts_.erase(debt);
    if (open_ && fits({DecodeHeader(*open_->request.packet).command, open_->request.judge}))
        ++open_->paid;  // when the debt's own one was lost, it was this one's
    return true;
}

Boxes Conversation::Hear(const ExchangeNews& news) {
    const Origin& origin = news.origin;
    if (origin.sender.ip != player_.ip) return Boxes::kShown;
    Boxes boxes = boxes_;
    switch (news.kind) {
        case ExchangeNews::Kind::kLinkEnded: LinkEnded(origin.connection); break;
        case ExchangeNews::Kind::kLayoutLocked:
            if (HearRefusal(origin)) Finish({End::kRefused, origin.header.argument}, 1);
            break;
        case ExchangeNews::Kind::kNotSupported:
            if (!HearRefusal(origin)) break;
            boxes = open_->request.boxes.value_or(boxes);
            Finish({End::kNotSupported}, 1);
            break;
    }
    return boxes;
}

/// Whether a refusal, of which only the header is known, is the open request's.
bool Conversation::HearRefusal(const Origin& origin) {
    const auto fits = [&](const Debt& debt) { return debt.command == origin.header.command; };
    if (origin.connection != connection_ || PaysDebt(fits)) return false;
    if (!open_ || open_->connection != connection_) return false;
    const PacketHeader asked = DecodeHeader(*open_->request.packet);
    const bool isOfAnotherBlock = asked.command == kCommandSettings &&
                                  origin.header.subCommand != 0 &&
                                  origin.header.subCommand != asked.subCommand;
    return asked.command == origin.header.command && !isOfAnotherBlock;
}

/// What waits for its turn ends as well, unsent: nothing connects again by itself.
void Conversation::LinkEnded(ConnectionNumber connection) {
    const std::weak_ptr alive = alive_;
    const bool isCurrent = connection == connection_;
    oldest_ = std::max(oldest_, connection + 1);
    if (isCurrent) {
        connection_ = 0;
        debts_.clear();
    }
    if (open_ && open_->connection == connection) {
        std::deque<Entry> ending = std::exchange(waiting_, {});
        ending.push_front(std::move(*open_));
        open_.reset();
        limit_.Stop();
        Ended ended{End::kLinkEnded};
        for (const Entry& entry : ending) {
            if (entry.ended) entry.ended(ended);
            if (alive.expired()) return;
            ended = {End::kNotSent, 0, NotSent::kNotRunning};
        }
    }
    if (isCurrent) Call(listener_.linkEnded);
}

}  // namespace sontaro
