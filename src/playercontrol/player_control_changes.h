// What is said and asked before players and types are added or deleted.
#pragma once

#include <optional>
#include <string_view>

#include "playercontrol/player_control_settings.h"

namespace sontaro {

/// A change as the user has asked for it.
struct PlayerControlChange {
    std::optional<LocalText> refusal = {};   ///< there: it is told, and nothing changes
    bool isLimit = false;                    ///< the refusal says that there is no room for more
    std::optional<LocalText> question = {};  ///< there: nothing changes without a Yes
    SettingsEdit edit = {};
};

/// What is chosen among the rows of a player.
struct ChosenInGrid {
    std::string group;       ///< key of the chosen heading, or of the group of the chosen row
    bool isHeading = false;  ///< else it is a row
};

/// A player that is not there is none. What is new has the number in the key of the edit.
[[nodiscard]] PlayerControlChange PlayerAddition(PlayerControlSettings& document);
[[nodiscard]] PlayerControlChange TypeAddition(PlayerControlSettings& document,
                                               std::optional<ElementId> player,
                                               std::string_view name);
[[nodiscard]] PlayerControlChange PlayerDeletion(const PlayerControlSettings& document,
                                                 std::optional<ElementId> player);
[[nodiscard]] PlayerControlChange TypeDeletion(const PlayerControlSettings& document,
                                               std::optional<ElementId> player,
                                               const std::optional<ChosenInGrid>& chosen);

}  // namespace sontaro
