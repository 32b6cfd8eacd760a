// The terminal that the program was started in.
#pragma once

#include <optional>
#include <string>

#include "cli/text_sink.h"

namespace sontaro::cli {

/// Whether somebody reads what is told there, or may answer.
[[nodiscard]] bool IsInputTerminal();
[[nodiscard]] bool IsResultsTerminal();
[[nodiscard]] bool IsRemarksTerminal();

/// Whether what is written in Chinese can be read. A file or a pipe takes anything.
[[nodiscard]] bool ShowsChinese();

/// A line that the user has typed; none at the end of the input.
[[nodiscard]] std::optional<std::string> ReadTypedLine();

/// The standard output, byte by byte as it is told.
class StandardOutput : public TextSink {
   public:
    StandardOutput();
    void Write(std::string_view text) override;
    /// Whether everything could be written.
    [[nodiscard]] bool IsWhole() const { return isWhole_; }
    /// Whether nobody reads it any more.
    [[nodiscard]] bool IsClosed() const { return isClosed_; }

   private:
    bool isWhole_ = true;
    bool isClosed_ = false;
};

/// The standard error output.
class StandardRemarks : public TextSink {
   public:
    void Write(std::string_view text) override;
};

}  // namespace sontaro::cli
