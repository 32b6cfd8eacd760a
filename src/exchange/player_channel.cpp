#include "exchange/player_channel.h"

namespace sontaro {

Sending MainWindowChannel::Send(const Target& player, const SharedPacket& packet, Boxes boxes) {
    SendRequest request{{}, packet, boxes};
    if (addressing_ == Addressing::kPlayer) request.targets.push_back(player);
    WindowMessage message{MessageId::kSendRequest, 0, std::move(request), 0};
    if (!directory_.Send(mainWindow_, message)) return NotSent::kNobodyThere;
    const auto& outcomes = std::get<SendRequest>(message.record).outcomes;
    return outcomes.empty() ? NotSent::kNobodyThere : outcomes.front();
}

}  // namespace sontaro
