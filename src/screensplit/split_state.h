// What the user changes of a video wall, and the steps in which it is undone.
#pragma once

#include <memory>

#include "screensplit/split_wall.h"
#include "settings/custom_entries.h"

namespace sontaro {

/// What can be undone.
struct SplitState {
    SplitArrangement shown;  ///< by the slots and the choice of a direction
    SplitWall wall;          ///< as it is laid out: with the arrangement applied last
    bool isLaidOut = false;
    bool isAsFetched = false;  ///< the fetched document is to go back, but for `advanced`
    std::shared_ptr<const CustomEntries> advanced = std::make_shared<const CustomEntries>();

    bool operator==(const SplitState& other) const;
};

/// A change of the state.
struct SplitStep {
    SplitState before, after;

    [[nodiscard]] std::size_t Bytes() const;
    [[nodiscard]] bool Absorb(const SplitStep& next) {
        after = next.after;
        return true;
    }
};

}  // namespace sontaro
