// Where the pictures of a video wall lie.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sontaro {

/// How the screens of a wall follow one another.
enum class SplitDirection : std::uint8_t { kHorizontal = 0, kVertical = 1 };

/// One picture: its overlaps with the one before it, and its corners in the wall, all in pixels.
/// The corners are the outermost pixels, so that a picture is one wider than their distance.
struct SplitChannel {
    std::int32_t channelId = 0;
    std::int32_t overlapX = 0;
    std::int32_t overlapY = 0;
    std::int32_t carried[2] = {};  ///< of no known meaning
    std::int32_t leftTopX = 0, leftTopY = 0;
    std::int32_t rightTopX = 0, rightTopY = 0;
    std::int32_t leftBottomX = 0, leftBottomY = 0;
    std::int32_t rightBottomX = 0, rightBottomY = 0;

    bool operator==(const SplitChannel&) const = default;
};
static_assert(sizeof(SplitChannel) == 13 * sizeof(std::int32_t));

/// Pixels cut off at the edges of a screen's picture.
struct SplitZoom {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0;

    bool operator==(const SplitZoom&) const = default;
};

/// One output of a player in the wall.
struct SplitScreen {
    std::size_t screen = 0;  ///< its place in the list of screen names
    bool enabled = false;
    std::vector<SplitChannel> channels = {};
    SplitZoom zoom = {};

    bool operator==(const SplitScreen&) const = default;
};

/// The size of every picture, in pixels.
struct SplitSize {
    std::int32_t width = 0;
    std::int32_t height = 0;

    bool operator==(const SplitSize&) const = default;
};

/// Sets the corners of every channel of the enabled screens: the first one's at the wall's origin,
/// every other one's beside (or below) the one before. An overlap of 0 begins one pixel behind it,
/// an overlap of 1 shares a column (or row) with it. The others' corners are all 0.
void LayOut(std::span<SplitScreen> screens, SplitDirection direction, SplitSize size);

}  // namespace sontaro
