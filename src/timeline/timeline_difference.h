// What two timelines differ in.
#pragma once

#include <string>
#include <vector>

#include "timeline/node_groups.h"

namespace sontaro {

struct TimelineDifference {
    std::size_t missing = 0;              ///< nodes of the first that the second does not have
    std::size_t unexpected = 0;           ///< nodes of the second that the first does not have
    std::vector<TimeNode> examples = {};  ///< the first few of both kinds

    [[nodiscard]] bool IsNone() const { return missing == 0 && unexpected == 0; }
};

/// Compares all nodes, in whichever order they stand.
[[nodiscard]] TimelineDifference Compare(const GroupOrder& first, const GroupOrder& second);

/// In words, for the user; "confirmed and equal" when there is no difference.
[[nodiscard]] std::string Told(const TimelineDifference& difference);

}  // namespace sontaro
