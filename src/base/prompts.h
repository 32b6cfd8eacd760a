// What Sontaro tells and asks the user in windows of the system.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace sontaro {

/// What a file is chosen for. Texts are UTF-8.
struct FileQuestion {
    enum class Purpose { kOpen, kSave };
    Purpose purpose{};
    std::string caption;
    std::string filter;     ///< as "description|patterns"
    std::string name;       ///< that is suggested; may be empty
    std::string extension;  ///< that a name with another or none is given, without a point

    bool operator==(const FileQuestion&) const = default;
};

/// Takes a question back that has lost its sense. User-interface thread.
class Withdrawal {
   public:
    /// Closes the question if it is open: the answer is No.
    void Withdraw() const {
        if (const auto close = close_) close();
    }
    /// The question is open, and this closes it; nothing: it has been closed.
    void Offer(std::function<void()> close) { close_ = std::move(close); }

   private:
    std::function<void()> close_;
};

/// Modal boxes; tests replace them. User-interface thread only. Texts are UTF-8.
class Prompts {
   public:
    virtual ~Prompts() = default;

    /// Shows a notice (information icon) and returns when it is dismissed.
    virtual void Inform(const std::string& text) = 0;

    /// Shows a failure or refusal (question icon, as the product has always shown them) and
    /// returns when it is dismissed.
    virtual void Warn(const std::string& text) = 0;

    /// Says that there is no room for more (warning icon, where boxes have one) and returns when it
    /// is dismissed.
    virtual void WarnOfLimit(const std::string& text) { Warn(text); }

    /// Asks a question with Yes and No (question icon); true is Yes.
    [[nodiscard]] virtual bool Confirm(const std::string& text) = 0;

    /// As `Confirm`, of something that may be settled while the question is open. `withdrawal`
    /// outlives it.
    [[nodiscard]] virtual bool ConfirmUnlessSettled(const std::string& text,
                                                    Withdrawal& /*withdrawal*/) {
        return Confirm(text);
    }

    /// Asks for a file; none when the user has thought better of it. To replace a file is asked
    /// about.
    [[nodiscard]] virtual std::optional<std::filesystem::path> ChooseFile(
        const FileQuestion& question) = 0;

    /// Asks for files to open, several at a time; empty when the user has thought better of it.
    [[nodiscard]] virtual std::vector<std::filesystem::path> ChooseFiles(
        const FileQuestion& question) {
        const auto file = ChooseFile(question);
        return file ? std::vector{*file} : std::vector<std::filesystem::path>();
    }

    /// Asks for a folder that is there; none when the user has thought better of it.
    [[nodiscard]] virtual std::optional<std::filesystem::path> ChooseFolder(
        const std::string& /*caption*/) {
        return std::nullopt;
    }

    /// Asks for a colour as 0x00BBGGRR, beginning at `colour`; none when the user has thought
    /// better of it.
    [[nodiscard]] virtual std::optional<std::uint32_t> ChooseColour(std::uint32_t colour) = 0;
};

}  // namespace sontaro
