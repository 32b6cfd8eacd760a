// What a simulated player answers to a request.
#pragma once

#include "link/packet.h"
#include "simulator/player_state.h"

namespace sontaro::simulator {

/// What an answer is about, as far as faults make a difference.
enum class Content {
    kOther,
    kDocument,
    kControlProtocol,
    kSchema,
    kParameterBlock,
    kVideoList,
    kSaved,
    kSecondPart
};

struct Answer {
    DevicePacket reply;
    Content content = Content::kOther;
    bool silent = false;          ///< nothing is answered at all
    bool endsConnection = false;  ///< in place of an answer
    bool restarts = false;        ///< likewise; the player comes back
    std::string note = {};        ///< what the player does at once, for its log
    bool startPushes = false;  ///< from now on the player reports position and USB videos unasked
};

/// Handles a request by the table of commands: changes the state and makes the reply. A request
/// that the table does not know is answered as not supported.
[[nodiscard]] Answer HandleRequest(PlayerState& state, const DevicePacket& request);

/// The answer to a request that the player does not support: a header alone.
[[nodiscard]] Answer NotSupported(const DevicePacket& request);

/// The answer to a request that the player refuses: a header alone, with an argument of its own.
[[nodiscard]] Answer Refused(const DevicePacket& request);

}  // namespace sontaro::simulator
