#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "cli/terminal.h"

namespace sontaro::cli {

namespace {

std::string_view Environment(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nothing sets one
    return value ? value : "";
}

/// Whether the first locale that is named has UTF-8, which is what is written.
bool IsUtf8Locale() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        std::string locale(Environment(name));
        if (locale.empty()) continue;
        std::ranges::transform(locale, locale.begin(), [](char letter) {
            return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
        });
        return locale.find("utf-8") != std::string::npos ||
               locale.find("utf8") != std::string::npos;
    }
    return false;
}

}  // namespace

bool IsInputTerminal() { return isatty(STDIN_FILENO) != 0; }
bool IsResultsTerminal() { return isatty(STDOUT_FILENO) != 0; }
bool IsRemarksTerminal() { return isatty(STDERR_FILENO) != 0; }

bool ShowsChinese() {
    if (!IsResultsTerminal() && !IsRemarksTerminal()) return true;
    // The system's own console has no room for so many characters.
    return IsUtf8Locale() && Environment("TERM") != "linux";
}

void MakeFilesPrivate() { umask(S_IRWXG | S_IRWXO); }

void KeepBytesOfOutput() {}  // it never does anything else

bool AwaitInput(const std::stop_token& stop) {
    constexpr int kStep = 100;  // milliseconds
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (!stop.stop_requested())
        if (poll(&input, 1, kStep) > 0) return true;
    return false;
}

}  // namespace sontaro::cli
