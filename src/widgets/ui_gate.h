// The way of other threads, and of later calls, to the user-interface thread.
#pragma once

#include <wx/timer.h>

#include <chrono>
#include <deque>
#include <future>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include "base/timers.h"
#include "base/ui_thread.h"

namespace sontaro {

/// Runs the functions of other threads, and what is to be called later, in the wxWidgets event
/// loop, modal loops included. Under a flood of calls it lets paint and input through between
/// bursts. Created and destroyed on the user-interface thread.
class UiGate : public UiThread, public Timers {
   public:
    UiGate();
    ~UiGate() override { Close(); }

    bool Call(const std::function<void()>& function) override;
    void Close() override;
    Id After(std::chrono::milliseconds delay, std::function<void()> call) override;
    void Cancel(Id id) override;

   private:
    using Clock = std::chrono::steady_clock;

    struct Job {
        std::function<void()> function;
        std::optional<std::promise<bool>> done;  // when a thread waits for it
    };
    struct Deadline {
        Id id;
        std::function<void()> call;
    };

    [[nodiscard]] bool RunOne();
    void Drain(bool afterPause);
    void Pause();
    void Await();
    void TakeDeadlines();
    void CallDue(Id id);

    std::mutex mutex_;
    std::deque<std::shared_ptr<Job>> jobs_;
    bool open_ = true;
    std::shared_ptr<UiGate*> self_;  // emptied on destruction, for wake-ups that come later
    wxTimer timer_;
    wxTimer deadlineTimer_;
    std::multimap<Clock::time_point, Deadline> deadlines_;
    std::map<Id, std::function<void()>> due_;  // behind what other threads have handed over
    Id lastId_ = 0;
    Clock::time_point burstStart_{};
    Clock::time_point lastJob_{};
};

}  // namespace sontaro
