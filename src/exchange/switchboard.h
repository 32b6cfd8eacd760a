// The main window without its window: requests out, replies in.
#pragma once

#include <string>

#include "exchange/link_pool.h"
#include "exchange/reassembly.h"
#include "exchange/reply_router.h"

namespace sontaro {

/// Handles the messages of the main window: requests of dialogs go to the players' links, link
/// events are reassembled and routed to the dialogs. User-interface thread.
class Switchboard : private RouterActions {
   public:
    /// `title` is the main window's title, where link events are sent to.
    Switchboard(const std::string& title, const LinkServices& services, ExchangeHub& hub)
        : links_(title, services),
          router_(services.directory, services.prompts, hub, *this),
          reassembly_([this](const Reply& reply) { router_.Route(reply); }) {}

    /// Takes a `LinkEvent` or a `SendRequest`; other messages are ignored.
    void Handle(WindowMessage& message);

    [[nodiscard]] LinkPool& Links() { return links_; }

   private:
    void CloseLinks() override { links_.CloseAll(); }
    void SendPacket(const Target& target, const DevicePacket& packet) override;

    LinkPool links_;
    ReplyRouter router_;
    Reassembly reassembly_;
};

}  // namespace sontaro
