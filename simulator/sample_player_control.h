// The player control protocol as simulated players come with it.
#pragma once

#include <string>

namespace sontaro::simulator {

/// One player of two, with a type for each of its folders. "lamp" is a setting of this player
/// alone.
[[nodiscard]] std::string SamplePlayerControl();

}  // namespace sontaro::simulator
