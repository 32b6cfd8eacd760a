// The stations of the tour.
#pragma once

#include "app/tour.h"
#include "simulator/player_group.h"

namespace sontaro {

/// Adds a step for everything that Sontaro can do. What players report is checked at `players`,
/// which outlive the tour.
void WriteTourScript(Tour& tour, simulator::PlayerGroup& players);

}  // namespace sontaro
