// The stations of the tour.
#pragma once

#include "simulator/player_group.h"
#include "tour/tour.h"

namespace sontaro {

/// Adds a step for everything that Sontaro can do. What players report is checked at `players`,
/// which outlive the tour. Its videos are made in the folder `films`.
void WriteTourScript(Tour& tour, simulator::PlayerGroup& players,
                     const std::filesystem::path& films);

}  // namespace sontaro
