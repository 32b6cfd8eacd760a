// What is told of the exchange with a player, wherever it is told.
#pragma once

#include <string>

#include "base/local_text.h"
#include "link/sending.h"

namespace sontaro {

inline constexpr LocalText kNotConnected = {"未连接播放器。", "Not connected to the player."};

/// Why nothing has been sent.
[[nodiscard]] inline std::string TextOf(NotSent reason) {
    switch (reason) {
        case NotSent::kNobodyThere:
        case NotSent::kConnectFailed:
            return Localized({"无法连接播放器。", "The player cannot be reached."});
        case NotSent::kNoSlot:
            return Localized({"所有连接都已被占用。", "All links are taken by other players."});
        case NotSent::kOtherPlayersLink:
            return Localized({"所用的连接仍属于另一台播放器，请重试。",
                              "The link still belonged to another player. Please try again."});
        case NotSent::kNotRunning:
            return Localized(
                {"连接正在断开，请重试。", "The connection was just ending. Please try again."});
        case NotSent::kTooMuchWaiting:
            return Localized({"播放器没有接收数据。", "The player does not take anything in."});
    }
    return {};
}

}  // namespace sontaro
