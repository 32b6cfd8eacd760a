// Calls at a later time.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <utility>

namespace sontaro {

/// Calls functions later, on the thread that asks: the user interface's, a plain loop's, or a
/// test's, which moves the time by hand. A call comes after everything that other threads had
/// handed over by then is handled: after the thread was blocked, what has arrived meanwhile counts
/// before the time that has passed.
class Timers {
   public:
    using Id = std::uint64_t;

    virtual ~Timers() = default;
    /// Calls `call` once, in `delay`, and keeps it until it returns.
    [[nodiscard]] virtual Id After(std::chrono::milliseconds delay, std::function<void()> call) = 0;
    /// Has it not called any more; one that has been called is no matter.
    virtual void Cancel(Id id) = 0;
};

/// One call at a time, which does not come once the timer is gone.
class Timer {
   public:
    explicit Timer(Timers& timers) : timers_(timers) {}
    ~Timer() { Stop(); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// Calls `call` in `delay`, in place of what it was to call before.
    void Start(std::chrono::milliseconds delay, std::function<void()> call) {
        Stop();
        id_ = timers_.After(delay, [this, call = std::move(call)] {
            id_ = 0;
            call();
        });
    }
    void Stop() {
        if (id_ != 0) timers_.Cancel(std::exchange(id_, 0));
    }
    [[nodiscard]] bool IsRunning() const { return id_ != 0; }

   private:
    Timers& timers_;
    Timers::Id id_ = 0;
};

}  // namespace sontaro
