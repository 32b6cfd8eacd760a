#include <fmt/core.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/dialog.h>

#include <condition_variable>
#include <stdexcept>
#include <thread>

#include "base/window_directory.h"
#include "bench/figures.h"
#include "bench/stopwatch.h"
#include "link/window_message.h"
#include "widgets/ui_gate.h"

namespace sontaro::bench {

namespace {

constexpr int kRoundTrips = 2'000;  // a measurement
constexpr const char* kTitle = "Round trip";

template <class RoundTrip>
double MedianMicroseconds(RoundTrip roundTrip) {
    std::vector<double> times;
    for (int i = 0; i < kRoundTrips; ++i) {
        const Stopwatch stopwatch;
        roundTrip();
        times.push_back(stopwatch.Seconds() * 1e6);
    }
    return Median(std::move(times));
}

/// Two threads that hand a turn to each other through a condition variable.
class BareRoundTrip {
   public:
    ~BareRoundTrip() { HandOver(Turn::kEnd); }

    void Go() {
        HandOver(Turn::kTheirs);
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return turn_ == Turn::kOurs; });
    }

   private:
    enum class Turn { kOurs, kTheirs, kEnd };

    void HandOver(Turn turn) {
        {
            const std::lock_guard lock(mutex_);
            turn_ = turn;
        }
        changed_.notify_one();
    }

    void Answer() {
        for (std::unique_lock lock(mutex_);;) {
            changed_.wait(lock, [this] { return turn_ != Turn::kOurs; });
            if (turn_ == Turn::kEnd) return;
            turn_ = Turn::kOurs;
            lock.unlock();
            changed_.notify_one();
            lock.lock();
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    Turn turn_ = Turn::kOurs;
    std::jthread other_{[this] { Answer(); }};
};

double OfMessages(WindowDirectory& directory) {
    return MedianMicroseconds([&] {
        LinkEvent event{"127.0.0.2", 5000, 0, LinkCode::kReceived, 0, {}};
        if (!directory.Send(kTitle, {MessageId::kLinkEvent, 0, std::move(event), 0}))
            throw std::runtime_error("a message was not delivered");
    });
}

double OfBareThreads() {
    BareRoundTrip bare;
    return MedianMicroseconds([&] { bare.Go(); });
}

/// A window like any other, for the event loop to be a real one.
void ShowDialog() {
    auto* dialog = new wxDialog(nullptr, wxID_ANY, kTitle);
    new wxButton(dialog, wxID_OK);
    dialog->Show();
}

/// Measures on a thread of its own while this one runs the event loop.
Comparison MeasureInEventLoop() {
    constexpr int kRepetitions = 15;
    UiGate gate;
    WindowDirectory directory(gate);
    int received = 0;
    const auto window = directory.Register(kTitle, [&](WindowMessage&) { ++received; });
    Comparison times;
    std::exception_ptr failure;
    const std::jthread linkThread([&] {
        try {
            times = CompareInTurn(
                kRepetitions, [&] { return OfMessages(directory); }, OfBareThreads);
        } catch (...) {
            failure = std::current_exception();
        }
        wxTheApp->CallAfter([] { wxTheApp->ExitMainLoop(); });
    });
    wxTheApp->MainLoop();
    if (failure) std::rethrow_exception(failure);
    return times;
}

}  // namespace

Figure MessageRoundTrip() {
    ShowDialog();
    const Comparison times = MeasureInEventLoop();
    return {"message_round_trip", times.ratio, Goal::kAtMost, 3.0,
            fmt::format("message {:.1f} us, bare {:.1f} us", times.ours, times.baseline)};
}

}  // namespace sontaro::bench
