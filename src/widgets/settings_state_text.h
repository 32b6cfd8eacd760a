// The line that tells how a player's settings stand, for every dialog that has them.
#pragma once

#include <string>

#include "settings/settings_run.h"

namespace sontaro {

/// What the line says, in the language of the process.
[[nodiscard]] std::string StateTextOf(const SettingsRun& run);

}  // namespace sontaro
