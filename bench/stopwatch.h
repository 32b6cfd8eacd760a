// Time that has passed.
#pragma once

#include <chrono>

namespace sontaro::bench {

/// Runs from its construction on.
class Stopwatch {
   public:
    [[nodiscard]] double Seconds() const {
        return std::chrono::duration<double>(Clock::now() - start_).count();
    }

   private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point start_ = Clock::now();
};

}  // namespace sontaro::bench
