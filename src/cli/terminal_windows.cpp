#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "base/local_text.h"
#include "cli/terminal.h"

namespace sontaro::cli {

bool IsInputTerminal() { return _isatty(_fileno(stdin)) != 0; }
bool IsResultsTerminal() { return _isatty(_fileno(stdout)) != 0; }
bool IsRemarksTerminal() { return _isatty(_fileno(stderr)) != 0; }

bool ShowsChinese() {
    if (!IsResultsTerminal() && !IsRemarksTerminal()) return true;
    // Consoles choose their font by the language of the system.
    return SystemLanguage() == Language::kChinese;
}

void MakeFilesPrivate() {}  // the folders that they stand in are the user's

void KeepBytesOfOutput() { _setmode(_fileno(stdout), _O_BINARY); }

// Ctrl+C ends what waits for a line.
bool AwaitInput(const std::stop_token& stop) { return !stop.stop_requested(); }

}  // namespace sontaro::cli
