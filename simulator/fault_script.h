// What is wrong with a simulated player.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"

namespace sontaro::simulator {

/// Faults, any of them at once; without any the player is sound.
struct FaultScript {
    bool refuse = false;         ///< nothing listens: connections are refused
    bool silent = false;         ///< connections are accepted, nothing is ever said
    bool drop = false;           ///< a request resets its connection
    bool notSupported = false;   ///< every request is answered as not supported
    bool garbage = false;        ///< random bytes go ahead of every reply as a packet of their own
    bool oversize = false;       ///< replies announce 0xFFFFFFF0 payload bytes
    bool badJson = false;        ///< settings that are read end in their middle
    bool noAck = false;          ///< settings are saved without a word
    bool noSecondPart = false;   ///< the second part of the player's data is not answered
    bool badList = false;        ///< the list of videos is no JSON
    bool refuseSaves = false;    ///< saves are answered as not supported, and nothing is kept
    bool emptyTimeline = false;  ///< the timeline is read as nothing
    bool changedTimeline = false;  ///< the timeline is read without its last node
    bool noReturn = false;         ///< a restart never ends
    bool badChecksum = false;      ///< the parameter block of the screen split has a wrong one
    bool emptyBlock = false;       ///< it has no bytes
    bool noCorrection = false;     ///< it tells that no geometry is corrected
    bool otherResolution = false;  ///< it tells half the width and height
    bool hangUp = false;           ///< every reply ends its connection
    bool noSecondQuery = false;    ///< the free space is told to the first of two queries alone
    std::optional<std::uint16_t> unacknowledged;  ///< the chunk of each video; 0: its announcement
    bool withholdsOnce = false;                   ///< that is acknowledged when it comes again
    std::optional<std::uint16_t> loseChunk;       ///< the chunk that ends its connection
    bool storeShort = false;                      ///< a video is stored without its last byte
    std::optional<std::size_t> diskFull;  ///< MiB of videos with which the disk is full all at once
    std::size_t restartAt = 0;            ///< the chunk, of all that come, that restarts; 0: none
    std::size_t slow = 0;                 ///< bytes that are read in a second; 0: as they come
    std::uint16_t result = 0;             ///< argument with which the control protocol is read
    std::uint16_t unread = 0;       ///< the settings block whose reading is not answered; 0: none
    std::uint16_t unsupported = 0;  ///< the settings block that is answered as not supported
    std::uint16_t refused =
        0;                ///< the settings block that is refused, and of which nothing is kept
    std::size_t cut = 0;  ///< bytes per piece in which packets go out; 0: in one
    std::optional<std::size_t> closeAfter;  ///< a connection ends after so many bytes to the tool
    std::chrono::milliseconds delay{0};     ///< before every reply
    std::chrono::milliseconds acknowledgementDelay{0};  ///< and more before those of an upload
    /// Read in place of the settings that describe themselves; absent: those are.
    std::shared_ptr<const std::string> schema;

    bool operator==(const FaultScript&) const = default;
};

/// The faults that `script` names, separated by commas: refuse, silent, drop, not-supported,
/// garbage, oversize, bad-json, no-ack, no-second-part, bad-list, refuse-saves, empty-timeline,
/// changed-timeline, no-return, bad-checksum, empty-block, no-correction, other-resolution,
/// hang-up, no-second-query, withhold=N (the N-th chunk of a video is not acknowledged, 0 is its
/// announcement), withhold-once=N, lose-chunk=N, store-short, disk-full=MEBIBYTES, restart-at=N
/// (the N-th of all chunks is not taken, and the player is away for a second), slow=BYTES (read in
/// a second), result=N, items=N (settings that describe themselves have N items), unread=BLOCK,
/// unsupported=BLOCK, refused=BLOCK, cut=BYTES, close-after=BYTES, delay=MILLISECONDS (also
/// "500ms"), delay-ack=MILLISECONDS (of uploads alone). An empty script has none. Fails, with a
/// reason for the user, on anything else.
[[nodiscard]] Result<FaultScript> ParseFaultScript(std::string_view script);

}  // namespace sontaro::simulator
