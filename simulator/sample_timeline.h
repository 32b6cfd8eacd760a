// The timeline as simulated players come with it.
#pragma once

#include <string>

namespace sontaro::simulator {

/// Commands of all kinds of ports for the videos of the first player and one of the second.
[[nodiscard]] std::string SampleTimeline();

}  // namespace sontaro::simulator
