// What Sontaro tells and asks the user in windows of the system.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

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

    /// Asks for a file; none when the user has thought better of it. To replace a file is asked
    /// about.
    [[nodiscard]] virtual std::optional<std::filesystem::path> ChooseFile(
        const FileQuestion& question) = 0;

    /// Asks for a colour as 0x00BBGGRR, beginning at `colour`; none when the user has thought
    /// better of it.
    [[nodiscard]] virtual std::optional<std::uint32_t> ChooseColour(std::uint32_t colour) = 0;
};

}  // namespace sontaro
