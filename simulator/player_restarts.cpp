#include "simulator/simulated_player.h"

#include <algorithm>

namespace sontaro::simulator {

namespace {

/// Whether the reply says that settings are kept and a restart follows.
bool AnnouncesRestart(const DevicePacket& reply) {
    return reply.header.command == (kCommandSettings | kReplyBit) &&
           reply.header.subCommand == kBlockControlProtocol && reply.header.qualifier == 1;
}

}  // namespace

/// Opens or closes the listener as faults and restarts have it.
void SimulatedPlayer::ListenOrRefuse(std::unique_lock<std::mutex>& lock) {
    const bool refuses = faults_.refuse || away_;
    if (refuses) {
        CloseListener(lock);
    } else if (!refuses && !listener_) {
        auto listener = std::make_shared<Socket>(Socket::ListenAt({options_.address, port_}));
        if (listener->IsOpen())
            listener_ = std::move(listener);
        else
            Note("cannot listen again: the port is in use");
    }
    changed_.notify_all();
}

/// Returns when the accepting thread has let go of the listener, which is open until then: some
/// systems do not wake a call that is only about to begin.
void SimulatedPlayer::CloseListener(std::unique_lock<std::mutex>& lock) {
    constexpr std::chrono::milliseconds kPause{10};
    const std::weak_ptr<Socket> left = std::exchange(listener_, nullptr);
    while (const std::shared_ptr<Socket> listener = left.lock()) {
        listener->Shutdown();
        changed_.notify_all();
        changed_.wait_for(lock, kPause);
    }
}

/// A tool that has been told of a restart asks for its links to be closed. The player goes when
/// that is answered, or by itself when the tool never asks.
void SimulatedPlayer::Answered(const DevicePacket& reply) {
    constexpr std::chrono::milliseconds kPatience{500};
    const std::lock_guard lock(mutex_);
    if (away_) return;
    if (AnnouncesRestart(reply)) {
        nextRestartStep_ = Clock::now() + kPatience;
        absence_ = options_.restartTime;
    } else if (nextRestartStep_ && reply.header.command == (kCommandCloseLinks | kReplyBit)) {
        nextRestartStep_ = Clock::now();
    }
    changed_.notify_all();
}

/// Nobody has been told: the player is back before long. The mutex is held.
void SimulatedPlayer::RestartAtOnce() {
    constexpr std::chrono::milliseconds kLongest{1000};
    nextRestartStep_ = Clock::now();
    absence_ = std::min(options_.restartTime, kLongest);
}

/// The body of a thread: leaves and returns in time.
void SimulatedPlayer::RunRestarts() {
    std::unique_lock lock(mutex_);
    while (running_) {
        const auto step = nextRestartStep_;
        if (!step)
            changed_.wait(lock);
        else if (Clock::now() < *step)
            changed_.wait_until(lock, *step);
        else if (away_)
            Return(lock);
        else
            Leave(lock);
    }
}

void SimulatedPlayer::Leave(std::unique_lock<std::mutex>& lock) {
    Note("restarts");
    away_ = true;
    nextRestartStep_.reset();
    if (!faults_.noReturn) nextRestartStep_ = Clock::now() + absence_;
    ListenOrRefuse(lock);  // whoever sees its link end is not to get another one
    for (const auto& connection : connections_) connection->End();
}

void SimulatedPlayer::Return(std::unique_lock<std::mutex>& lock) {
    Note("is back");
    away_ = false;
    nextRestartStep_.reset();
    ListenOrRefuse(lock);
}

}  // namespace sontaro::simulator
