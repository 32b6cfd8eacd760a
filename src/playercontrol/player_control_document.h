// What the serial lines of players are told and answer: the player control protocol.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"
#include "settings/record_schema.h"

namespace sontaro {

/// Most players of a document, and most video types of a player.
inline constexpr std::size_t kMostControlledPlayers = 2;
inline constexpr std::size_t kMostControlledTypes = 256;
/// Most bytes of a type's name in the legacy code page.
inline constexpr std::size_t kLongestTypeName = 8;

/// A category of videos and how it is switched to. Commands are hexadecimal.
struct ControlledType {
    std::string name, sendCommand, receiveCommand;
    std::int32_t electroMode = 0, screenEffect = 0;
    OtherKeys others = {};

    bool operator==(const ControlledType&) const = default;
};

struct ControlledPlayer {
    std::int32_t number = 0;  ///< from 0
    std::int32_t enabled = 0, repeatedSwitching = 0, aspectRatioLock = 0, playMode = 0;
    std::string play, stop, pause, playStop, backType, nextType, backVideo, nextVideo;
    std::string singlePlay, singleRepeat, typeRepeat, typeRandom, allRandom;
    Elements<ControlledType> types;
    OtherKeys others = {};

    bool operator==(const ControlledPlayer&) const = default;
};

/// The document. Texts are UTF-8.
struct PlayerControlModel {
    Elements<ControlledPlayer> players;
    OtherKeys others = {};

    bool operator==(const PlayerControlModel&) const = default;
};

/// Takes the document in a JSON text in place of the model's. One without players has none, and
/// those beyond the limits are passed over. What a player has sent besides stays when a file is
/// read. Fails when the text is no JSON object: the model is untouched.
[[nodiscard]] Status ReadPlayerControl(std::string_view text, PlayerControlModel& model,
                                       Source source = Source::kPlayer);

/// The whole document as players read it.
[[nodiscard]] std::string PlayerControlText(const PlayerControlModel& model);

/// How a player is named in lists: "Player1" for number 0.
[[nodiscard]] std::string ControlledPlayerCaption(std::int32_t number);

}  // namespace sontaro
