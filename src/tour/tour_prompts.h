// Prompts of a program that walks by itself.
#pragma once

#include <filesystem>

#include "base/path_text.h"
#include "widgets/message_prompts.h"

namespace sontaro {

/// Message boxes are shown, for the tour to answer. The boxes of the system that ask for a file or
/// a folder are out of its reach: one of each ending, and one folder take their place.
class TourPrompts : public MessagePrompts {
   public:
    explicit TourPrompts(const std::filesystem::path& folder) : folder_(folder) {}

    std::optional<std::filesystem::path> ChooseFile(const FileQuestion& question) override {
        return folder_ / ("kept." + question.extension);
    }
    std::optional<std::filesystem::path> ChooseFolder(const std::string&) override {
        return FilmFolder(folder_);
    }

    /// Where the tour keeps its videos.
    static std::filesystem::path FilmFolder(const std::filesystem::path& folder) {
        return folder / PathOfText("影片");
    }

   private:
    const std::filesystem::path folder_;
};

}  // namespace sontaro
