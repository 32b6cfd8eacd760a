#include "batchsend/shown_link.h"

#include <utility>

namespace sontaro {

ShownLink::ShownLink(const ExchangeServices& exchange)
    : channel_(exchange.channel), keepAlive_(exchange.timers, [this] { Send(); }) {}

void ShownLink::Show(std::optional<Target> player) {
    if (player == shown_) return;
    shown_ = std::move(player);
    keepAlive_.Want(false);
    Proceed();
}

void ShownLink::SetAnswered(const Target& player, bool answered) {
    if (answered)
        states_[player.ip] = State::kLinked;
    else
        states_.erase(player.ip);
    Proceed();
}

/// What ends by itself is over until the player is asked again.
void ShownLink::Ended(const Target& player) {
    const auto state = states_.find(player.ip);
    if (state == states_.end()) return;
    const bool isShown = shown_ && shown_->ip == player.ip;
    state->second = isShown && !isHeld_ ? State::kLost : State::kClosed;
    Proceed();
}

void ShownLink::Hold(bool held) {
    isHeld_ = held;
    Proceed();
}

void ShownLink::Reset() {
    states_.clear();
    Show({});
}

void ShownLink::Proceed() {
    const auto state = shown_ ? states_.find(shown_->ip) : states_.end();
    keepAlive_.Want(!isHeld_ && state != states_.end() && state->second != State::kLost);
}

/// A new link is made when there is no other one: it could lead to another player.
void ShownLink::Send() {
    const Target player = *shown_;
    if (states_.at(player.ip) == State::kClosed)
        channel_.Send({}, std::make_shared<const Bytes>(), Boxes::kMuted);
    const bool isSent{channel_.Send(player, KeepAlivePacket(), Boxes::kMuted)};
    states_[player.ip] = isSent ? State::kLinked : State::kLost;
    Proceed();
}

}  // namespace sontaro
