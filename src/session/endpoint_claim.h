// One process never has two connections to one player.
#pragma once

#include <optional>
#include <utility>

#include "link/socket.h"

namespace sontaro {

/// The right to speak to a player, of which there is one in a process at a time. Any thread.
class EndpointClaim {
   public:
    /// None when somebody has it.
    [[nodiscard]] static std::optional<EndpointClaim> Take(const Endpoint& player);
    ~EndpointClaim();
    EndpointClaim(EndpointClaim&& other) noexcept
        : player_(std::exchange(other.player_, std::nullopt)) {}
    EndpointClaim& operator=(EndpointClaim&& other) noexcept {
        std::swap(player_, other.player_);
        return *this;
    }

   private:
    explicit EndpointClaim(const Endpoint& player) : player_(player) {}

    std::optional<Endpoint> player_;
};

}  // namespace sontaro
