// The test's own thread as the user-interface thread.
#pragma once

#include <condition_variable>
#include <deque>
#include <future>
#include <thread>

#include "base/ui_thread.h"

namespace sontaro::test {

/// Serves other threads only while the test waits for something. Created by the serving thread.
class ManualUiThread final : public UiThread {
   public:
    bool Call(const std::function<void()>& function) override {
        if (std::this_thread::get_id() == thread_) return function(), true;
        std::packaged_task<void()> job(function);
        std::future<void> done = job.get_future();
        if (!Push(std::move(job))) return false;
        try {
            done.get();
        } catch (const std::future_error&) {  // the job was thrown away
            return false;
        }
        return true;
    }

    void Close() override {
        const std::lock_guard lock(mutex_);
        closed_ = true;
        jobs_.clear();
    }

    /// Serves other threads until `holds`, which is asked after each call; false after `limit`.
    [[nodiscard]] bool PumpUntil(const std::function<bool()>& holds,
                                 std::chrono::milliseconds limit = std::chrono::seconds(20)) {
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (!holds()) {
            std::unique_lock lock(mutex_);
            if (!pushed_.wait_until(lock, deadline, [this] { return !jobs_.empty(); }))
                return false;
            std::packaged_task<void()> job = std::move(jobs_.front());
            jobs_.pop_front();
            lock.unlock();
            job();
        }
        return true;
    }

    /// Runs `function` on a thread of its own and serves other threads until it has ended.
    void RunAside(const std::function<void()>& function) {
        bool ended = false;
        const std::jthread aside([&] { function(), Call([&] { ended = true; }); });
        while (!PumpUntil([&] { return ended; })) {
        }
    }

    /// Waits, without serving it, until another thread waits for this one.
    void AwaitCaller() {
        std::unique_lock lock(mutex_);
        pushed_.wait(lock, [this] { return !jobs_.empty(); });
    }

   private:
    bool Push(std::packaged_task<void()> job) {
        const std::lock_guard lock(mutex_);
        if (!closed_) jobs_.push_back(std::move(job));
        pushed_.notify_all();
        return !closed_;
    }

    const std::thread::id thread_ = std::this_thread::get_id();
    std::mutex mutex_;
    std::condition_variable pushed_;
    std::deque<std::packaged_task<void()>> jobs_;
    bool closed_ = false;
};

}  // namespace sontaro::test
