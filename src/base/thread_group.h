// The socket threads of the process.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace sontaro {

/// Starts threads that nobody holds a handle of and waits for all of them at exit. A thread that
/// may be waiting for the user-interface thread is never joined while that thread still serves
/// it: shut the window directory down first, then close the links, then `Join`.
class ThreadGroup {
   public:
    ThreadGroup() : state_(std::make_shared<State>()) {}
    ~ThreadGroup() { Join(); }
    ThreadGroup(const ThreadGroup&) = delete;
    ThreadGroup& operator=(const ThreadGroup&) = delete;

    /// Runs `body` on a new thread. `body` must not throw; what it captures is destroyed before
    /// the thread counts as ended. Any thread. False when the system has no thread left.
    [[nodiscard]] bool Start(std::function<void()> body);

    /// Waits until every started thread has ended.
    void Join();

   private:
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        int running = 0;

        void Ended();
    };

    std::shared_ptr<State> state_;  // outlives the last thread's farewell
};

}  // namespace sontaro
