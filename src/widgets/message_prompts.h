// The message boxes of the real user interface.
#pragma once

#include "base/prompts.h"

namespace sontaro {

/// Message boxes over the window that the user works in, the same on every system.
class MessagePrompts : public Prompts {
   public:
    void Inform(const std::string& text) override;
    void Warn(const std::string& text) override;
    [[nodiscard]] bool Confirm(const std::string& text) override;
};

}  // namespace sontaro
