#include "exchange/exchange_hub.h"

#include <vector>

namespace sontaro {

ExchangeHub::Subscription ExchangeHub::Subscribe(Listener listener) {
    std::erase_if(listeners_, [](const auto& other) { return other.expired(); });
    auto subscription = std::make_shared<const Listener>(std::move(listener));
    listeners_.push_back(subscription);
    return subscription;
}

Boxes ExchangeHub::Report(const ExchangeNews& news) {
    Boxes boxes = Boxes::kShown;
    const std::vector<std::weak_ptr<const Listener>> listeners(listeners_.begin(),
                                                               listeners_.end());
    for (const auto& weak : listeners)
        if (const auto listener = weak.lock())
            if ((*listener)(news) == Boxes::kMuted) boxes = Boxes::kMuted;
    return boxes;
}

}  // namespace sontaro
