// How what is asked of a player by a session ends, for programs that tell of it.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "exchange/request.h"

namespace sontaro {

/// Why a session has no connection to its player, or has lost it.
enum class LinkTrouble : std::uint8_t {
    kNone,
    kTaken,            ///< something else in this process has a connection to the player
    kConnectRefused,   ///< at once: nothing listens there, or there is no way to it
    kConnectTimedOut,  ///< nobody has answered
    kHungUp,           ///< the player has closed the connection, between two packets
    kCutOff,           ///< the player has closed it in the middle of a packet
    kBroken,           ///< it was reset, or the network has failed
    kGarbage,          ///< what has come is no packet
    kTooLong,          ///< a packet was announced that is longer than any
    kClosed,           ///< it was closed on this side
};

/// How a request has ended.
struct SessionEnd {
    End how = End::kCancelled;
    std::uint16_t code = 0;  ///< of a refusal
    NotSent reason{};        ///< of what was not sent
    LinkTrouble trouble{};   ///< of what was not sent, and of a link that has ended
    /// Why an answer is of no use, or a document cannot be sent; empty: neither.
    std::string unreadable = {};

    /// Whether the player has done what it was asked.
    explicit operator bool() const { return how == End::kReply && unreadable.empty(); }
    bool operator==(const SessionEnd&) const = default;
};

/// What a request has brought: the answer, or how it has ended without one that is of use.
template <class T>
class [[nodiscard]] Answered {
   public:
    Answered(T value) : value_(std::move(value)), end_{End::kReply} {}
    Answered(SessionEnd end) : end_(std::move(end)) {}

    explicit operator bool() const { return value_.has_value(); }
    /// The answer; only where there is one.
    T& operator*() { return *value_; }
    const T& operator*() const { return *value_; }
    T* operator->() { return &*value_; }
    const T* operator->() const { return &*value_; }
    [[nodiscard]] const SessionEnd& HowItEnded() const { return end_; }

   private:
    std::optional<T> value_;
    SessionEnd end_;
};

/// The end in a word for programs, which is the same in every language: "reply", "unreadable",
/// "refused", "not-supported", "not-sent", "link-ended", "timed-out", "cancelled".
[[nodiscard]] const char* WordFor(const SessionEnd& end);
/// Likewise what is wrong with the connection: "taken", "connect-refused", "connect-timed-out",
/// "hung-up", "cut-off", "broken", "garbage", "too-long", "closed"; empty for none.
[[nodiscard]] const char* WordFor(LinkTrouble trouble);
/// The end in a sentence for the user, in the language of the process.
[[nodiscard]] std::string Told(const SessionEnd& end);

}  // namespace sontaro
