#include "widgets/ui_gate.h"

#include <wx/app.h>
#include <wx/thread.h>

namespace sontaro {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestBurst = 8ms;
constexpr auto kBurstGap = 2ms;
constexpr int kPauseMilliseconds = 12;  // shorter pauses starve painting

}  // namespace

UiGate::UiGate() : self_(std::make_shared<UiGate*>(this)) {
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Drain(true); });
}

bool UiGate::Call(const std::function<void()>& function) {
    if (wxIsMainThread()) {
        function();
        return true;
    }
    const auto job = std::make_shared<Job>(Job{function, {}});
    std::future<bool> done = job->done.get_future();
    {
        const std::lock_guard lock(mutex_);
        if (!open_) return false;
        const bool wake = jobs_.empty();
        jobs_.push_back(job);
        if (wake)
            wxTheApp->CallAfter([self = std::weak_ptr(self_)] {
                if (const auto gate = self.lock()) (*gate)->Drain(false);
            });
    }
    return done.get();
}

void UiGate::Close() {
    std::deque<std::shared_ptr<Job>> abandoned;
    {
        const std::lock_guard lock(mutex_);
        open_ = false;
        abandoned.swap(jobs_);
    }
    timer_.Stop();
    for (const auto& job : abandoned) job->done.set_value(false);
}

bool UiGate::RunOne() {
    std::shared_ptr<Job> job;
    {
        const std::lock_guard lock(mutex_);
        if (jobs_.empty()) return false;
        job = jobs_.front();
        jobs_.pop_front();
        if (!jobs_.empty()) Pause();  // a job may run a modal loop; the others go on inside it
    }
    try {
        job->function();
        job->done.set_value(true);
    } catch (...) {
        job->done.set_exception(std::current_exception());
    }
    lastJob_ = Clock::now();
    return true;
}

void UiGate::Drain(bool afterPause) {
    const Clock::time_point now = Clock::now();
    if (afterPause || now - lastJob_ > kBurstGap) burstStart_ = now;
    do {
        if (Clock::now() - burstStart_ > kLongestBurst) {
            Pause();
            return;
        }
    } while (RunOne());
}

void UiGate::Pause() {
    if (!timer_.IsRunning()) timer_.StartOnce(kPauseMilliseconds);
}

}  // namespace sontaro
