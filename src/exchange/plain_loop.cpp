#include "exchange/plain_loop.h"

#include <algorithm>
#include <utility>

namespace sontaro {

bool PlainLoop::Call(const std::function<void()>& function) {
    if (std::this_thread::get_id() == thread_) {
        function();
        return true;
    }
    std::packaged_task<void()> job(function);
    std::future<void> done = job.get_future();
    {
        const std::lock_guard lock(mutex_);
        if (closed_) return false;
        jobs_.push_back(std::move(job));
    }
    pushed_.notify_all();
    try {
        done.get();
    } catch (const std::future_error&) {  // the job was thrown away
        return false;
    }
    return true;
}

void PlainLoop::Close() {
    std::deque<std::packaged_task<void()>> abandoned;
    const std::lock_guard lock(mutex_);
    closed_ = true;
    abandoned.swap(jobs_);
}

Timers::Id PlainLoop::After(std::chrono::milliseconds delay, std::function<void()> call) {
    deadlines_.emplace(Clock::now() + delay, Deadline{++lastId_, std::move(call)});
    return lastId_;
}

void PlainLoop::Cancel(Id id) {
    std::erase_if(deadlines_, [id](const auto& entry) { return entry.second.id == id; });
}

void PlainLoop::Wake() {
    {
        const std::lock_guard lock(mutex_);
        woken_ = true;
    }
    pushed_.notify_all();
}

bool PlainLoop::RunUntil(const std::function<bool()>& holds, std::chrono::milliseconds limit) {
    const Clock::time_point end = Clock::now() + limit;
    while (!holds()) {
        if (RunJob() || RunTimer()) continue;
        if (Clock::now() >= end) return false;
        std::unique_lock lock(mutex_);
        pushed_.wait_until(lock, NextDeadline(end),
                           [this] { return !jobs_.empty() || std::exchange(woken_, false); });
    }
    return true;
}

bool PlainLoop::RunJob() {
    std::unique_lock lock(mutex_);
    if (jobs_.empty()) return false;
    std::packaged_task<void()> job = std::move(jobs_.front());
    jobs_.pop_front();
    lock.unlock();
    job();
    return true;
}

bool PlainLoop::RunTimer() {
    if (deadlines_.empty() || deadlines_.begin()->first > Clock::now()) return false;
    const Deadline due = std::move(deadlines_.begin()->second);
    deadlines_.erase(deadlines_.begin());
    due.call();
    return true;
}

PlainLoop::Clock::time_point PlainLoop::NextDeadline(Clock::time_point limit) const {
    return deadlines_.empty() ? limit : std::min(limit, deadlines_.begin()->first);
}

}  // namespace sontaro
