#include "exchange/link_pool.h"

#include <algorithm>
#include <thread>
#include <vector>

#include "base/local_text.h"

namespace sontaro {

namespace {

constexpr LocalText kConnectFailed = {"连接播放器失败！", "Failed to connect player！"};

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

bool LinkPool::Submit(const SendRequest& request) {
    if (!request.bytes || request.bytes->empty()) {
        CloseAll();
        return true;
    }
    const std::vector<Target> targets =
        request.targets.empty() ? std::vector{currentDevice_} : request.targets;
    bool taken = true;
    for (const Target& target : targets) {
        if (SendTo(target, request.bytes)) continue;
        taken = false;
        ShowFailureOnce();
    }
    return taken;
}

bool LinkPool::SendTo(const Target& target, const std::shared_ptr<const Bytes>& bytes) {
    CTCPClient* link = LinkTo(target);
    return link != nullptr && link->Queue(bytes);
}

CTCPClient* LinkPool::LinkTo(const Target& target) {
    const auto isTarget = [&](const auto& slot) {
        return slot->IsConnected() && slot->RemoteIp() == target.ip;
    };
    if (const auto slot = std::ranges::find_if(slots_, isTarget); slot != slots_.end())
        return slot->get();
    const auto connected = static_cast<std::size_t>(
        std::ranges::count_if(slots_, [](const auto& slot) { return slot->IsConnected(); }));
    if (connected == slots_.size()) return nullptr;
    // Not the first free slot: when a lower one was closed, the count names a slot that is still
    // connected. It keeps its socket and serves the new target from then on.
    CTCPClient& slot = *slots_[connected];
    if (!slot.Connect(target)) return nullptr;
    slot.SetDeviceTag(target.deviceTag);
    return &slot;
}

void LinkPool::ShowFailureOnce() {
    if (std::exchange(failureShown_, true)) return;
    prompts_.Warn(Localized(kConnectFailed));
}

void LinkPool::CloseAll() {
    ForEachAtOnce(slots_, [](auto& slot) {
        if (slot->IsConnected()) slot->Close();
    });
}

}  // namespace sontaro
