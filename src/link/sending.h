// What became of a packet that was handed to a link.
#pragma once

#include <cstdint>

namespace sontaro {

/// Number of a TCP connection of this process, new with every connect; 0: none.
using ConnectionNumber = std::uint64_t;

/// Why a packet did not go to its player.
enum class NotSent : std::uint8_t {
    kNobodyThere,       ///< nobody takes packets: there is no main window
    kNoSlot,            ///< every link is taken by another player
    kConnectFailed,     ///< the player does not answer, or has hung up at once
    kOtherPlayersLink,  ///< it went over a link that still belongs to another player
    kNotRunning,        ///< the link is just ending
    kTooMuchWaiting,    ///< the player takes nothing in: 10 MiB wait already
};

/// The connection that a packet goes over, or why it does not.
class Sending {
   public:
    Sending(NotSent reason) : reason_(reason) {}

    [[nodiscard]] static Sending Over(ConnectionNumber connection) {
        Sending sending(NotSent::kNobodyThere);
        sending.connection_ = connection;
        return sending;
    }

    explicit operator bool() const { return connection_ != 0; }
    /// 0 unless it has been handed over.
    [[nodiscard]] ConnectionNumber Connection() const { return connection_; }
    /// Only of what has not been handed over.
    [[nodiscard]] NotSent Reason() const { return reason_; }

    bool operator==(const Sending&) const = default;

   private:
    ConnectionNumber connection_ = 0;
    NotSent reason_;
};

}  // namespace sontaro
