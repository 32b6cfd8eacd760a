#include "screensplit/split_state.h"

#include "base/json.h"

namespace sontaro {

namespace {

std::size_t BytesOf(const SplitState& state) {
    const SplitWall& wall = state.wall;
    return sizeof state + wall.seams.size() * sizeof(SplitSeam) +
           wall.zooms.size() * sizeof(SplitZoom) + state.shown.slots.size() * 2 * sizeof(SplitSlot);
}

}  // namespace

bool SplitState::operator==(const SplitState& other) const {
    return shown == other.shown && wall == other.wall && isLaidOut == other.isLaidOut &&
           isAsFetched == other.isAsFetched &&
           (advanced == other.advanced || *advanced == *other.advanced);
}

/// Advanced settings are held by many steps; whoever changes them counts them.
std::size_t SplitStep::Bytes() const {
    constexpr std::size_t kTreeOfText = 4;  // what jsoncpp takes for a byte of text
    std::size_t bytes = BytesOf(before) + BytesOf(after);
    if (before.advanced != after.advanced)
        bytes += kTreeOfText * WriteJson(after.advanced->ToJson()).size();
    return bytes;
}

}  // namespace sontaro
