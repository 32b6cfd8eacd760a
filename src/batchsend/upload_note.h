// How a player's turn stands, and what is to be said of it.
#pragma once

#include <cstdint>
#include <string>

#include "link/window_message.h"

namespace sontaro {

/// In the numbers that players' tools agree on.
enum class UploadStatus : std::uint8_t {
    kNotChosen = 0,
    kTimedOut = 1,
    kDiskTooSmall = 2,
    kFewCategories = 3,
    kNetworkFailure = 4,
    kInProgress = 5,
    kWaiting = 6,
    kDone = 7,
};

/// Whether nothing more happens to a player by itself.
[[nodiscard]] constexpr bool IsFinal(UploadStatus status) {
    return status != UploadStatus::kNotChosen && status != UploadStatus::kInProgress &&
           status != UploadStatus::kWaiting;
}

/// What is to be said of a player or of a video besides its status.
struct UploadNote {
    enum class Kind : std::uint8_t {
        kNone,
        kNotSent,       ///< `reason`
        kUnreadable,    ///< the file `text` cannot be read
        kChanged,       ///< the file `text` has got another size twice
        kNotSupported,  ///< the player does not know the command
        kRefused,       ///< the player will not keep the categories
        kLinkLost,
        kStopped,  ///< by the user
        kLooking,  ///< the files are being looked at
    };
    Kind kind = Kind::kNone;
    std::string text = {};
    NotSent reason = {};
};

/// For the user; empty: nothing.
[[nodiscard]] std::string NoteText(const UploadNote& note);

}  // namespace sontaro
