// Makes the texts that packages have of the table of commands, while they are built:
// make_texts man DATE | completion | list | help
#include <cstdio>
#include <string_view>
#include <vector>

#include "app/application_title.h"
#include "base/program_arguments.h"
#include "cli/command_texts.h"

namespace sontaro::cli {

namespace {

int Make(const std::vector<std::string>& arguments) {
    SetLanguage(Language::kEnglish);
    std::string text;
    if (arguments.size() == 2 && arguments[0] == "man")
        text = ManualPage(ProgramVersion(), arguments[1]);
    else if (arguments.size() == 1 && arguments[0] == "completion")
        text = BashCompletion();
    else if (arguments.size() == 1 && arguments[0] == "list")
        text = CommandList();
    else if (arguments.size() == 1 && arguments[0] == "help")  // as a literal of C++
        text = "R\"help(" + ProgramHelp() + ")help\"\n";
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return !text.empty() && written && std::fflush(stdout) == 0 ? 0 : 1;
}

}  // namespace

}  // namespace sontaro::cli

int main(int argc, char** argv) {
    return sontaro::cli::Make(sontaro::ProgramArguments(argc, argv));
}
