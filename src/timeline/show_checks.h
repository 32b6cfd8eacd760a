// What may go wrong in a show. Nothing is prevented by it.
#pragma once

#include <functional>
#include <vector>

#include "timeline/timeline_document.h"

namespace sontaro {

/// What is known of the videos that players have; asked for the players 0 to 3 alone.
struct KnownVideos {
    std::function<bool(std::int64_t player, const std::string& typeName)> hasType;
    std::function<bool(std::int64_t player, const std::string& typeName,
                       const std::string& videoName)>
        hasVideo;
};

struct ShowFinding {
    enum class Kind {
        kSameMoment,  ///< `node` and `other` are to go out at once over the same port
        kTooClose,    ///< `other` comes before the bytes of `node` have gone out: `number` ms
        kNoType,      ///< the player does not have the category; told of a group's first node
        kNoVideo,     ///< it does not have the video; likewise
        kNoPeer,      ///< a network port without an address or a port to send to
        kOutOfRange,  ///< a value is beyond its range
    };
    Kind kind{};
    NodeId node = 0;
    NodeId other = 0;
    std::int64_t number = 0;

    bool operator==(const ShowFinding&) const = default;
};

inline constexpr int kUsualBaudRate = 9600;

/// Everything that is found, in the order of the rows. `videos` is absent until their list has
/// come; `baudRate` is that of all serial ports, with ten bits a byte.
[[nodiscard]] std::vector<ShowFinding> CheckShow(const GroupOrder& order, int baudRate,
                                                 const KnownVideos* videos = nullptr);

/// A finding in words, for the user; empty when its node is gone.
[[nodiscard]] std::string Told(const ShowFinding& finding, const TimelineDocument& document);

}  // namespace sontaro
