// Message boxes for what is measured without a user.
#pragma once

#include "base/prompts.h"

namespace sontaro::bench {

class NoPrompts : public Prompts {
   public:
    void Inform(const std::string&) override {}
    void Warn(const std::string&) override {}
    [[nodiscard]] bool Confirm(const std::string&) override { return false; }
    std::optional<std::filesystem::path> ChooseFile(const FileQuestion&) override { return {}; }
    std::optional<std::uint32_t> ChooseColour(std::uint32_t) override { return {}; }
};

}  // namespace sontaro::bench
