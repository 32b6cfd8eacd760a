// The boxes of the real user interface.
#pragma once

#include "base/prompts.h"

namespace sontaro {

/// Boxes over the window that the user works in. Message boxes are the same on every system, the
/// questions for files, a folder and a colour are the system's own.
class MessagePrompts : public Prompts {
   public:
    void Inform(const std::string& text) override;
    void Warn(const std::string& text) override;
    void WarnOfLimit(const std::string& text) override;
    [[nodiscard]] bool Confirm(const std::string& text) override;
    [[nodiscard]] bool ConfirmUnlessSettled(const std::string& text,
                                            Withdrawal& withdrawal) override;
    [[nodiscard]] std::optional<std::filesystem::path> ChooseFile(
        const FileQuestion& question) override;
    [[nodiscard]] std::vector<std::filesystem::path> ChooseFiles(
        const FileQuestion& question) override;
    [[nodiscard]] std::optional<std::filesystem::path> ChooseFolder(
        const std::string& caption) override;
    [[nodiscard]] std::optional<std::uint32_t> ChooseColour(std::uint32_t colour) override;
};

}  // namespace sontaro
