// Saves a document over and over until it is killed.
// Usage: save_repeatedly FILE FIRST SECOND: writes what is saved in turn to FIRST and SECOND, too.
#include "base/path_text.h"
#include "base/program_arguments.h"
#include "controlprotocol/control_protocol_document.h"

int main() {
    const std::vector<std::string> paths = sontaro::ProgramArguments();
    if (paths.size() != 3) return 2;
    sontaro::ControlProtocolModel models[2];
    models[1].songSystem.serverPort = 1;
    for (std::size_t i = 0; i < 2; ++i)
        if (!WriteControlProtocol(models[i], sontaro::PathOfText(paths[i + 1]))) return 1;
    for (std::size_t i = 0;; i = 1 - i)
        if (!WriteControlProtocol(models[i], sontaro::PathOfText(paths[0]))) return 1;
}
