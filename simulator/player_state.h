// What a simulated player remembers, and how it is kept in a file.
#pragma once

#include <chrono>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/result.h"

namespace sontaro::simulator {

struct Video {
    std::string name;
    int seconds = 0;  ///< duration; a video without one is never played to its end

    bool operator==(const Video&) const = default;
};

struct VideoFolder {
    std::string name;
    std::vector<Video> videos;

    bool operator==(const VideoFolder&) const = default;
};

/// What a button of the remote control makes the player do; the values are the type numbers of the
/// captions. The first five are play modes.
enum class Action : int {
    kFolderLoop = 2,
    kSingleLoop = 3,
    kSinglePlay = 4,
    kFolderRandom = 5,
    kAllRandom = 6,
    kPlay = 7,
    kPause = 8,
    kPrevious = 9,
    kNext = 10,
    kPowerOn = 11,
    kPowerOff = 12,
    kScreenEffect = 13,
    kUsbPrevious = 200,
    kUsbNext = 201,
};

/// A button as the player names it. The caption is also the command that the button sends.
struct Caption {
    Action type{};
    std::string text;

    bool operator==(const Caption&) const = default;
};

/// What a player drives, as one of those that make up a video wall.
struct Screens {
    int outputs = 1;          ///< 1 or 2
    int width = 1920;         ///< of each, in pixels
    int height = 1080;        ///< of each, in pixels
    int corrections = 1;      ///< whose geometry is corrected; 0: it is not set up
    bool shortBlock = false;  ///< it tells so in the shorter of both forms

    bool operator==(const Screens&) const = default;
};

/// A video that a player has been sent whole.
struct StoredVideo {
    int code = 0;
    std::string name;
    std::int64_t size = 0;  ///< bytes; of one that still comes, those that have come

    bool operator==(const StoredVideo&) const = default;
};

/// A video that is being sent.
struct IncomingVideo {
    StoredVideo video;
    std::uint64_t announced = 0;  ///< bytes

    bool operator==(const IncomingVideo&) const = default;
};

/// Most bytes that a player passes on at once from its serial port.
inline constexpr std::size_t kMostSerialBytes = 1023;

struct PlayerState {
    bool poweredOn = true;
    bool playing = true;
    bool layoutLocked = false;
    bool screenEffect = false;
    Action playMode = Action::kFolderLoop;
    int volume = 60;                   ///< 0 to 100
    std::string layout;                ///< the one shown, of `layouts`
    std::vector<std::string> layouts;  ///< file names; remote controls leave out the ending
    std::vector<Caption> captions;     ///< of equal texts the first one counts
    std::vector<VideoFolder> folders;  ///< on the player's own disk
    VideoFolder usb;                   ///< on the USB disk
    bool olderNames = false;           ///< command 10 has the layouts in one of its forms
    bool playingUsb = false;           ///< the video is one of `usb`, else of `folders`
    int folder = 0;                    ///< index of the folder played, or played last
    int video = 0;                     ///< index in that folder or in `usb`
    unsigned shuffle = 1;              ///< where the random play modes have got to
    std::string osd;                   ///< settings as JSON texts, handed out as they are
    std::string controlProtocol;
    std::string playerControl;
    std::string serialPort;  ///< this one and those below describe themselves
    std::string subtitles;
    std::string touchAction;
    std::string cave;
    std::string timeline;
    int mode = 0;                ///< 1: a master, 2: a slave
    int diskMebibytes = 20'000;  ///< free before any video is stored
    bool diskIsFull = false;     ///< whatever is stored; not kept in the file
    std::vector<StoredVideo> stored;
    std::optional<IncomingVideo> incoming;  ///< not kept in the file
    std::filesystem::path videoFolder;  ///< not kept in the file; empty: videos are only counted
    std::vector<std::string> uploadTroubles;  ///< what was wrong; not kept in the file
    std::string wall;                         ///< the configuration of the screen split
    Screens screens;                          ///< not kept in the file
    std::deque<Bytes> serialBytes;            ///< not yet passed on; not kept in the file
    std::chrono::microseconds position{0};    ///< in the current video; not kept in the file

    bool operator==(const PlayerState&) const = default;
};

/// A player as it comes: two folders of videos, three layouts, three USB videos, Chinese captions,
/// an on-screen display of four lines, the samples of a control protocol, of a player control
/// protocol, of a wall and of settings that describe themselves.
[[nodiscard]] PlayerState FactoryState();

/// Gives all settings that describe themselves the same description.
void SetSchemas(PlayerState& state, const std::string& schema);

/// The state as JSON text.
[[nodiscard]] std::string WriteState(const PlayerState& state);

/// The factory state with what the JSON text says instead; what is missing or of another type
/// stays. Fails on a text that is not a JSON object.
[[nodiscard]] Result<PlayerState> ReadState(std::string_view text);

}  // namespace sontaro::simulator
