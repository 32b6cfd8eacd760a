// The way of other threads to the user-interface thread.
#pragma once

#include <wx/timer.h>

#include <chrono>
#include <deque>
#include <future>
#include <memory>
#include <mutex>

#include "base/ui_thread.h"

namespace sontaro {

/// Runs the functions of other threads in the wxWidgets event loop, modal loops included. Under a
/// flood of calls it lets paint and input through between bursts. Created and destroyed on the
/// user-interface thread.
class UiGate : public UiThread {
   public:
    UiGate();
    ~UiGate() override { Close(); }

    bool Call(const std::function<void()>& function) override;
    void Close() override;

   private:
    using Clock = std::chrono::steady_clock;

    struct Job {
        const std::function<void()>& function;
        std::promise<bool> done;
    };

    [[nodiscard]] bool RunOne();
    void Drain(bool afterPause);
    void Pause();

    std::mutex mutex_;
    std::deque<std::shared_ptr<Job>> jobs_;
    bool open_ = true;
    std::shared_ptr<UiGate*> self_;  // emptied on destruction, for wake-ups that come later
    wxTimer timer_;
    Clock::time_point burstStart_{};
    Clock::time_point lastJob_{};
};

}  // namespace sontaro
