// The players that a command has to do with.
#pragma once

#include <string>
#include <vector>

#include "cli/surroundings.h"
#include "venue/venue_file.h"

namespace sontaro::cli {

/// Whether the ID of a player has to be known whose address and port were given.
enum class Identity { kNotNeeded, kNeeded };

struct ChosenPlayers {
    std::vector<DeviceRecord>
        players;  ///< by address; of those that were not asked little is known
    std::vector<std::string>
        missing;           ///< names of those that have not answered, as they were given
    bool isNamed = false;  ///< whether single players were wanted at all
};

/// Finds those that the options of the call name: with --all, or without any name where the command
/// takes all then, everybody who answers; those of --expect and --venue are named as well. A player
/// that is named by its address and port need not answer; one that is named by its address alone
/// and does not answer has the port that it had last. Fails with a reason for the user: wrong use,
/// among it a name that fits several players, which are listed, and a local address that cannot be
/// asked from.
/// `range` is asked address by address in place of a broadcast, unless it is empty.
[[nodiscard]] Result<ChosenPlayers> ChoosePlayers(const Surroundings& surroundings,
                                                  Identity identity = Identity::kNotNeeded,
                                                  std::vector<Ipv4Address> range = {});

/// The venue of the call; an empty one when it names none. Fails with a reason for the user.
[[nodiscard]] Result<Venue> VenueOf(const Surroundings& surroundings);

}  // namespace sontaro::cli
