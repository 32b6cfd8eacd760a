// The loop of a program without windows.
#pragma once

#include <condition_variable>
#include <deque>
#include <future>
#include <map>
#include <mutex>
#include <thread>

#include "base/timers.h"
#include "base/ui_thread.h"

namespace sontaro {

/// Makes the thread that creates it the one that windows would live on: link threads hand their
/// events over to it, and timers call on it, while it runs.
class PlainLoop : public UiThread, public Timers {
   public:
    using Clock = std::chrono::steady_clock;

    bool Call(const std::function<void()>& function) override;
    void Close() override;
    Id After(std::chrono::milliseconds delay, std::function<void()> call) override;
    void Cancel(Id id) override;

    /// Has `RunUntil` ask its question anew. Any thread.
    void Wake();

    /// Serves other threads and timers until `holds`, which is asked after each of them; false
    /// when it does not hold after `limit`.
    [[nodiscard]] bool RunUntil(const std::function<bool()>& holds,
                                std::chrono::milliseconds limit);

   private:
    struct Deadline {
        Id id;
        std::function<void()> call;
    };

    [[nodiscard]] bool RunJob();
    [[nodiscard]] bool RunTimer();
    [[nodiscard]] Clock::time_point NextDeadline(Clock::time_point limit) const;

    const std::thread::id thread_ = std::this_thread::get_id();
    std::mutex mutex_;
    std::condition_variable pushed_;
    std::deque<std::packaged_task<void()>> jobs_;
    bool closed_ = false;
    bool woken_ = false;
    std::multimap<Clock::time_point, Deadline> deadlines_;  // of the loop's own thread
    Id lastId_ = 0;
};

}  // namespace sontaro
