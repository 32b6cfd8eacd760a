// The values of settings that a player describes itself, without all that describes them.
#pragma once

#include <json/value.h>

#include "session/block_document.h"

namespace sontaro {

/// Gives the settings of `document` the values ("select") that those with the same key ("keyVal")
/// and of the same kind have in `others`, as far as the limits in `document` allow them; nothing
/// else in it is touched. Settings of one key follow one another. The keys take the place of paths
/// in the answer.
[[nodiscard]] TakenValues TakeSelectValues(Json::Value& document, const Json::Value& others);

/// Gives the settings of `document` the values that are others in `after` than in `before`, two
/// documents of the same settings, whatever its limits are.
void TakeSelectChanges(Json::Value& document, const Json::Value& before, const Json::Value& after);

}  // namespace sontaro
