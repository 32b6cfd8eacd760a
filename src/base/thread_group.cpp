#include "base/thread_group.h"

#include <system_error>
#include <thread>

namespace sontaro {

void ThreadGroup::State::Ended() {
    const std::lock_guard lock(mutex);
    --running;
    changed.notify_all();
}

bool ThreadGroup::Start(std::function<void()> body) {
    {
        const std::lock_guard lock(state_->mutex);
        ++state_->running;
    }
    try {
        std::thread([state = state_, body = std::move(body)]() mutable {
            body();
            body = nullptr;
            state->Ended();
        }).detach();
    } catch (const std::system_error&) {
        state_->Ended();
        return false;
    }
    return true;
}

void ThreadGroup::Join() {
    std::unique_lock lock(state_->mutex);
    state_->changed.wait(lock, [this] { return state_->running == 0; });
}

}  // namespace sontaro
