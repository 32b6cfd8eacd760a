// What the procedure of the control protocol shows, and asks for.
#pragma once

#include <optional>
#include <string>

#include "controlprotocol/control_protocol_rows.h"
#include "link/packet.h"

namespace sontaro {

/// What the procedure asks of its window.
class ControlProtocolView {
   public:
    virtual ~ControlProtocolView() = default;
    /// Hands a packet to the player's link; false when there is none.
    [[nodiscard]] virtual bool Send(const DevicePacket& packet) = 0;
    /// The model has been replaced: shows it anew.
    virtual void ShowModel() = 0;
    /// A row has changed by itself.
    virtual void ShowChange(const SettingsEdit& change) = 0;
    /// The player holds what the rows show.
    virtual void MarkSaved() = 0;
    /// The video category, from 0, whose row is chosen; none when none is.
    [[nodiscard]] virtual std::optional<int> ChosenCategory() const = 0;
    /// Calls `ControlProtocolRun::KeepAlive` every 2000 ms from now on, or no longer.
    virtual void KeepAliveEvery2Seconds(bool wanted) = 0;
    /// `CurrentState`, `SerialLine` or what may be pressed has changed.
    virtual void StateChanged() = 0;
};

/// What is to be told of the player's serial line and of the link to it.
struct SerialLineState {
    enum class Kind {
        kNothing,
        kListening,     ///< the player passes on what it hears
        kLearned,       ///< `command` is now the switch command of `category`
        kNobodys,       ///< `command` was heard while no video category was chosen
        kTooLate,       ///< `command` was heard while the document was being sent, or after
        kNotConnected,  ///< the link has ended
    };
    Kind kind = Kind::kNothing;
    std::string command = {};
    int category = 0;  ///< from 0
};

}  // namespace sontaro
