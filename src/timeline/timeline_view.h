// What a timeline's procedure tells its window, and asks of it.
#pragma once

#include <functional>
#include <string_view>

#include "exchange/request.h"

namespace sontaro {

/// What is to be told of the timeline.
enum class TimelineState {
    kWaitingForList,  ///< for the player's videos
    kWaiting,         ///< for the player's timeline
    kUnreachable,     ///< the player could not be asked: `LastReason`
    kLinkLost,        ///< the link has ended before the player answered
    kNotSupported,    ///< the player does not know what it was asked
    kUnreadable,      ///< the player's timeline cannot be used
    kForeign,         ///< nodes that are not the player's: of a file
    kRead,            ///< as the player has sent it
    kChanged,         ///< something has not been sent yet
    kNotSent,         ///< it could not be sent: `LastReason`
    kSent,            ///< all of it, but the player has not answered yet
    kUnconfirmed,     ///< all of it, but the link has ended without an answer
    kComparing,       ///< the player has confirmed it, and is being asked for it again
    kUncompared,      ///< confirmed, but the player has not said what it holds
    kEqual,           ///< confirmed, and the player holds just this
    kDifferent,       ///< confirmed, but the player holds something else: `Difference`
};

/// What is known of the player's videos.
enum class VideoListState { kNone, kRead, kUnreadable, kMissing, kNotSupported };

/// Where the player's videos are asked for and kept.
struct VideoListSource {
    std::function<Request()> ask;
    /// Takes the player's answer; false when it cannot be read.
    std::function<bool(std::string_view text)> take;
};

/// What the procedure asks of its window.
class TimelineView {
   public:
    virtual ~TimelineView() = default;
    /// Any of the nodes may be another one: shows them anew.
    virtual void ShowNodes() = 0;
    /// What is known of the player's videos has changed.
    virtual void ShowVideoList() = 0;
    /// What is to be told, or what may be pressed, has changed.
    virtual void StateChanged() = 0;
};

}  // namespace sontaro
