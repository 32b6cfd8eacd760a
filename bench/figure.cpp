#include "bench/figure.h"

#include <fmt/core.h>

#include <algorithm>

namespace sontaro::bench {

namespace {

/// Values that were measured in turn: `ours[i]` next to `baseline[i]`.
Comparison Compare(const std::vector<double>& ours, const std::vector<double>& baseline) {
    std::vector<double> ratios(ours.size());
    std::ranges::transform(ours, baseline, ratios.begin(), std::divides());
    return {Median(ours), Median(baseline), Median(ratios)};
}

}  // namespace

std::string Figure::Line() const {
    return fmt::format("{:<20} {:6.2f}  {} {:.2f}  {}", name, ratio,
                       direction == Goal::kAtLeast ? ">=" : "<=", goal, IsMet() ? "PASS" : "FAIL");
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

Comparison CompareInTurn(int repetitions, const std::function<double()>& ours,
                         const std::function<double()>& baseline) {
    ours();
    baseline();
    std::vector<double> oursMeasured;
    std::vector<double> baselineMeasured;
    for (int i = 0; i < repetitions; ++i) {
        if (i % 2 == 0) oursMeasured.push_back(ours());
        baselineMeasured.push_back(baseline());
        if (i % 2 != 0) oursMeasured.push_back(ours());
    }
    return Compare(oursMeasured, baselineMeasured);
}

}  // namespace sontaro::bench
