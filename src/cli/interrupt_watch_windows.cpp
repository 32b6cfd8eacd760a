#include <windows.h>

#include <mutex>

#include "cli/exit_code.h"
#include "cli/interrupt_watch.h"

namespace sontaro::cli {

class InterruptWatch::Impl {
   public:
    explicit Impl(std::function<void()> interrupted) : interrupted_(std::move(interrupted)) {
        const std::lock_guard lock(mutex_);
        only_ = this;
        SetConsoleCtrlHandler(OnControl, TRUE);
    }
    ~Impl() {
        SetConsoleCtrlHandler(OnControl, FALSE);
        const std::lock_guard lock(mutex_);
        only_ = nullptr;
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    [[nodiscard]] bool IsInterrupted() const { return isInterrupted_; }

   private:
    static BOOL WINAPI OnControl(DWORD) {
        const std::lock_guard lock(mutex_);
        if (!only_) return FALSE;
        if (only_->isInterrupted_.exchange(true)) ExitProcess(kInterrupted);
        only_->interrupted_();
        return TRUE;
    }

    static std::mutex mutex_;
    static Impl* only_;  // that the system's thread calls

    const std::function<void()> interrupted_;
    std::atomic<bool> isInterrupted_ = false;
};

std::mutex InterruptWatch::Impl::mutex_;
InterruptWatch::Impl* InterruptWatch::Impl::only_ = nullptr;

InterruptWatch::InterruptWatch(std::function<void()> interrupted)
    : impl_(std::make_unique<Impl>(std::move(interrupted))) {}
InterruptWatch::~InterruptWatch() = default;

bool InterruptWatch::IsInterrupted() const { return impl_->IsInterrupted(); }

void SurviveClosedPipes() {}  // no signal comes of them

}  // namespace sontaro::cli
