// The way back from threads that a disk may hold up for ever.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "base/thread_group.h"
#include "base/ui_thread.h"

namespace sontaro {

/// Runs `body` on a thread that nobody waits for, not even at exit: what it has may be gone by then
/// but for what it owns. False when the system has no thread left.
[[nodiscard]] bool StartUnawaited(std::function<void()> body);

/// Carries answers to the owner's thread on a thread of the group's, which no disk can hold up:
/// whoever works unawaited must not touch an owner that may have gone meanwhile.
class Messenger : public std::enable_shared_from_this<Messenger> {
   public:
    /// `owner` outlives what the group waits for.
    explicit Messenger(UiThread& owner) : owner_(owner) {}

    /// False when the system has no thread left. It lasts until `Leave`.
    [[nodiscard]] bool Start(ThreadGroup& threads);
    /// Has `answer` run on the owner's thread, unless that has left. Any thread.
    void Post(std::function<void()> answer);
    /// Nothing more is told, but for what may be on its way to the owner's thread already. The
    /// owner's thread.
    void Leave();

   private:
    void Run();

    UiThread& owner_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> answers_;
    bool left_ = false;
};

}  // namespace sontaro
