// What a player is known to hold of a block of settings.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "exchange/request.h"

namespace sontaro {

/// The document that a player has sent last, or confirmed since; none while that is not known. It
/// is given away to be kept when another one is about to take its place. The thread of its owner.
class HeldDocument {
   public:
    /// Keeps the text somewhere, and comes back at once: nothing that goes wrong holds a write up.
    using Keep = std::function<void(std::string text)>;

    void KeepBy(Keep keep) { keep_ = std::move(keep); }

    /// The player has sent this.
    void Learn(std::string_view text) { text_ = text; }
    /// Another document is about to be sent to the player. From now on nobody knows what it holds.
    void GiveUp() {
        if (text_ && !text_->empty()) keep_(*text_);
        if (text_) given_ = std::exchange(text_, std::nullopt);
    }
    /// The sending of `sent` has ended: the player holds that now, or what it held before.
    void SendingEnded(End how, std::string_view sent) {
        const bool isRefused =
            how == End::kRefused || how == End::kNotSupported || how == End::kNotSent;
        if (how == End::kReply) text_ = sent;
        if (isRefused && !text_) text_ = given_;
    }

    [[nodiscard]] const std::optional<std::string>& Text() const { return text_; }

   private:
    Keep keep_ = [](const std::string&) {};
    std::optional<std::string> text_;
    std::optional<std::string> given_;  // away, last
};

}  // namespace sontaro
