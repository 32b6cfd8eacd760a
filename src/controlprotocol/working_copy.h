// The file that is uploaded to a player.
#pragma once

#include <filesystem>
#include <optional>

#include "base/prompts.h"
#include "settings/settings_run.h"

namespace sontaro {

/// Writes a document into the working copy and asks whether the player is to restart with it.
class WorkingCopy {
   public:
    WorkingCopy(std::filesystem::path path, Prompts& prompts)
        : path_(std::move(path)), prompts_(prompts) {}

    /// What the file holds afterwards is what goes out. None when it cannot be written: the user
    /// has been told.
    [[nodiscard]] std::optional<OutgoingSettings> Prepare(const std::string& text);

    /// Whether the question is open: what goes out has been written already.
    [[nodiscard]] bool IsAsking() const { return asking_; }

   private:
    const std::filesystem::path path_;
    Prompts& prompts_;
    bool asking_ = false;
};

}  // namespace sontaro
