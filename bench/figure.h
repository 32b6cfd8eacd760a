// What a measurement says, and how two things are compared fairly on a busy machine.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace sontaro::bench {

/// Whether a ratio has to reach its goal or to stay below it.
enum class Goal { kAtLeast, kAtMost };

/// Ours against a baseline of the same run.
struct Figure {
    std::string name;
    double ratio = 0;
    Goal direction{};
    double goal = 0;
    std::string details;  ///< the measured values behind the ratio

    [[nodiscard]] bool IsMet() const {
        return direction == Goal::kAtLeast ? ratio >= goal : ratio <= goal;
    }
    /// Name, ratio, goal, PASS or FAIL.
    [[nodiscard]] std::string Line() const;
};

/// The middle of `values`, of which there is at least one.
[[nodiscard]] double Median(std::vector<double> values);

/// Medians of several measurements of ours and of the baseline, and of their ratios.
struct Comparison {
    double ours = 0;
    double baseline = 0;
    double ratio = 0;
};

/// Measures both in turn, `repetitions` times after one that does not count; which one goes first
/// alternates, so that a machine that gets slower or faster favours neither.
[[nodiscard]] Comparison CompareInTurn(int repetitions, const std::function<double()>& ours,
                                       const std::function<double()>& baseline);

}  // namespace sontaro::bench
