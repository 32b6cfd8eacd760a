// A request to a player, which answers belong to it, and how it may end.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "link/window_message.h"

namespace sontaro {

/// How long an answer may take where a procedure has no limit of its own.
inline constexpr std::chrono::milliseconds kAnswerLimit{10'000};
/// How often a procedure that waits on is asked again.
inline constexpr std::chrono::milliseconds kWaitingStep{1'000};

/// What a message is to a request.
struct Verdict {
    enum class Kind : std::uint8_t { kNotMine, kReply, kRefused };
    Kind kind = Kind::kNotMine;
    std::uint16_t code = 0;  ///< of a refusal
};

/// What becomes of a request that has not been answered in time.
enum class AtLimit : std::uint8_t {
    kEnd,     ///< it ends as timed out
    kWaitOn,  ///< it stays open; the question comes again every second
    kRepeat,  ///< it is sent once more, and its time begins anew
};

struct Request {
    SharedPacket packet;
    /// Whether a message answers the request, and how.
    std::function<Verdict(const WindowMessage&)> judge;
    std::chrono::milliseconds limit = kAnswerLimit;  ///< 0: none
    /// Asked at the limit with the time that it has been waited for; may cancel the request, or
    /// destroy its conversation.
    std::function<AtLimit(std::chrono::milliseconds)> atLimit = [](auto) { return AtLimit::kEnd; };
    std::optional<Boxes> boxes = {};  ///< its own; else its conversation's
};

/// Every request ends in exactly one of these.
enum class End : std::uint8_t {
    kReply,
    kRefused,  ///< the player has answered that it will not: `code`
    kNotSupported,
    kNotSent,  ///< `reason`
    kLinkEnded,
    kTimedOut,
    kCancelled,
};

struct Ended {
    End how{};
    std::uint16_t code = 0;  ///< of a refusal
    NotSent reason{};        ///< of what was not sent
    /// The answer, to move from; absent unless there is one. A locked layout's has not been
    /// forwarded.
    WindowMessage* reply = nullptr;
};

/// The payload of an answer; none in a record of another kind.
[[nodiscard]] inline ByteView PayloadOf(const WindowMessage& message) {
    const auto* record = std::get_if<ReplyRecord>(&message.record);
    return record ? ByteView(record->payload) : ByteView();
}

}  // namespace sontaro
