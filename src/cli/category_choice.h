// Which category the videos of an upload go to.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "cli/player_choice.h"
#include "session/session.h"

namespace sontaro::cli {

/// The number of the category of --category, 0 to 63: a number as it stands; a name by what every
/// player calls its categories, one after another. A name that players have in different places is
/// refused. Tells why there is none; how the program is to end then, otherwise. Blocks.
[[nodiscard]] std::variant<std::uint32_t, int> ChooseCategory(
    const Surroundings& surroundings, const std::vector<DeviceRecord>& players,
    const SessionOptions& options);

}  // namespace sontaro::cli
