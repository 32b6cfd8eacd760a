#include "cli/nearest_word.h"

#include <algorithm>
#include <vector>

namespace sontaro::cli {

namespace {

/// How many such changes lead from `a` to `b`.
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> twoAbove(b.size() + 1);
    std::vector<std::size_t> above(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::swap(twoAbove, above);
        std::swap(above, row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool isSame = a[i - 1] == b[j - 1];
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (isSame ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], twoAbove[j - 2] + 1);
        }
    }
    return row[b.size()];
}

}  // namespace

std::string NearestWord(std::string_view typed, std::span<const std::string> words) {
    constexpr std::size_t kLongest = 40;  // what is longer is no slip
    if (typed.empty() || typed.size() > kLongest) return "";
    const std::string* nearest = nullptr;
    std::size_t least = std::max<std::size_t>(typed.size() / 3 + 1, 2);  // of other words
    for (const std::string& word : words) {
        const std::size_t distance = Distance(typed, word);
        if (distance >= least || distance >= word.size()) continue;
        least = distance;
        nearest = &word;
    }
    return nearest ? *nearest : "";
}

}  // namespace sontaro::cli
