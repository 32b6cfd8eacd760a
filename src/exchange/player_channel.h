// The way of packets to a player.
#pragma once

#include <string>

#include "base/window_directory.h"
#include "link/window_message.h"

namespace sontaro {

/// Takes packets to players. The thread of its owner.
class PlayerChannel {
   public:
    virtual ~PlayerChannel() = default;
    /// Hands `packet` to the link to `player`, which is connected if need be: that may block for
    /// 1.2 s, and may open a box unless `boxes` are muted.
    virtual Sending Send(const Target& player, const SharedPacket& packet, Boxes boxes) = 0;
};

/// The links of the main window.
class MainWindowChannel : public PlayerChannel {
   public:
    /// Whom the requests name: their player, or nobody, so that they go to the main window's
    /// current device.
    enum class Addressing { kPlayer, kCurrentDevice };

    /// The main window is found by `mainWindow`, its title.
    MainWindowChannel(WindowDirectory& directory, std::string mainWindow,
                      Addressing addressing = Addressing::kPlayer)
        : directory_(directory), mainWindow_(std::move(mainWindow)), addressing_(addressing) {}

    Sending Send(const Target& player, const SharedPacket& packet, Boxes boxes) override;

   private:
    WindowDirectory& directory_;
    const std::string mainWindow_;
    const Addressing addressing_;
};

}  // namespace sontaro
