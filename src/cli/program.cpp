#include "cli/program.h"

#include "app/application_title.h"
#include "base/folders.h"
#include "base/path_text.h"
#include "base/private_files.h"
#include "cli/command_texts.h"
#include "cli/commands.h"
#include "cli/exit_code.h"
#include "cli/player_runs.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNoCommand = {"缺少命令。“sontaro-cli --help” 列出所有命令。",
                                  "a command is missing: \"sontaro-cli --help\" lists them."};
constexpr LocalText kNoLanguage = {"--language 需要 zh 或 en。", "--language takes zh or en."};

/// What the arguments say, even if something else is wrong with them.
std::string LanguageIn(const std::vector<std::string>& arguments) {
    const std::string name = RowOf(OptionId::kLanguage).name;
    std::string language;
    for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
        if (arguments[i] == name && i + 1 < arguments.size()) language = arguments[i + 1];
        if (arguments[i].starts_with(name + "=")) language = arguments[i].substr(name.size() + 1);
    }
    return language;
}

Language LanguageFor(const std::vector<std::string>& arguments, bool showsChinese) {
    const std::string asked = LanguageIn(arguments);
    if (asked == "zh") return Language::kChinese;
    if (asked == "en" || !showsChinese) return Language::kEnglish;
    return SystemLanguage();
}

/// Help of the first command that is named, else of the program.
std::string HelpFor(const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments)
        if (const CommandRow* command = FindCommand(argument)) return CommandHelp(*command);
    return ProgramHelp();
}

int RefuseArguments(const std::string& why, Output& output) {
    if (output.IsJson())
        output.Object(ObjectOf({}, FailureOf("wrong-use", why)));
    else
        output.Remark("sontaro-cli: " + why);
    return kWrongUse;
}

}  // namespace

int RunProgram(const std::vector<std::string>& arguments, const ProgramWays& ways) {
    SetLanguage(LanguageFor(arguments, ways.showsChinese));
    if (AsksFor(OptionId::kHelp, arguments)) {
        ways.results.Write(HelpFor(arguments));
        return kAllWell;
    }
    if (AsksFor(OptionId::kVersion, arguments)) {
        ways.results.Write("sontaro-cli " + ProgramVersion() + '\n');
        return kAllWell;
    }
    const auto form =
        AsksFor(OptionId::kJson, arguments) ? Output::Form::kJson : Output::Form::kTables;
    Output output(ways.results, ways.remarks, form, ways.showsProgress);
    const auto call = Invocation::Parse(arguments);
    if (!call) return RefuseArguments(call.reason(), output);
    if (!call->Command()) return RefuseArguments(Localized(kNoCommand), output);
    const std::string language = call->Value(OptionId::kLanguage);
    if (!language.empty() && language != "zh" && language != "en")
        return RefuseArguments(Localized(kNoLanguage), output);
    const std::string given = call->Value(OptionId::kData);
    const std::filesystem::path data = given.empty() ? UserDataFolder() : PathOfText(given);
    // Where it cannot be made, whoever needs it says so.
    if (call->Command()->players != Players::kNone) static_cast<void>(MakePrivateFolder(data));
    const int code =
        RunCommand({*call, output, ways.stop, data,
                    ways.config.empty() ? ConfigFolder() : ways.config, ways.confirm, ways.find});
    return ways.stop.stop_requested() ? kInterrupted : code;
}

int RunCommand(const Surroundings& surroundings) {
    switch (surroundings.call.Command()->id) {
        case CommandId::kFind: return RunFind(surroundings);
        case CommandId::kShow: return RunShow(surroundings);
        case CommandId::kVideos: return RunVideos(surroundings);
        case CommandId::kGet: return RunGet(surroundings);
        case CommandId::kSet: return RunSet(surroundings);
        case CommandId::kApply: return RunApply(surroundings);
        case CommandId::kControl: return RunControl(surroundings);
        case CommandId::kSend: return RunSend(surroundings);
        case CommandId::kUpload: return RunUpload(surroundings);
        case CommandId::kBackup: return RunBackup(surroundings);
        case CommandId::kCompare: return RunCompare(surroundings);
        case CommandId::kRestore: return RunRestore(surroundings);
        case CommandId::kCheck: return RunCheck(surroundings);
        case CommandId::kWatch: return RunWatch(surroundings);
    }
    return kWrongUse;
}

}  // namespace sontaro::cli
