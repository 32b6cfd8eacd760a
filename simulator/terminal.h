// What is typed into the program's terminal.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace sontaro::simulator {

/// Gives a program that was started without a standard input an empty one: what it opens first
/// would be taken for its input. Called before anything is opened.
void EnsureInput();

/// Waits for the standard input and reads from it; 0 or less when it has ended. A program in the
/// background of its terminal waits until it is in the foreground.
std::int64_t ReadInput(std::span<char> buffer);

/// Hands over the lines of the standard input until it ends or the object goes. There is one such
/// object at a time.
class Terminal {
   public:
    using LineHandler = std::function<void(std::string_view line)>;

    /// `handle` is called on a thread of the object's own. Of a line that is longer than 64 KiB
    /// it is given the start.
    explicit Terminal(LineHandler handle);
    /// Does not wait for the input. `handle` is not called any more.
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

   private:
    struct Gate;
    std::shared_ptr<Gate> gate_;  // shared with the thread, which nothing ends but the input
};

}  // namespace sontaro::simulator
