// Which video a simulated player plays, and where it is in it.
#pragma once

#include <chrono>
#include <string>

#include "simulator/player_state.h"

namespace sontaro::simulator {

/// The folder of the current video, the USB disk included; none when the state names no folder.
[[nodiscard]] const VideoFolder* CurrentFolder(const PlayerState& state);

/// The current video; none when the state names no video.
[[nodiscard]] const Video* CurrentVideo(const PlayerState& state);

/// Plays the first video of the folder called `name`. False when there is none; so below.
[[nodiscard]] bool PlayFolder(PlayerState& state, const std::string& name);

/// Plays the video called `name`, which is looked for in the current folder first.
[[nodiscard]] bool PlayVideo(PlayerState& state, const std::string& name);

/// Plays the video called `name` from the USB disk.
[[nodiscard]] bool PlayUsbVideo(PlayerState& state, const std::string& name);

/// Does what a button of the remote control stands for. A player that is switched off can only be
/// switched on: false for everything else, and for no known action.
[[nodiscard]] bool Perform(PlayerState& state, Action action);

/// Lets `elapsed` go by. A video that ends is followed as the play mode has it.
void Advance(PlayerState& state, std::chrono::microseconds elapsed);

}  // namespace sontaro::simulator
