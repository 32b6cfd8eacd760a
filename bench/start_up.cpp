#include "bench/program.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <fmt/core.h>

#include <stdexcept>
#include <thread>

#include "bench/figures.h"
#include "bench/stopwatch.h"

namespace sontaro::bench {

namespace {

using namespace std::chrono_literals;

constexpr double kPatienceSeconds = 30;
constexpr int kSmallestWindow = 64;  // programs also map tiny helper windows

class Display {
   public:
    Display() : display_(XOpenDisplay(nullptr)) {
        if (!display_) throw std::runtime_error("there is no display");
        XSelectInput(display_, Root(), SubstructureNotifyMask);
        XSync(display_, True);
    }
    ~Display() { XCloseDisplay(display_); }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    /// Forgets what has happened so far.
    void Clear() { XSync(display_, True); }

    /// A point inside the window that has just been mapped; false when none has.
    [[nodiscard]] bool TakeMappedWindow(int& x, int& y) {
        while (XPending(display_) > 0) {
            XEvent event;
            XNextEvent(display_, &event);
            XWindowAttributes window;
            if (event.type != MapNotify || event.xmap.override_redirect != False ||
                XGetWindowAttributes(display_, event.xmap.window, &window) == 0 ||
                window.width < kSmallestWindow || window.height < kSmallestWindow)
                continue;
            x = window.x + 4;
            y = window.y + 4;
            return true;
        }
        return false;
    }

    /// Colour of a point of the screen.
    [[nodiscard]] unsigned long ColourAt(int x, int y) {
        XImage* image = XGetImage(display_, Root(), x, y, 1, 1, AllPlanes, ZPixmap);
        if (!image) throw std::runtime_error("a window is not on the screen");
        const unsigned long colour = XGetPixel(image, 0, 0);
        XDestroyImage(image);
        return colour;
    }

   private:
    [[nodiscard]] ::Window Root() { return DefaultRootWindow(display_); }

    ::Display* display_;
};

template <class Condition>
void Await(const Stopwatch& stopwatch, Condition condition) {
    while (!condition()) {
        if (stopwatch.Seconds() > kPatienceSeconds)
            throw std::runtime_error("a window does not appear");
        std::this_thread::sleep_for(500us);
    }
}

void AwaitIdle(const Program& program) {
    for (long used = -1; used != program.UsedTicks();) {
        used = program.UsedTicks();
        std::this_thread::sleep_for(400ms);
    }
}

void AwaitPainted(Display& display, unsigned long empty) {
    const Stopwatch stopwatch;
    int x = 0;
    int y = 0;
    Await(stopwatch, [&] { return display.TakeMappedWindow(x, y); });
    Await(stopwatch, [&] { return display.ColourAt(x, y) != empty; });
}

double MillisecondsUntilPainted(Display& display, const char* path) {
    display.Clear();
    const unsigned long empty = display.ColourAt(0, 0);
    const Stopwatch stopwatch;
    const Program program({path});
    AwaitPainted(display, empty);
    return stopwatch.Seconds() * 1e3;
}

double MegabytesWhenIdle(Display& display, const char* path) {
    display.Clear();
    const unsigned long empty = display.ColourAt(0, 0);
    const Program program({path});
    AwaitPainted(display, empty);
    AwaitIdle(program);
    return program.ResidentMegabytes();
}

}  // namespace

std::vector<Figure> StartUp() {
    Display display;
    const Comparison time = CompareInTurn(
        41, [&] { return MillisecondsUntilPainted(display, SONTARO_PROGRAM); },
        [&] { return MillisecondsUntilPainted(display, MINIMAL_PROGRAM); });
    const Comparison memory = CompareInTurn(
        5, [&] { return MegabytesWhenIdle(display, SONTARO_PROGRAM); },
        [&] { return MegabytesWhenIdle(display, MINIMAL_PROGRAM); });
    return {{"start_up_time", time.ratio, Goal::kAtMost, 1.25,
             fmt::format("sontaro {:.0f} ms, minimal {:.0f} ms", time.ours, time.baseline)},
            {"resident_memory", memory.ratio, Goal::kAtMost, 1.3,
             fmt::format("sontaro {:.1f} MB, minimal {:.1f} MB", memory.ours, memory.baseline)}};
}

}  // namespace sontaro::bench
