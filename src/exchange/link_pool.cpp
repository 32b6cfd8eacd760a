#include "exchange/link_pool.h"

#include <algorithm>
#include <thread>
#include <vector>

#include "base/local_text.h"

namespace sontaro {

namespace {

constexpr LocalText kConnectFailed = {"连接播放器失败！", "Failed to connect player！"};
constexpr LocalText kTooMuchWaiting = {
    "播放器没有接收已发送的数据，等待发送的数据过多，本次内容未发送！",
    "The player does not take in what has been sent. Too much is waiting, nothing more has been "
    "sent!"};

/// Runs `action` for every slot at once and waits: the pauses of nine links take no longer than
/// those of one.
template <class Slots, class Action>
void ForEachAtOnce(Slots& slots, Action action) {
    std::vector<std::jthread> workers;
    workers.reserve(slots.size());
    for (auto& slot : slots) workers.emplace_back([&slot, &action] { action(slot); });
}

}  // namespace

LinkPool::LinkPool(const std::string& eventWindow, const LinkServices& services)
    : prompts_(services.prompts) {
    for (auto& slot : slots_) slot = std::make_unique<CTCPClient>(eventWindow, services);
}

LinkPool::~LinkPool() {
    ForEachAtOnce(slots_, [](auto& slot) { slot.reset(); });
}

void LinkPool::Submit(SendRequest& request) {
    if (!request.bytes || request.bytes->empty()) return CloseAll();
    const std::vector<Target> targets =
        request.targets.empty() ? std::vector{currentDevice_} : request.targets;
    for (const Target& target : targets) {
        const Sending sending = SendTo(target, request.bytes);
        request.outcomes.push_back(sending);
        if (!sending && request.boxes == Boxes::kShown) Show(sending.Reason());
    }
}

Sending LinkPool::SendTo(const Target& target, const SharedPacket& bytes) {
    const auto isTarget = [&](const auto& slot) {
        return slot->IsConnected() && slot->RemoteIp() == target.ip;
    };
    const auto slot = std::ranges::find_if(slots_, isTarget);
    return slot == slots_.end() ? SendOverFreshLink(target, bytes) : (*slot)->Queue(bytes);
}

Sending LinkPool::SendOverFreshLink(const Target& target, const SharedPacket& bytes) {
    const auto connected = static_cast<std::size_t>(
        std::ranges::count_if(slots_, [](const auto& slot) { return slot->IsConnected(); }));
    if (connected == slots_.size()) return NotSent::kNoSlot;
    // Not the first free slot: when a lower one was closed, the count names a slot that is still
    // connected. It keeps its socket and serves the new target from then on.
    CTCPClient& slot = *slots_[connected];
    if (!slot.Connect(target)) return NotSent::kConnectFailed;
    slot.SetDeviceTag(target.deviceTag);
    const bool isOthers = slot.PeerIp() != target.ip;
    const Sending sending = slot.Queue(bytes);
    return sending && isOthers ? NotSent::kOtherPlayersLink : sending;
}

/// A link that is just ending is passed over without a word: its end is news enough.
void LinkPool::Show(NotSent reason) {
    if (reason == NotSent::kTooMuchWaiting) {
        prompts_.Warn(Localized(kTooMuchWaiting));
    } else if (reason == NotSent::kNoSlot || reason == NotSent::kConnectFailed) {
        if (!std::exchange(failureShown_, true)) prompts_.Warn(Localized(kConnectFailed));
    }
}

void LinkPool::CloseAll() {
    ForEachAtOnce(slots_, [](auto& slot) {
        if (slot->IsConnected()) slot->Close();
    });
}

}  // namespace sontaro
