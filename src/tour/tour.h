// A walk through the running program that presses its real controls.
#pragma once

#include <wx/dialog.h>
#include <wx/timer.h>

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>

namespace sontaro {

/// Performs steps one after the other in the program's own event loop, modal dialogs included:
/// acts, waits for the effect, takes a picture of the window in front and prints one line. A step
/// whose effect does not come, and a complaint of the toolkit, end the process with exit code 1.
/// The last step has no effect to wait for: it ends the program. There is one tour in a process.
class Tour {
   public:
    using Clock = std::chrono::steady_clock;

    struct Step {
        std::function<void()> act;         ///< presses something; must not block
        std::function<bool()> done;        ///< whether the effect is there
        std::function<std::string()> say;  ///< the line to print
        std::string picture;               ///< name of the picture; empty: none is taken
    };

    /// Pictures go into `folder`, which is created.
    explicit Tour(std::filesystem::path folder);

    void Add(Step step) { steps_.push_back(std::move(step)); }
    void Start();

    /// Whether every step has been performed.
    [[nodiscard]] bool Succeeded() const { return steps_.empty(); }

    /// The window in front when its title is `title`, else absent.
    [[nodiscard]] static wxDialog* FrontTitled(const std::string& title);
    /// Presses the button `id` of the window in front; false when it cannot be pressed.
    static bool Press(int id);
    /// Tells the window in front that its button `id` has been pressed, which it need not have.
    static void Command(int id);

   private:
    void Proceed();
    void Finish();
    [[nodiscard]] bool TakePicture(const std::string& name);
    [[noreturn]] static void Fail(const std::string& what);

    std::filesystem::path folder_;
    std::deque<Step> steps_;
    wxTimer timer_;
    Clock::time_point actedAt_{};
    Clock::time_point doneAt_{};
    bool acted_ = false;
    bool settled_ = false;
    int pictures_ = 0;
};

}  // namespace sontaro
