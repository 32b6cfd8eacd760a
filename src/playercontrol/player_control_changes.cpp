#include "playercontrol/player_control_changes.h"

namespace sontaro {

namespace {

constexpr LocalText kEnoughPlayers = {"添加的播放器够多了吧！", "It has reached its limit!"};
constexpr LocalText kEnoughTypes = {"添加的类别够多了吧！", "It has reached its limit!"};
constexpr LocalText kNoPlayer = {"没有选择播放器吧！", "No player selected!"};
constexpr LocalText kNoType = {"没有选择类别吧！", "No type selected!"};
constexpr LocalText kNotAType = {"选择要删除的类别！", "Select the category to delete!"};
constexpr LocalText kDeleteQuestion = {"【真的要删除吗?】", "Do you really want to delete it?"};

const ControlledPlayer* Find(const PlayerControlSettings& document,
                             std::optional<ElementId> player) {
    return player ? document.Model().players.Find(*player) : nullptr;
}

PlayerControlChange Refuse(const LocalText& text) { return {.refusal = text}; }

PlayerControlChange Limit(const LocalText& text) { return {.refusal = text, .isLimit = true}; }

PlayerControlChange Delete(const ControlElement& element) {
    return {.question = kDeleteQuestion, .edit = PlayerControlSettings::Without(element)};
}

}  // namespace

PlayerControlChange PlayerAddition(PlayerControlSettings& document) {
    if (document.Model().players.size() >= kMostControlledPlayers) return Limit(kEnoughPlayers);
    return {.edit = document.NewPlayer()};
}

PlayerControlChange TypeAddition(PlayerControlSettings& document, std::optional<ElementId> player,
                                 std::string_view name) {
    const ControlledPlayer* owner = Find(document, player);
    if (!owner) return Refuse(kNoPlayer);
    if (owner->types.size() >= kMostControlledTypes) return Limit(kEnoughTypes);
    return {.edit = document.NewType(*player, name)};
}

PlayerControlChange PlayerDeletion(const PlayerControlSettings& document,
                                   std::optional<ElementId> player) {
    if (!Find(document, player)) return Refuse(kNoPlayer);
    return Delete({*player});
}

PlayerControlChange TypeDeletion(const PlayerControlSettings& document,
                                 std::optional<ElementId> player,
                                 const std::optional<ChosenInGrid>& chosen) {
    const ControlledPlayer* owner = Find(document, player);
    if (!owner) return Refuse(kNoPlayer);
    if (!chosen) return Refuse(kNoType);
    const std::optional<ControlElement> element = ElementOf(chosen->group);
    const bool isType = element && element->player == *player && element->type &&
                        owner->types.Find(*element->type) != nullptr;
    if (isType) return Delete(*element);
    return Refuse(chosen->isHeading ? kNotAType : kNoType);
}

}  // namespace sontaro
