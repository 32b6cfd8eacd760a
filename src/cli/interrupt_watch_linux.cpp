#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "cli/exit_code.h"
#include "cli/interrupt_watch.h"

namespace sontaro::cli {

namespace {

/// What the program was started without, such as by nohup, it goes on without.
bool IsIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

constexpr int kLeave = SIGUSR1;  // that the watch itself is to end

sigset_t WatchedSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, kLeave);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!IsIgnored(signal)) sigaddset(&signals, signal);
    return signals;
}

}  // namespace

/// All other threads leave these signals to one that does nothing but wait for them.
class InterruptWatch::Impl {
   public:
    explicit Impl(std::function<void()> interrupted) : interrupted_(std::move(interrupted)) {
        const sigset_t signals = WatchedSignals();
        pthread_sigmask(SIG_BLOCK, &signals, &before_);
        thread_ = std::thread([this] { Wait(); });
    }
    ~Impl() {
        ending_ = true;
        pthread_kill(thread_.native_handle(), kLeave);
        thread_.join();
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    [[nodiscard]] bool IsInterrupted() const { return isInterrupted_; }

   private:
    void Wait() {
        const sigset_t signals = WatchedSignals();
        for (int signal = 0; sigwait(&signals, &signal) == 0 && !ending_;) {
            if (signal == kLeave) continue;
            if (isInterrupted_.exchange(true)) _exit(kInterrupted);
            interrupted_();
        }
    }

    const std::function<void()> interrupted_;
    std::atomic<bool> isInterrupted_ = false;
    std::atomic<bool> ending_ = false;
    sigset_t before_{};
    std::thread thread_;
};

InterruptWatch::InterruptWatch(std::function<void()> interrupted)
    : impl_(std::make_unique<Impl>(std::move(interrupted))) {}
InterruptWatch::~InterruptWatch() = default;

bool InterruptWatch::IsInterrupted() const { return impl_->IsInterrupted(); }

void SurviveClosedPipes() { std::signal(SIGPIPE, SIG_IGN); }

}  // namespace sontaro::cli
