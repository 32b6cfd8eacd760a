#include "cli/command_texts.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "cli/display_width.h"

namespace sontaro::cli {

namespace {

constexpr std::size_t kLineWidth = 80;
constexpr std::size_t kFirstColumn = 26;

constexpr LocalText kPurpose = {
    "在脚本和 cron 中查找、设置、控制、备份和恢复网络视频播放器。",
    "Finds, sets up, controls, backs up and restores networked video players "
    "from scripts and from cron."};
constexpr LocalText kCall = {"用法：", "Usage: "};
constexpr LocalText kCommandsHeading = {"命令：", "Commands:"};
constexpr LocalText kOptionsHeading = {"选项：", "Options:"};
constexpr LocalText kPlayersHeading = {"播放器选项：", "Players:"};
constexpr LocalText kEveryHeading = {"通用选项：", "Options of every command:"};
constexpr LocalText kActionsHeading = {"动作：", "Actions:"};
constexpr LocalText kBlocksHeading = {"设置块：", "Blocks:"};
constexpr LocalText kExamplesHeading = {"示例：", "Examples:"};
constexpr LocalText kCodesHeading = {"退出码：", "Exit codes:"};
constexpr LocalText kFinal = {
    "不可撤销时会先询问；没有终端又没有 --yes 时以 2 结束。",
    "What cannot be taken back is asked about; without a terminal and without "
    "--yes it ends with 2."};
constexpr LocalText kMore = {"“sontaro-cli 命令 --help” 显示一个命令的详细说明。",
                             "\"sontaro-cli COMMAND --help\" tells more of a command."};
constexpr LocalText kCodes[] = {
    {"0    全部正常", "0    all is well"},
    {"1    某台播放器失败；compare 不同，check 有错",
     "1    a player has failed; compare: differs, check: faulty"},
    {"2    用法错误", "2    wrong use"},
    {"3    没有找到播放器", "3    nobody was found"},
    {"4    compare 和 check 无法判断", "4    compare and check cannot tell"},
    {"130  被中断", "130  interrupted"},
};

/// Two columns: what it is called, and what it is.
void AddRow(std::string& text, const std::string& name, const std::string& what) {
    const bool fits = name.size() + 4 <= kFirstColumn;
    text += "  " + (fits ? FilledUp(name, kFirstColumn - 2) : name);
    std::string indent = fits ? "" : "\n" + std::string(kFirstColumn, ' ');
    for (const std::string& line : Wrapped(what, kLineWidth - kFirstColumn)) {
        text += indent + line;
        indent = "\n" + std::string(kFirstColumn, ' ');
    }
    text += '\n';
}

void AddHeading(std::string& text, const LocalText& heading) {
    text += '\n' + Localized(heading) + '\n';
}

void AddParagraph(std::string& text, const std::string& paragraph) {
    for (const std::string& line : Wrapped(paragraph, kLineWidth)) text += line + '\n';
}

/// "-p, --player P".
std::string CallOf(const OptionRow& option) {
    std::string call = option.shortName ? std::string(option.shortName) + ", " : "    ";
    call += option.name;
    if (option.value) call += std::string(" ") + option.value;
    return call;
}

void AddOptions(std::string& text, const LocalText& heading, const CommandRow& command,
                OptionScope scope) {
    bool isFirst = true;
    for (const OptionRow& option : Options()) {
        if (option.scope != scope || !Takes(command, option)) continue;
        if (std::exchange(isFirst, false)) AddHeading(text, heading);
        AddRow(text, CallOf(option), Localized(option.help));
    }
}

bool HasArgument(const CommandRow& command, ValueKind kind) {
    return std::ranges::find(command.arguments, kind, &ArgumentRow::kind) !=
           command.arguments.end();
}

std::string CallOf(const ActionRow& action) {
    return std::string(action.name) + (action.value ? std::string(" ") + action.value : "");
}

std::string BlockList() {
    std::string list;
    for (const std::string& word : BlockWords()) list += (list.empty() ? "" : ", ") + word;
    return list;
}

/// What a command does, as a sentence.
std::string SentenceOf(std::string text, Language language) {
    if (language == Language::kChinese) return text + "。";
    if (text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 'a' + 'A');
    return text + '.';
}

std::string English(const LocalText& text) { return text.english; }

/// A text in a manual page.
std::string Roff(const std::string& text) {
    std::string roff;
    for (const char letter : text) {
        if (letter == '\\')
            roff += "\\e";
        else if (letter == '-')
            roff += "\\-";
        else
            roff += letter;
    }
    return roff.starts_with('.') || roff.starts_with('\'') ? "\\&" + roff : roff;
}

void AddManualRow(std::string& page, const std::string& name, const std::string& what) {
    page += ".TP\n.B " + Roff(name) + "\n" + Roff(what) + "\n";
}

void AddManualExamples(std::string& page, const CommandRow& command) {
    for (const ExampleRow& example : command.examples) {
        if (const std::string what = English(example.what); !what.empty())
            page += ".PP\n" + Roff(what) + ":\n";
        page += ".PP\n.RS\n.nf\nsontaro\\-cli " + Roff(example.line) + "\n.fi\n.RE\n";
    }
}

void AddManualCommand(std::string& page, const CommandRow& command) {
    page += ".SS " + Roff(Usage(command)) + "\n" +
            Roff(SentenceOf(English(command.help), Language::kEnglish)) + "\n";
    if (*command.description.english != '\0') page += Roff(English(command.description)) + "\n";
    if (command.isFinal) page += Roff(English(kFinal)) + "\n";
    for (const OptionRow& option : Options())
        if (option.scope == OptionScope::kNamed && Takes(command, option))
            AddManualRow(page, CallOf(option).substr(option.shortName ? 0 : 4),
                         English(option.help));
    if (HasArgument(command, ValueKind::kActionWord))
        for (const ActionRow& action : Actions())
            AddManualRow(page, CallOf(action), English(action.help));
}

/// The words that complete a value; empty: the shell's own way.
std::string WordsFor(ValueKind kind) {
    std::string words;
    if (kind == ValueKind::kBlockWord)
        for (const std::string& word : BlockWords()) words += (words.empty() ? "" : " ") + word;
    if (kind == ValueKind::kActionWord)
        for (const ActionRow& row : Actions())
            words += std::string(words.empty() ? "" : " ") + row.name;
    if (kind == ValueKind::kLanguageWord) words = "zh en";
    return words;
}

/// How bash completes a value of that kind.
std::string CompletionOf(ValueKind kind) {
    if (kind == ValueKind::kFilePath)
        return "compopt -o filenames; COMPREPLY=($(compgen -f -- \"$word\"))";
    if (kind == ValueKind::kFolderPath)
        return "compopt -o filenames; COMPREPLY=($(compgen -d -- \"$word\"))";
    const std::string words = WordsFor(kind);
    return words.empty() ? "COMPREPLY=()"
                         : "COMPREPLY=($(compgen -W '" + words + "' -- \"$word\"))";
}

std::string OptionNames(const CommandRow& command) {
    std::string names;
    for (const OptionRow& option : Options())
        if (Takes(command, option)) names += std::string(names.empty() ? "" : " ") + option.name;
    return names;
}

/// The values of options, by the word before the one that is typed.
std::string CompletionOfValues() {
    std::string cases;
    for (const OptionRow& option : Options()) {
        if (!option.value) continue;
        const std::string names =
            (option.shortName ? std::string(option.shortName) + "|" : "") + option.name;
        cases += "        " + names + ") " + CompletionOf(option.kind) + "; return ;;\n";
    }
    return cases;
}

std::string CompletionOfCommands() {
    std::string cases;
    for (const CommandRow& command : Commands()) {
        const ValueKind first =
            command.arguments.empty() ? ValueKind::kAnyText : command.arguments.front().kind;
        cases += std::string("        ") + command.name + ")\n";
        cases += "            if [[ $word == -* ]]; then COMPREPLY=($(compgen -W '" +
                 OptionNames(command) + "' -- \"$word\"))\n";
        cases += "            else " + CompletionOf(first) + "; fi ;;\n";
    }
    return cases;
}

}  // namespace

std::string Usage(const CommandRow& command) {
    std::string usage = command.name;
    for (const ArgumentRow& argument : command.arguments) {
        const std::string name = std::string(argument.name) + (argument.mayRepeat ? "..." : "");
        usage += argument.isRequired ? " " + name : " [" + name + "]";
    }
    if (command.players == Players::kNamed) usage += " -p P";
    if (command.players == Players::kAllByDefault) usage += " [-p P]";
    for (const OptionRow& option : Options()) {
        if (option.scope != OptionScope::kNamed || !Takes(command, option)) continue;
        const std::string call = std::string(option.shortName ? option.shortName : option.name) +
                                 (option.value ? std::string(" ") + option.value : "");
        usage += IsRequired(command, option) ? " " + call : " [" + call + "]";
    }
    return usage;
}

std::string ProgramHelp() {
    std::string text = Localized(kCall) + "sontaro-cli COMMAND ...\n\n";
    AddParagraph(text, Localized(kPurpose));
    AddHeading(text, kCommandsHeading);
    for (const CommandRow& command : Commands())
        AddRow(text, command.name, Localized(command.help));
    for (const auto& [scope, heading] : {std::pair(OptionScope::kPlayers, kPlayersHeading),
                                         std::pair(OptionScope::kEvery, kEveryHeading)})
        AddOptions(text, heading, Commands().front(), scope);
    AddHeading(text, kCodesHeading);
    for (const LocalText& code : kCodes) text += "  " + Localized(code) + '\n';
    return text + '\n' + Localized(kMore) + '\n';
}

std::string CommandHelp(const CommandRow& command) {
    std::string text;
    AddParagraph(text, Localized(kCall) + "sontaro-cli " + Usage(command));
    text += '\n';
    AddParagraph(text, SentenceOf(Localized(command.help), CurrentLanguage()));
    if (const std::string more = Localized(command.description); !more.empty())
        AddParagraph(text, more);
    if (command.isFinal) AddParagraph(text, Localized(kFinal));
    if (HasArgument(command, ValueKind::kActionWord)) {
        AddHeading(text, kActionsHeading);
        for (const ActionRow& action : Actions())
            AddRow(text, CallOf(action), Localized(action.help));
    }
    if (HasArgument(command, ValueKind::kBlockWord)) {
        AddHeading(text, kBlocksHeading);
        for (const std::string& line : Wrapped(BlockList(), kLineWidth - 2))
            text += "  " + line + '\n';
    }
    AddOptions(text, kOptionsHeading, command, OptionScope::kNamed);
    AddOptions(text, kPlayersHeading, command, OptionScope::kPlayers);
    AddOptions(text, kEveryHeading, command, OptionScope::kEvery);
    if (!command.examples.empty()) AddHeading(text, kExamplesHeading);
    for (const ExampleRow& example : command.examples) {
        text += std::string("  sontaro-cli ") + example.line + '\n';
        if (const std::string what = Localized(example.what); !what.empty())
            text += "      " + what + '\n';
    }
    return text;
}

std::string ManualPage(const std::string& version, const std::string& date) {
    std::string page =
        ".TH SONTARO\\-CLI 1 \"" + Roff(date) + "\" \"Sontaro " + version +
        "\" \"User Commands\"\n.SH NAME\nsontaro\\-cli \\- networked video players from "
        "scripts and from cron\n.SH SYNOPSIS\n.B sontaro\\-cli\n.I command\n.RI [ "
        "arguments ]\n.SH DESCRIPTION\n" +
        Roff(English(kPurpose)) + "\n.SH COMMANDS\n";
    for (const CommandRow& command : Commands()) AddManualCommand(page, command);
    page += ".SH BLOCKS\n" + Roff(BlockList()) + "\n";
    page += ".SH OPTIONS\nThose of the players go with every command that has to do with some.\n";
    for (const OptionScope scope : {OptionScope::kPlayers, OptionScope::kEvery})
        for (const OptionRow& option : Options())
            if (option.scope == scope)
                AddManualRow(page, CallOf(option).substr(option.shortName ? 0 : 4),
                             English(option.help));
    page += ".SH EXIT STATUS\n";
    for (const LocalText& code : kCodes) {
        const std::string text = English(code);
        const std::size_t blank = text.find(' ');
        AddManualRow(page, text.substr(0, blank), text.substr(text.find_first_not_of(' ', blank)));
    }
    page += ".SH EXAMPLES\n";
    for (const CommandRow& command : Commands()) AddManualExamples(page, command);
    return page + ".SH SEE ALSO\n.BR sontaro (1),\n.BR sontaro\\-player (1)\n";
}

std::string BashCompletion() {
    std::string commands;
    std::string pattern;
    for (const CommandRow& command : Commands()) {
        commands += std::string(commands.empty() ? "" : " ") + command.name;
        pattern += std::string(pattern.empty() ? "" : "|") + command.name;
    }
    return "# Completion of sontaro-cli for bash.\n"
           "# shellcheck disable=SC2207\n"
           "_sontaro_cli() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command= "
           "i\n"
           "    COMPREPLY=()\n"
           "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
           "        case ${COMP_WORDS[i]} in\n"
           "        " +
           pattern +
           ") command=${COMP_WORDS[i]}; break ;;\n"
           "        esac\n"
           "    done\n"
           "    case $before in\n" +
           CompletionOfValues() +
           "    esac\n"
           "    case $command in\n"
           "        '') COMPREPLY=($(compgen -W '" +
           commands + " --help --version' -- \"$word\")) ;;\n" + CompletionOfCommands() +
           "    esac\n"
           "}\n"
           "complete -F _sontaro_cli sontaro-cli\n";
}

std::string CommandList() {
    std::string list = "| command | what it does |\n|---|---|\n";
    for (const CommandRow& command : Commands()) {
        std::string usage = Usage(command);
        for (std::size_t bar = usage.find('|'); bar != std::string::npos;
             bar = usage.find('|', bar + 2))
            usage.insert(bar, 1, '\\');
        list += "| `" + usage + "` | " + English(command.help) + " |\n";
    }
    return list;
}

}  // namespace sontaro::cli
