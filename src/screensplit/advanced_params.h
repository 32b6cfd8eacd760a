// The settings that a player describes for its video wall, as the wizard edits them.
#pragma once

#include "settings/custom_entries.h"

namespace sontaro {

/// What the keys of their rows begin with.
inline constexpr const char* kAdvancedPath = "varParam";

/// Takes an edit of the row with that key, or says why not: nothing entered, out of the range, not
/// a number. A decimal is kept with six digits behind its point.
[[nodiscard]] EditAnswer EditAdvancedParam(CustomEntries& entries, const SettingsEdit& edit);

}  // namespace sontaro
