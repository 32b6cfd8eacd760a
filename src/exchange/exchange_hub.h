// What every conversation hears besides the replies that reach its window.
#pragma once

#include <functional>
#include <list>
#include <memory>

#include "link/window_message.h"

namespace sontaro {

/// Something that is no reply to be forwarded.
struct ExchangeNews {
    enum class Kind : std::uint8_t {
        kLinkEnded,     ///< the receive loop of the origin's connection has ended
        kLayoutLocked,  ///< the player refuses command 52
        kNotSupported,  ///< the player does not know the command of the origin's header
    };
    Kind kind{};
    Origin origin;
};

/// Passes news on to everyone who listens. User-interface thread.
class ExchangeHub {
   public:
    /// Says whether the boxes that go with the news are to be left out.
    using Listener = std::function<Boxes(const ExchangeNews&)>;

    /// Listens as long as it lives; it must not outlive the hub.
    using Subscription = std::shared_ptr<const Listener>;

    [[nodiscard]] Subscription Subscribe(Listener listener);

    /// Tells everyone who listens at this moment and still does when it is its turn. Muted when one
    /// of them wants no box.
    Boxes Report(const ExchangeNews& news);

   private:
    std::list<std::weak_ptr<const Listener>> listeners_;
};

}  // namespace sontaro
