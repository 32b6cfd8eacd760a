// Prompts of a program that walks by itself.
#pragma once

#include <filesystem>

#include "widgets/message_prompts.h"

namespace sontaro {

/// Message boxes are shown, for the tour to answer. The box of the system that asks for a file is
/// out of its reach: one file takes its place.
class TourPrompts : public MessagePrompts {
   public:
    explicit TourPrompts(const std::filesystem::path& folder) : file_(folder / "kept.JSON") {}

    std::optional<std::filesystem::path> ChooseFile(const FileQuestion&) override { return file_; }

   private:
    const std::filesystem::path file_;
};

}  // namespace sontaro
