// What is to be told of the way of a video wall.
#pragma once

#include <string>
#include <vector>

#include "exchange/request.h"

namespace sontaro {

/// What the procedure is about.
enum class SplitTask : std::uint8_t {
    kNone,
    kFetchBlocks,    ///< the players' parameter blocks, one after another
    kFetchDocument,  ///< the configuration, from the last of them
    kSend,           ///< the new configuration, to one after another
};

/// How far a step is; the numbers are those of the players' tools.
enum class SplitStepState : std::uint8_t {
    kRunning = 0,
    kQueued = 1,  ///< what was asked last is on its way
    kEnded = 2,
};

/// Why a task has stopped.
struct SplitFailure {
    enum class Why : std::uint8_t {
        kNotAnswered,   ///< as `ended` says
        kNotCorrected,  ///< correction and fusion have not been set up
        kUnreadable,    ///< the configuration that has come is none
    };
    SplitTask task{};
    std::size_t device = 0;  ///< which player it is about
    Why why{};
    Ended ended = {};  ///< without its reply
};

struct SplitProgress {
    std::size_t position = 0;
    std::size_t range = 0;
};

/// What is to be told of the document that is shown.
struct SplitStatus {
    enum class Kind : std::uint8_t {
        kNone,        ///< nothing has been fetched
        kNotApplied,  ///< the order has not been applied yet
        kAsFetched,   ///< and no player is known to have anything else
        kEdited,
        kSent,  ///< just this; `unconfirmed` have not confirmed it
    };
    Kind kind{};
    std::size_t players = 0;
    std::vector<std::string> unconfirmed = {};  ///< addresses
};

}  // namespace sontaro
