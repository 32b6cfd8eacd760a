// Entry point of sontaro-cli.
#include <cstdio>
#include <exception>

#include "base/program_arguments.h"
#include "cli/exit_code.h"
#include "cli/interrupt_watch.h"
#include "cli/program.h"
#include "cli/terminal.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kYesOrNo = {" [是(y)/否] ", " [y/N] "};
constexpr LocalText kNotWritten = {"无法写入标准输出。", "the standard output cannot be written."};

std::optional<bool> Ask(const std::string& question, const std::stop_token& stop) {
    if (!IsInputTerminal() || !IsRemarksTerminal()) return std::nullopt;
    StandardRemarks().Write(question + Localized(kYesOrNo));
    const std::string answer = ReadTypedLine(stop).value_or("");
    return answer == "y" || answer == "Y" || answer == "yes" || answer == "是";
}

/// Texts alone are told without watching for anything.
bool IsTextWanted(const std::vector<std::string>& arguments) {
    return AsksFor(OptionId::kHelp, arguments) || AsksFor(OptionId::kVersion, arguments);
}

int Run(const std::vector<std::string>& arguments) {
    SurviveClosedPipes();
    MakeFilesPrivate();
    std::stop_source stop;
    StandardRemarks remarks;
    StandardOutput results([&] {
        if (results.IsClosed()) remarks.Mute();
        stop.request_stop();
    });
    std::optional<InterruptWatch> watch;
    if (!IsTextWanted(arguments)) watch.emplace([&stop] { stop.request_stop(); });
    ProgramWays ways{results, remarks};
    ways.showsProgress = IsRemarksTerminal();
    ways.showsChinese = ShowsChinese();
    ways.stop = stop.get_token();
    ways.confirm = [&stop](const std::string& question) { return Ask(question, stop.get_token()); };
    const int code = RunProgram(arguments, ways);
    if (watch && watch->IsInterrupted()) return kInterrupted;
    if (results.IsWhole()) return code;
    if (results.IsClosed()) return kOutputClosed;
    remarks.Write("sontaro-cli: " + Localized(kNotWritten) + '\n');
    return kSomeFailed;
}

}  // namespace

}  // namespace sontaro::cli

int main(int argc, char** argv) try {
    return sontaro::cli::Run(sontaro::ProgramArguments(argc, argv));
} catch (const std::exception& error) {
    static_cast<void>(std::fprintf(stderr, "sontaro-cli: %s\n", error.what()));
    return sontaro::cli::kSomeFailed;
}
