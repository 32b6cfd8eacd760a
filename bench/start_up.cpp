#include "base/folders.h"  // before Xlib, to which "Status" is a macro

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <fmt/core.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
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

/// A program that runs as long as this object lives, in a session of its own: it finds nothing
/// that another one has left behind.
class Program {
   public:
    explicit Program(const char* path) {
        static const std::filesystem::path runtimeFolder = RuntimeFolder();
        std::string session = runtimeFolder / "session-XXXXXX";
        if (!mkdtemp(session.data())) throw std::runtime_error("no folder for a session");
        session_ = session;
        setenv("XDG_RUNTIME_DIR", session.c_str(), 1);
        char* const arguments[] = {const_cast<char*>(path), nullptr};
        if (posix_spawn(&id_, path, nullptr, nullptr, arguments, environ) != 0)
            throw std::runtime_error(std::string("cannot start ") + path);
    }
    ~Program() {
        kill(id_, SIGTERM);
        waitpid(id_, nullptr, 0);
        std::error_code leftBehind;
        std::filesystem::remove_all(session_, leftBehind);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Processor time that it has used, in clock ticks.
    [[nodiscard]] long UsedTicks() const {
        std::ifstream stat(Proc("stat"));
        std::string word;
        for (int i = 0; i < 13; ++i) stat >> word;
        long user = 0;
        long system = 0;
        stat >> user >> system;
        return user + system;
    }

    [[nodiscard]] double ResidentMegabytes() const {
        std::ifstream status(Proc("status"));
        for (std::string word; status >> word;) {
            double kibibytes = 0;
            if (word == "VmRSS:" && status >> kibibytes) return kibibytes / 1024;
        }
        throw std::runtime_error("a program ended by itself");
    }

   private:
    [[nodiscard]] std::string Proc(const char* file) const {
        return fmt::format("/proc/{}/{}", id_, file);
    }

    pid_t id_ = 0;
    std::filesystem::path session_;
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
    const Program program(path);
    AwaitPainted(display, empty);
    return stopwatch.Seconds() * 1e3;
}

double MegabytesWhenIdle(Display& display, const char* path) {
    display.Clear();
    const unsigned long empty = display.ColourAt(0, 0);
    const Program program(path);
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
