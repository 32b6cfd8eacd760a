// Message boxes that nobody has to dismiss.
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "base/prompts.h"

namespace sontaro::test {

/// Keeps every text and answers questions as scripted, No when the script is over.
class RecordingPrompts final : public Prompts {
   public:
    void Inform(const std::string& text) override { Show(text); }
    void Warn(const std::string& text) override { Show(text); }
    bool Confirm(const std::string& text) override {
        Show(text);
        if (answers.empty()) return false;
        const bool answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::optional<std::filesystem::path> ChooseFile(const FileQuestion& question) override {
        Show(question.caption);
        return file;
    }
    std::optional<std::uint32_t> ChooseColour(std::uint32_t) override { return colour; }

    std::vector<std::string> texts;
    std::deque<bool> answers;
    std::optional<std::filesystem::path> file;  ///< that is chosen; none: it is left
    std::optional<std::uint32_t> colour;
    std::function<void()> whileShown = [] {};  ///< what goes on while a box is open

   private:
    void Show(const std::string& text) {
        texts.push_back(text);
        whileShown();
    }
};

}  // namespace sontaro::test
