// The link to the player that a page shows.
#pragma once

#include <map>
#include <optional>

#include "exchange/conversation.h"
#include "exchange/keep_alive.h"

namespace sontaro {

/// Sends command 50 to the player that is shown, if that has answered: as long as its link lasts,
/// and over a new one where only its link had to make room for those to others. User-interface
/// thread.
class ShownLink {
   public:
    explicit ShownLink(const ExchangeServices& exchange);

    /// Another player is shown; none: no one.
    void Show(std::optional<Target> player);
    /// Whether a player has answered, over a link that is there then, when it was asked last.
    void SetAnswered(const Target& player, bool answered);
    /// The link to a player has ended.
    void Ended(const Target& player);
    /// Players are being asked: links end because of that, and no other one is made meanwhile.
    void Hold(bool held);
    /// Nobody is shown, and nobody has answered.
    void Reset();

   private:
    enum class State : std::uint8_t { kLinked, kClosed, kLost };

    void Proceed();
    void Send();

    PlayerChannel& channel_;
    std::optional<Target> shown_;
    std::map<std::string, State> states_;  // by the addresses of those that have answered
    bool isHeld_ = false;
    KeepAlive keepAlive_;
};

}  // namespace sontaro
