// The controls that stand for the player's buttons.
#pragma once

#include <algorithm>

#include "videocontrol/video_control_run.h"

namespace sontaro {

struct VideoButtonControl {
    int id;    ///< control number
    int type;  ///< the player's number of the button
};

// clang-format off
inline constexpr std::array<VideoButtonControl, 14> kVideoButtonControls = {{
    {2104, 2}, {2105, 3},  {2106, 4},  {2107, 5},  {2108, 6},  {2109, 7},   {2110, 8},
    {2113, 9}, {2114, 10}, {2120, 11}, {2121, 12}, {2126, 13}, {2124, 200}, {2123, 201},
}};
// clang-format on

/// The control of a button that the player knows as `type`, which is one of `kVideoButtons`.
[[nodiscard]] constexpr int ControlOfVideoButton(int type) {
    return std::ranges::find(kVideoButtonControls, type, &VideoButtonControl::type)->id;
}

/// The button that the control `id` stands for.
[[nodiscard]] constexpr const VideoButton& VideoButtonOfControl(int id) {
    const int type = std::ranges::find(kVideoButtonControls, id, &VideoButtonControl::id)->type;
    return *std::ranges::find(kVideoButtons, type, &VideoButton::type);
}

}  // namespace sontaro
