// Message boxes that nobody has to dismiss.
#pragma once

#include <deque>
#include <functional>
#include <ostream>
#include <utility>
#include <vector>

#include "base/prompts.h"

namespace sontaro::test {

/// A box that was shown. A notice has the icon of information, a warning and a question that of a
/// question; only a question can be answered.
struct Box {
    enum class Kind { kNotice, kWarning, kQuestion, kFileQuestion, kLimit, kWithdrawn };
    Kind kind{};
    std::string text;
    FileQuestion file = {};  ///< all that a file was asked for with

    bool operator==(const Box&) const = default;
};

inline Box Notice(std::string text) { return {Box::Kind::kNotice, std::move(text)}; }
inline Box Warning(std::string text) { return {Box::Kind::kWarning, std::move(text)}; }
inline Box Limit(std::string text) { return {Box::Kind::kLimit, std::move(text)}; }
inline Box Question(std::string text) { return {Box::Kind::kQuestion, std::move(text)}; }
/// Behind the question that was closed unanswered.
inline Box Withdrawn() { return {Box::Kind::kWithdrawn, ""}; }
inline Box ToOpen(const std::string& caption, std::string filter, std::string extension) {
    return {Box::Kind::kFileQuestion,
            caption,
            {FileQuestion::Purpose::kOpen, caption, std::move(filter), "", std::move(extension)}};
}
inline Box ToSave(const std::string& caption, std::string filter, std::string name,
                  std::string extension) {
    return {Box::Kind::kFileQuestion,
            caption,
            {FileQuestion::Purpose::kSave, caption, std::move(filter), std::move(name),
             std::move(extension)}};
}

inline void PrintTo(const Box& box, std::ostream* out) {
    constexpr const char* kKinds[] = {"notice",        "warning", "question",
                                      "file question", "limit",   "withdrawn"};
    *out << kKinds[static_cast<int>(box.kind)] << " \"" << box.text << '"';
    if (box.kind != Box::Kind::kFileQuestion) return;
    const bool saves = box.file.purpose == FileQuestion::Purpose::kSave;
    *out << (saves ? " to save" : " to open") << " \"" << box.file.filter << "\" as \""
         << box.file.name << "\" ." << box.file.extension;
}

/// Keeps every box and answers questions as scripted, No when the script is over.
class RecordingPrompts final : public Prompts {
   public:
    void Inform(const std::string& text) override { Show(Notice(text)); }
    void Warn(const std::string& text) override { Show(Warning(text)); }
    void WarnOfLimit(const std::string& text) override { Show(Limit(text)); }
    bool Confirm(const std::string& text) override {
        Show(Question(text));
        if (answers.empty()) return false;
        const bool answer = answers.front();
        answers.pop_front();
        return answer;
    }
    bool ConfirmUnlessSettled(const std::string& text, Withdrawal& withdrawal) override {
        bool isOpen = true;
        withdrawal.Offer([&] { isOpen = false; });
        const bool answer = Confirm(text);
        withdrawal.Offer({});
        if (!isOpen) boxes.push_back(Withdrawn());
        return answer && isOpen;
    }
    std::optional<std::filesystem::path> ChooseFile(const FileQuestion& question) override {
        Show({Box::Kind::kFileQuestion, question.caption, question});
        return file;
    }
    std::vector<std::filesystem::path> ChooseFiles(const FileQuestion& question) override {
        Show({Box::Kind::kFileQuestion, question.caption, question});
        return files;
    }
    std::optional<std::filesystem::path> ChooseFolder(const std::string& caption) override {
        Show({Box::Kind::kFileQuestion,
              caption,
              {FileQuestion::Purpose::kOpen, caption, "", "", ""}});
        return folder;
    }
    std::optional<std::uint32_t> ChooseColour(std::uint32_t) override { return colour; }

    std::vector<Box> boxes;
    std::deque<bool> answers;
    std::optional<std::filesystem::path> file;    ///< that is chosen; none: it is left
    std::vector<std::filesystem::path> files;     ///< where several are asked for
    std::optional<std::filesystem::path> folder;  ///< that is chosen
    std::optional<std::uint32_t> colour;
    std::function<void()> whileShown = [] {};  ///< what goes on while a box is open

   private:
    void Show(Box box) {
        boxes.push_back(std::move(box));
        whileShown();
    }
};

}  // namespace sontaro::test
