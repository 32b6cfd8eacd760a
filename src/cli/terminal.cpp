#include "cli/terminal.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

namespace sontaro::cli {

std::optional<std::string> ReadTypedLine(const std::stop_token& stop) {
    std::string line;
    if (!AwaitInput(stop) || !std::getline(std::cin, line)) return std::nullopt;
    return line;
}

StandardOutput::StandardOutput(std::function<void()> failed) : failed_(std::move(failed)) {
    KeepBytesOfOutput();
}

void StandardOutput::Write(std::string_view text) {
    if (!isWhole_) return;
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (written && std::fflush(stdout) == 0) return;
    isWhole_ = false;
    isClosed_ = errno == EPIPE || errno == EINVAL;  // Windows says the latter
    failed_();
}

void StandardRemarks::Write(std::string_view text) {
    // There is nobody to be told that it could not be told.
    if (!isMuted_) static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
}

}  // namespace sontaro::cli
