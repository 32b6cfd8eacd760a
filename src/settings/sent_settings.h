// Settings that are on their way to a player.
#pragma once

#include <string>
#include <vector>

#include "settings/row_values.h"
#include "settings/settings_history.h"

namespace sontaro {

/// What the player is to confirm.
struct SentSettings {
    SettingsHistory::Mark mark;
    std::string text;
    RowValues values;
    std::vector<std::string> keys;
    bool restarts;
};

}  // namespace sontaro
