#include "playercontrol/player_control_document.h"

#include <fmt/printf.h>

#include "base/json.h"
#include "playercontrol/player_control_table.h"

namespace sontaro {

Status ReadPlayerControl(std::string_view text, PlayerControlModel& model, Source source) {
    Result<Json::Value> json = ParseJson(text);
    if (!json) return Error{json.reason()};
    if (!json->isObject()) return Error{"the text is no JSON object"};
    PlayerControlModel read;
    if (source == Source::kFile) read.others = model.others;
    PlayerControlSchema().Read(std::move(*json), source, read);
    model = std::move(read);
    return Done{};
}

std::string PlayerControlText(const PlayerControlModel& model) {
    return WriteJson(PlayerControlSchema().ToJson(model));
}

std::string ControlledPlayerCaption(std::int32_t number) {
    constexpr LocalText kPlayer = {"播放器%d", "Player%d"};
    return fmt::sprintf(Localized(kPlayer), std::int64_t{number} + 1);
}

}  // namespace sontaro
