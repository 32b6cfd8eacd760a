// The JSON commands and replies of the video remote control.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/player_requests.h"

namespace sontaro {

/// Command ids, "cmdId" in the document and the sub-command of the packet.
enum VideoCommand : std::uint16_t {
    kVideoFolder = 2,
    kVideoCaptions = 3,
    kVideoPlayMode = 4,
    kVideoLayout = 6,
    kVideoSound = 8,
    kVideoPlay = 9,
    kVideoPosition = 10,
    kVideoPlayName = 11,
    kVideoUsbList = 12,
    kVideoUsbName = 13,
};

/// The packet of a command. `text` is the value of the command's own key, for those that have one.
[[nodiscard]] SharedPacket VideoCommandPacket(std::uint16_t commandId,
                                              const std::string& text = {});

/// Asks for the captions of the buttons, which also makes the player report its position.
[[nodiscard]] Request AskCaptions();

/// A button's caption as the player gives it.
struct VideoCaption {
    int type = 0;
    std::string caption;

    bool operator==(const VideoCaption&) const = default;
};

/// Where playback stands.
struct VideoPosition {
    int seconds = 0;
    int duration = 0;  ///< seconds, at least 1
    std::string folder;
    std::string video;
    bool named = false;  ///< the reply names both folder and video

    /// The part played, 0 to 100, truncated.
    [[nodiscard]] int Percent() const;
    /// "00:01:02/00:03:04".
    [[nodiscard]] std::string Text() const;
};

/// A player's answer.
class VideoReply {
   public:
    /// The answer in `payload`; none when it is no JSON object or does not say which command it
    /// answers.
    [[nodiscard]] static std::optional<VideoReply> Parse(std::string_view payload);

    [[nodiscard]] int CommandId() const { return commandId_; }
    /// 0: the player does what it was told. Anything else refuses it.
    [[nodiscard]] std::uint16_t Code() const { return code_; }
    /// The captions of a caption reply, in the player's order.
    [[nodiscard]] std::vector<VideoCaption> Captions() const;
    /// The position of a position reply; none when it is not one that can be shown.
    [[nodiscard]] std::optional<VideoPosition> Position() const;
    /// The names in "data"; none when it is no list.
    [[nodiscard]] std::optional<std::vector<std::string>> Names() const;
    /// The video being played from the USB disk; empty when there is none.
    [[nodiscard]] std::string UsbVideo() const;

   private:
    Json::Value root_;
    int commandId_ = 0;
    std::uint16_t code_ = 0;
};

}  // namespace sontaro
