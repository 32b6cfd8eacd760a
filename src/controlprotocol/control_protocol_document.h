// How a player is driven from outside: its control protocol.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/result.h"
#include "settings/record_schema.h"

namespace sontaro {

/// The song-selection system that the player listens to.
struct SongSystem {
    std::int32_t vendor = 0;
    std::string serverIp;
    std::int32_t serverPort = 0;
    OtherKeys others = {};

    bool operator==(const SongSystem&) const = default;
};

/// The player's serial port, its playing, its screens, and the single commands: what each number
/// and command means stands in the table of the document.
struct SerialSettings {
    std::int32_t baudRate = 0, dataBits = 0, stopBits = 0, parity = 0;
    std::int32_t playMode = 0, layoutFollowsVideo = 0, soundSource = 0, language = 0;
    std::int32_t aspectRatioLock = 0, inputColourRange = 0;
    std::int32_t width1 = 0, height1 = 0, width2 = 0, height2 = 0;  ///< centimetres
    std::int32_t fading = 0, repeatedSwitching = 0, projectorsAtStart = 0;
    std::string play, pause, backType, nextType, sceneLock, sceneUnlock, backVideo, nextVideo;
    std::string volumeUp, volumeDown, projectorsOn, projectorsOff, waveWindowOn, waveWindowOff;
    std::string allWindowsOn, allWindowsOff, playStop, powerOn, powerOff, automatic, manual, qrCode;
    std::string layout, singlePlay, singleRepeat, typeRepeat, typeRandom, allRandom, replay;
    std::string playComplete, gameOpen, gameClose, gamePrevious, gameNext, imagePlayerOpen;
    std::string imagePlayerClose, volumeOpen, volumeClose;
    std::int32_t audioEnable = 0, audioPlayMode = 0;
    std::string audioPlay, audioPause, audioBackType, audioNextType, backAudio, nextAudio, audioOn;
    std::string audioOff, audioSingleLoop, audioTypeLoop, audioTypeRandom, audioAllRandom;
    std::string audioSinglePlay, audioStop;
    std::int32_t electroMode = 0, electroColours = 0, electroZoom = 0, electroBlink = 0;
    std::int32_t electroColourByBass = 0;
    std::string electroOn, electroOff, noBass, bass, bassClimax, screenColour, imageZoom;
    std::int32_t dmxAddress1 = 0, dmxAddress2 = 0;
    OtherKeys others = {};

    bool operator==(const SerialSettings&) const = default;
};

struct VideoCategory {
    std::string name, sendCommand, receiveCommand;
    std::int32_t electroMode = 0, screenEffect = 0;
    OtherKeys others = {};

    bool operator==(const VideoCategory&) const = default;
};

struct AudioCategory {
    std::string name, sendCommand, receiveCommand;
    OtherKeys others = {};
    bool operator==(const AudioCategory&) const = default;
};

struct ScreenLayout {
    std::string name, sendCommand, receiveCommand;
    OtherKeys others = {};
    bool operator==(const ScreenLayout&) const = default;
};

struct ProjectorCommands {
    std::string on, off;
    OtherKeys others = {};

    bool operator==(const ProjectorCommands&) const = default;
};

struct Projector {
    std::string ip;
    std::int32_t port = 0, transport = 0, controlType = 0;
    std::array<ProjectorCommands, 6> commands;
    OtherKeys others = {};

    bool operator==(const Projector&) const = default;
};

/// The document: what a player has that nobody has set up yet, when it is new. Texts are UTF-8,
/// commands hexadecimal.
struct ControlProtocolModel {
    ControlProtocolModel();

    SongSystem songSystem;
    SerialSettings serial;
    std::array<VideoCategory, 64> videoTypes;
    std::array<AudioCategory, 64> audioTypes;
    std::array<ScreenLayout, 64> layouts;
    std::array<Projector, 30> projectors;
    OtherKeys others = {};

    bool operator==(const ControlProtocolModel&) const = default;
};

/// Takes over what the JSON text holds; the rest of the model stays. How many of the document's
/// sections the text has, of whatever type. Fails when it is no JSON object: the model is
/// untouched.
[[nodiscard]] Result<int> ReadControlProtocol(std::string_view text, ControlProtocolModel& model,
                                              Source source = Source::kPlayer);

/// The whole document as players read it.
[[nodiscard]] std::string ControlProtocolText(const ControlProtocolModel& model);

/// Replaces the file at `path` by the document, or leaves it as it was.
[[nodiscard]] Status WriteControlProtocol(const ControlProtocolModel& model,
                                          const std::filesystem::path& path);

/// The working copy, which is what is uploaded.
[[nodiscard]] std::filesystem::path ControlProtocolPath(const std::filesystem::path& programFolder);

}  // namespace sontaro
