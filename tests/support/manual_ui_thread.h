// The test's own thread as the user-interface thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>

#include "base/ui_thread.h"

namespace sontaro::test {

/// Serves other threads only while the test waits for something. Created by the serving thread.
class ManualUiThread final : public UiThread {
 public:
    bool Call(const std::function<void()>& function) override {
        if (std::this_thread::get_id() == thread_) {
            function();
            return true;
        }
        Job job{function};
        std::unique_lock lock(mutex_);
        if (!closed_) jobs_.push_back(&job);
        changed_.notify_all();
        changed_.wait(lock, [&] { return job.done || (closed_ && !job.started); });
        std::erase(jobs_, &job);
        if (job.failure) std::rethrow_exception(std::exchange(job.failure, nullptr));
        return job.done;
    }

    void Close() override {
        const std::lock_guard lock(mutex_);
        closed_ = true;
        changed_.notify_all();
    }

    /// Serves other threads until `holds`, which is asked after each call; false after `limit`.
    [[nodiscard]] bool PumpUntil(const std::function<bool()>& holds,
                                 std::chrono::milliseconds limit = std::chrono::seconds(20)) {
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (!holds()) {
            std::unique_lock lock(mutex_);
            if (!changed_.wait_until(lock, deadline, [this] { return !jobs_.empty(); }))
                return false;
            RunNext(lock);
        }
        return true;
    }

    /// Runs `function` on a thread of its own and serves other threads until it has ended.
    void RunAside(const std::function<void()>& function) {
        bool ended = false;
        const std::jthread aside([&] {
            function();
            Call([&] { ended = true; });
        });
        while (!PumpUntil([&] { return ended; })) {
        }
    }

    /// Waits, without serving it, until another thread waits for this one.
    void AwaitCaller() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !jobs_.empty(); });
    }

 private:
    struct Job {
        const std::function<void()>& function;
        bool started = false;
        bool done = false;
        std::exception_ptr failure{};
    };

    void RunNext(std::unique_lock<std::mutex>& lock) {
        Job& job = *jobs_.front();
        jobs_.pop_front();
        job.started = true;
        lock.unlock();
        std::exception_ptr failure;
        try {
            job.function();
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        job.failure = std::move(failure);
        job.done = true;
        changed_.notify_all();
    }

    const std::thread::id thread_ = std::this_thread::get_id();
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Job*> jobs_;
    bool closed_ = false;
};

}  // namespace sontaro::test
