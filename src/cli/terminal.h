// The terminal that the program was started in.
#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>

#include "cli/text_sink.h"

namespace sontaro::cli {

/// Whether somebody reads what is told there, or may answer.
[[nodiscard]] bool IsInputTerminal();
[[nodiscard]] bool IsResultsTerminal();
[[nodiscard]] bool IsRemarksTerminal();

/// Whether what is written in Chinese can be read. A file or a pipe takes anything.
[[nodiscard]] bool ShowsChinese();

/// Has the files and folders that the program makes be the user's alone, where the system knows
/// such. Called once, at the start.
void MakeFilesPrivate();

/// A line that the user has typed; none at the end of the input, or when the program is to end.
[[nodiscard]] std::optional<std::string> ReadTypedLine(const std::stop_token& stop);
/// Waits until there is something to read; false when the program is to end before.
[[nodiscard]] bool AwaitInput(const std::stop_token& stop);

/// The standard output, byte by byte as it is told.
class StandardOutput : public TextSink {
   public:
    /// `failed` is called once, as soon as something cannot be written.
    explicit StandardOutput(std::function<void()> failed);
    void Write(std::string_view text) override;
    /// Whether everything could be written.
    [[nodiscard]] bool IsWhole() const { return isWhole_; }
    /// Whether nobody reads it any more.
    [[nodiscard]] bool IsClosed() const { return isClosed_; }

   private:
    const std::function<void()> failed_;
    bool isWhole_ = true;
    bool isClosed_ = false;
};

/// Has the standard output take bytes as they are: documents are written as players have sent them.
void KeepBytesOfOutput();

/// The standard error output.
class StandardRemarks : public TextSink {
   public:
    void Write(std::string_view text) override;
    /// Nothing more is told.
    void Mute() { isMuted_ = true; }

   private:
    std::atomic<bool> isMuted_ = false;
};

}  // namespace sontaro::cli
