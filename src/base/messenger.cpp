#include "base/messenger.h"

#include <system_error>
#include <thread>
#include <utility>

namespace sontaro {

bool StartUnawaited(std::function<void()> body) {
    try {
        std::thread(std::move(body)).detach();
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

bool Messenger::Start(ThreadGroup& threads) {
    return threads.Start([self = shared_from_this()] { self->Run(); });
}

void Messenger::Post(std::function<void()> answer) {
    const std::lock_guard lock(mutex_);
    if (!left_) answers_.push_back(std::move(answer));
    changed_.notify_one();
}

/// What has not been told is given up after the lock is free.
void Messenger::Leave() {
    std::deque<std::function<void()>> dropped;
    const std::lock_guard lock(mutex_);
    dropped.swap(answers_);
    left_ = true;
    changed_.notify_one();
}

void Messenger::Run() {
    std::unique_lock lock(mutex_);
    while (!left_) {
        if (answers_.empty()) {
            changed_.wait(lock);
            continue;
        }
        std::function<void()> answer = std::move(answers_.front());
        answers_.pop_front();
        lock.unlock();
        // Where the user interface has closed, nobody waits for an answer.
        static_cast<void>(owner_.Call(answer));
        answer = nullptr;
        lock.lock();
    }
}

}  // namespace sontaro
