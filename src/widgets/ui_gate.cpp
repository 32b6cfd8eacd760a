#include "widgets/ui_gate.h"

#include <wx/app.h>
#include <wx/thread.h>

#include <algorithm>

namespace sontaro {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestBurst = 8ms;
constexpr auto kBurstGap = 2ms;
constexpr int kPauseMilliseconds = 12;  // shorter pauses starve painting

}  // namespace

UiGate::UiGate() : self_(std::make_shared<UiGate*>(this)) {
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Drain(true); });
    deadlineTimer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { TakeDeadlines(); });
}

bool UiGate::Call(const std::function<void()>& function) {
    if (wxIsMainThread()) {
        function();
        return true;
    }
    const auto job = std::make_shared<Job>(Job{[&function] { function(); }, std::promise<bool>()});
    std::future<bool> done = job->done->get_future();
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
    deadlineTimer_.Stop();
    for (const auto& job : abandoned)
        if (job->done) job->done->set_value(false);
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
    if (job->done) {
        try {
            job->function();
            job->done->set_value(true);
        } catch (...) {
            job->done->set_exception(std::current_exception());
        }
    } else {
        job->function();
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

Timers::Id UiGate::After(std::chrono::milliseconds delay, std::function<void()> call) {
    deadlines_.emplace(Clock::now() + delay, Deadline{++lastId_, std::move(call)});
    Await();
    return lastId_;
}

void UiGate::Cancel(Id id) {
    std::erase_if(deadlines_, [id](const auto& entry) { return entry.second.id == id; });
    due_.erase(id);
    Await();
}

/// The toolkit may be early by the fraction of a millisecond; then it is asked again.
void UiGate::Await() {
    deadlineTimer_.Stop();
    if (deadlines_.empty()) return;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadlines_.begin()->first - Clock::now());
    deadlineTimer_.StartOnce(static_cast<int>(std::max<std::int64_t>(1, left.count())));
}

/// What is due goes into the queue, behind what other threads have handed over by now.
void UiGate::TakeDeadlines() {
    const Clock::time_point now = Clock::now();
    {
        const std::lock_guard lock(mutex_);
        while (open_ && !deadlines_.empty() && deadlines_.begin()->first <= now) {
            const Id id = deadlines_.begin()->second.id;
            due_.emplace(id, std::move(deadlines_.begin()->second.call));
            deadlines_.erase(deadlines_.begin());
            jobs_.push_back(std::make_shared<Job>(Job{[this, id] { CallDue(id); }, {}}));
        }
    }
    Await();
    Drain(true);
}

void UiGate::CallDue(Id id) {
    if (auto node = due_.extract(id)) node.mapped()();
}

void UiGate::Pause() {
    if (!timer_.IsRunning()) timer_.StartOnce(kPauseMilliseconds);
}

}  // namespace sontaro
