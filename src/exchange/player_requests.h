// What players are asked, with what counts as an answer and what as a refusal.
#pragma once

#include <json/value.h>

#include <string_view>

#include "exchange/request.h"
#include "exchange/settings_block.h"

namespace sontaro {

/// A packet ready to be sent; its words are those of `DevicePacket::Request`.
[[nodiscard]] SharedPacket ReadyPacket(std::uint32_t commandWord, std::uint32_t selectorWord,
                                       std::string_view payload = {});

/// The state of a player (command 19), whatever argument it answers with.
[[nodiscard]] Request AskPlayerState();
/// One half of a player's data (command 19). `part` is 0 or 32767.
[[nodiscard]] Request AskPlayerData(std::uint16_t part);

/// The layout names (command 52), which a locked player refuses.
[[nodiscard]] Request AskLayoutState();
/// The same names in the older form (command 10, sub-command 1), which newer players answer with
/// their videos.
[[nodiscard]] Request AskOlderNames();

/// Who asks for the list of videos; players may make a difference.
enum class VideoListFor : std::uint16_t { kTimeline = 0, kRemoteControl = 0, kPlayerControl = 1 };

/// The videos that the player has (command 10), whatever it answers with.
[[nodiscard]] Request AskVideoList(VideoListFor room);

/// A command of the remote control (59) with its id and JSON text. An answer with another code
/// than 0 refuses it; one that names another command is not its own.
[[nodiscard]] Request AskVideoCommand(std::uint16_t commandId, std::string_view json);

/// The document of a settings block as the player holds it. Of the control protocol an argument
/// above 1 is a refusal.
[[nodiscard]] Request ReadSettings(SettingsBlock block);

/// Gives the player a document. `qualifier` 1 has it restart with the control protocol.
[[nodiscard]] Request WriteSettings(SettingsBlock block, std::string_view document,
                                    std::uint8_t qualifier = 0);

/// The geometric correction and fusion of a player's outputs (command 54).
[[nodiscard]] Request AskParameterBlock();
/// The configuration of the video wall that the player belongs to. An argument above 1 refuses.
[[nodiscard]] Request ReadScreenSplit();
/// Gives the player such a configuration. An argument above 1 refuses it.
[[nodiscard]] Request WriteScreenSplit(std::string_view document);

/// The low 16 bits of the "code" of an answer to command 59; 1 where it is missing or no integer.
[[nodiscard]] std::uint16_t VideoReplyCode(const Json::Value& answer);

}  // namespace sontaro
