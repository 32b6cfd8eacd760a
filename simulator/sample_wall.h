// The configuration of a video wall as simulated players come with it.
#pragma once

#include <string>

namespace sontaro::simulator {

/// Three screens beside each other in another order than that of their players, two overlaps and a
/// zoom. The settings that the user may change are of every kind, named by number and by keyword.
[[nodiscard]] std::string SampleWall();

}  // namespace sontaro::simulator
