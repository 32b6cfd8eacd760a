// A signal from one thread to another that is consumed by the wait it ends.
#pragma once

#include <condition_variable>
#include <mutex>

namespace sontaro {

/// How a wait ended. Sontaro waits without a time limit, so a time-out is a fault of the platform.
enum class WaitResult { kSignalled, kTimedOut, kFailed };

/// An auto-reset event. What a thread wrote before `Signal` is visible after the `Wait` it ends.
/// Signals are not counted: two before a wait end one wait. Any thread.
class AutoResetEvent {
   public:
    void Signal() {
        {
            const std::lock_guard lock(mutex_);
            signalled_ = true;
        }
        condition_.notify_one();
    }

    WaitResult Wait() {
        std::unique_lock lock(mutex_);
        condition_.wait(lock, [this] { return signalled_; });
        signalled_ = false;
        return WaitResult::kSignalled;
    }

   private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool signalled_ = false;
};

}  // namespace sontaro
