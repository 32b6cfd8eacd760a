// The user's wish that the program end.
#pragma once

#include <atomic>
#include <functional>
#include <memory>

namespace sontaro::cli {

/// Waits for an interruption as long as it lives: on Linux SIGINT, SIGTERM and SIGHUP, on Windows
/// Ctrl+C, Ctrl+Break and the closing of the console. A second one ends the program at once. One of
/// them in a process, made before any other thread.
class InterruptWatch {
   public:
    /// `interrupted` is called once, on a thread of the watch's own or of the system's.
    explicit InterruptWatch(std::function<void()> interrupted);
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    [[nodiscard]] bool IsInterrupted() const;

   private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

/// Has writing to a pipe that nobody reads fail instead of ending the program.
void SurviveClosedPipes();

}  // namespace sontaro::cli
