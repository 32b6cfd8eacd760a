// What Sontaro tells and asks the user in message boxes.
#pragma once

#include <string>

namespace sontaro {

/// Modal message boxes; tests replace them. User-interface thread only. Texts are UTF-8.
class Prompts {
   public:
    virtual ~Prompts() = default;

    /// Shows a notice (information icon) and returns when it is dismissed.
    virtual void Inform(const std::string& text) = 0;

    /// Shows a failure or refusal (question icon, as the product has always shown them) and
    /// returns when it is dismissed.
    virtual void Warn(const std::string& text) = 0;

    /// Asks a question with Yes and No (question icon); true is Yes.
    [[nodiscard]] virtual bool Confirm(const std::string& text) = 0;
};

}  // namespace sontaro
