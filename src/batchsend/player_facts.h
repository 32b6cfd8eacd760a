// What is to be known of a player before it is sent anything, and after.
#pragma once

#include <optional>
#include <string>

#include "batchsend/upload_packets.h"
#include "videolist/video_list.h"

namespace sontaro {

/// What a player has answered. What it has not, or not in a form that can be read, is absent.
struct PlayerFacts {
    bool isAsked = false;    ///< it has answered, or had its time to
    bool isReached = false;  ///< it has answered something
    std::optional<PlayerMode> mode;
    std::optional<std::uint64_t> free;  ///< bytes on its disk
    std::optional<VideoList> videos;
    std::optional<std::string> controlProtocol;  ///< the document, with the names of categories
};

}  // namespace sontaro
