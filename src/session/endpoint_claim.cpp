#include "session/endpoint_claim.h"

#include <mutex>
#include <set>

namespace sontaro {

namespace {

/// Whom this process speaks to.
struct Register {
    std::mutex mutex;
    std::set<Endpoint> players;
};

Register& TheRegister() {
    static Register theRegister;
    return theRegister;
}

}  // namespace

std::optional<EndpointClaim> EndpointClaim::Take(const Endpoint& player) {
    Register& taken = TheRegister();
    const std::lock_guard lock(taken.mutex);
    if (!taken.players.insert(player).second) return std::nullopt;
    return EndpointClaim(player);
}

EndpointClaim::~EndpointClaim() {
    if (!player_) return;
    Register& taken = TheRegister();
    const std::lock_guard lock(taken.mutex);
    taken.players.erase(*player_);
}

}  // namespace sontaro
