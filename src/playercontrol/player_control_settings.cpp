#include "playercontrol/player_control_settings.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/encoding.h"
#include "base/json.h"
#include "playercontrol/player_control_table.h"

namespace sontaro {

namespace {

constexpr std::string_view kPlayers = "Players/";
constexpr std::string_view kTypes = "/VideoType/";
constexpr const char* kNoPlayer = "Players/none";
constexpr char kAdded = '+';
constexpr char kDeleted = '-';

constexpr LocalText kSelectFirst = {"先选择播放器，再设置属性!",
                                    "Select player first, then set attributes!"};
constexpr EditAnswer::Outcome kAccepted = EditAnswer::Outcome::kAccepted;

/// Takes `prefix` and the number behind it off `text`, up to a slash, a '#' or the end.
std::optional<ElementId> TakeNumber(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix)) return std::nullopt;
    ElementId id = 0;
    const char* const begin = text.data() + prefix.size();
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(begin, end, id);
    if (read.ec != std::errc() || (read.ptr != end && *read.ptr != '/' && *read.ptr != '#'))
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    return id;
}

std::int32_t LowestFreeNumber(const Elements<ControlledPlayer>& players) {
    std::int32_t number = 0;
    while (std::ranges::find(players, number, &ControlledPlayer::number) != players.end()) ++number;
    return number;
}

}  // namespace

std::string KeyOf(const ControlElement& element) {
    std::string key = std::string(kPlayers) + std::to_string(element.player);
    if (element.type) key.append(kTypes) += std::to_string(*element.type);
    return key;
}

std::optional<ControlElement> ElementOf(std::string_view key) {
    const std::optional<ElementId> player = TakeNumber(key, kPlayers);
    if (!player) return std::nullopt;
    return ControlElement{*player, TakeNumber(key, kTypes)};
}

/// Numbers are in the order of places, always: what is new comes last and has a higher one.
template <class Record>
void PlayerControlSettings::Renumber(Elements<Record>& elements,
                                     const std::vector<ElementId>& held) {
    std::vector<ElementId> ids(elements.size());
    for (std::size_t place = 0; place < ids.size(); ++place) {
        const ElementId following = place == 0 ? 0 : ids[place - 1] + 1;
        const bool isInserted = following >= Elements<Record>::kFirstInserted;
        ids[place] = place < held.size() ? held[place] : isInserted ? next_++ : following;
    }
    elements.Renumber(std::move(ids));
}

Status PlayerControlSettings::TakeReply(std::string_view text) {
    Status read = ReadPlayerControl(text, model_, Source::kPlayer);
    if (!read) return read;
    std::vector<ElementId> players;
    for (const auto& held : held_) players.push_back(held.first);
    Renumber(model_.players, players);
    for (std::size_t place = 0; place < model_.players.size(); ++place) {
        const std::set<ElementId>& types = held_[model_.players.IdAt(place)];
        Renumber(model_.players[place].types, {types.begin(), types.end()});
    }
    return read;
}

Status PlayerControlSettings::TakeFile(std::string_view text) {
    const Result<Json::Value> json = ParseJson(text);
    if (json && json->isObject() && !json->empty() && !(*json)["Players"].isArray())
        return Error{"it has no players in it"};
    dropped_ = 0;
    return ReadPlayerControl(text, model_, Source::kFile);
}

SettingsRows PlayerControlSettings::Rows() const {
    std::array<SettingsRows, 1> grids;
    for (std::size_t place = 0; place < model_.players.size(); ++place)
        ControlledPlayerSchema().Show(model_.players[place], grids,
                                      KeyOf({model_.players.IdAt(place)}));
    return std::move(grids.front());
}

SettingsRows PlayerControlSettings::RowsOf(std::optional<ElementId> player) const {
    static const ControlledPlayer empty;
    std::array<SettingsRows, 1> grids;
    const ControlledPlayer* shown = player ? model_.players.Find(*player) : nullptr;
    ControlledPlayerSchema().Show(shown ? *shown : empty, grids,
                                  shown ? KeyOf({*player}) : kNoPlayer);
    return std::move(grids.front());
}

EditAnswer PlayerControlSettings::Edit(const SettingsEdit& edit) {
    if (edit.key.starts_with(kNoPlayer))
        return {EditAnswer::Outcome::kRefused, Localized(kSelectFirst)};
    const std::optional<ControlElement> element = ElementOf(edit.key);
    if (!element || edit.key != KeyOf(*element)) return PlayerControlSchema().Edit(edit, model_);
    if (edit.text.starts_with(kAdded)) return Add(*element, edit.text.substr(1));
    return edit.text.starts_with(kDeleted) ? Delete(*element) : EditAnswer{};
}

SettingsEdit PlayerControlSettings::NewPlayer() { return {KeyOf({next_++}), {kAdded}}; }

SettingsEdit PlayerControlSettings::NewType(ElementId player, std::string_view name) {
    return {KeyOf({player, next_++}), kAdded + CutToLegacyLength(name, kLongestTypeName)};
}

SettingsEdit PlayerControlSettings::Without(const ControlElement& element) {
    return {KeyOf(element), {kDeleted}};
}

/// Nobody adds beyond a limit: an addition that has no room here had it in another document.
EditAnswer PlayerControlSettings::Add(const ControlElement& element, const std::string& name) {
    ControlledPlayer* player = model_.players.Find(element.player);
    const bool hasRoom = element.type ? player && player->types.size() < kMostControlledTypes
                                      : model_.players.size() < kMostControlledPlayers;
    if (!hasRoom) {
        ++dropped_;
        return {};
    }
    if (element.type ? player->types.Find(*element.type) != nullptr : player != nullptr) return {};
    if (element.type) {
        ControlledType type;
        type.name = name;
        player->types.InsertInOrder(*element.type, std::move(type));
    } else {
        ControlledPlayer added;
        added.number = LowestFreeNumber(model_.players);
        model_.players.InsertInOrder(element.player, std::move(added));
    }
    return {kAccepted};
}

EditAnswer PlayerControlSettings::Delete(const ControlElement& element) {
    ControlledPlayer* player = model_.players.Find(element.player);
    if (!player || (element.type && !player->types.Find(*element.type))) return {};
    if (element.type)
        player->types.RemoveWithId(*element.type);
    else
        model_.players.RemoveWithId(element.player);
    return {kAccepted};
}

std::vector<SettingsEdit> PlayerControlSettings::Reversal(const SettingsEdit& edit) const {
    const std::optional<ControlElement> element = ElementOf(edit.key);
    if (!element || edit.key != KeyOf(*element)) return SettingsDocument::Reversal(edit);
    if (edit.text.starts_with(kAdded)) return {Without(*element)};
    std::vector<SettingsEdit> edits = {{edit.key, {kAdded}}};
    std::vector<SettingsEdit> texts;
    VisitRows(RowsOf(element->player), [&](const SettingsRow& row) {
        const ControlElement owner = *ElementOf(row.key);
        if (element->type && owner.type != element->type) return;
        if (owner.type && KeyOf(owner) != edits.back().key)
            edits.push_back({KeyOf(owner), {kAdded}});
        texts.push_back({row.key, row.value});
    });
    std::ranges::move(texts, std::back_inserter(edits));
    return edits;
}

void PlayerControlSettings::ShowHeld(const std::map<std::string, std::string>& values) {
    held_.clear();
    for (const auto& [key, value] : values) {
        const std::optional<ControlElement> element = ElementOf(key);
        if (!element) continue;
        std::set<ElementId>& types = held_[element->player];
        if (element->type) types.insert(*element->type);
    }
}

}  // namespace sontaro
