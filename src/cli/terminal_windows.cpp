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

StandardOutput::StandardOutput() {
    _setmode(_fileno(stdout), _O_BINARY);  // documents are written as players have sent them
}

}  // namespace sontaro::cli
