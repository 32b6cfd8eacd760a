#include "cli/invocation.h"

#include <fmt/printf.h>

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/nearest_word.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kUnknownCommand = {"没有命令 %s。", "there is no command %s."};
constexpr LocalText kUnknownOption = {"没有选项 %s。", "there is no option %s."};
constexpr LocalText kMeant = {"是否想输入 %s？", "Did you mean %s?"};
constexpr LocalText kNeedsValue = {"%s 需要一个值。", "%s needs a value."};
constexpr LocalText kTakesNoValue = {"%s 不带值。", "%s takes no value."};
constexpr LocalText kDoesNotGo = {"%s 不能用于 %s。", "%s does not go with %s."};
constexpr LocalText kGivenTwice = {"%s 重复了。", "%s is given twice."};
constexpr LocalText kMissing = {"缺少 %s。", "%s is missing."};
constexpr LocalText kTooMany = {"多余的参数 %s。", "there is no use for %s."};
constexpr LocalText kNoBlock = {"没有设置块 %s。", "there is no block %s."};
constexpr LocalText kNoAction = {"control 没有动作 %s。", "control has no action %s."};

template <class... Values>
Error Complaint(const LocalText& text, const Values&... values) {
    return Error{fmt::sprintf(Localized(text), values...)};
}

/// The complaint, and what of `words` was probably meant.
Error ComplaintAbout(const LocalText& text, const std::string& typed,
                     const std::vector<std::string>& words) {
    Error complaint = Complaint(text, typed);
    if (const std::string meant = NearestWord(typed, words); !meant.empty())
        complaint.reason += " " + fmt::sprintf(Localized(kMeant), meant);
    return complaint;
}

template <class Rows>
std::vector<std::string> NamesOf(const Rows& rows) {
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const auto& row : rows) names.emplace_back(row.name);
    return names;
}

std::string NamesForParser(const OptionRow& option) {
    return option.shortName ? std::string(option.shortName) + "," + option.name : option.name;
}

/// The library's own complaint begins with the option that it is about, and is in English.
Error ComplaintOf(const CLI::ParseError& error) {
    const std::string text = error.what();
    for (const OptionRow& row : Options()) {
        const std::string name = row.name;
        if (text.starts_with(name + ':')) return Complaint(kNeedsValue, name);
        if (text.starts_with(name.substr(2) + ' ')) return Complaint(kTakesNoValue, name);
    }
    return Error{text};
}

/// The library's parser, with all options of the table wherever they stand. Its own arguments would
/// take some texts apart: they are what it leaves.
class Parser {
   public:
    Parser() {
        app_.set_help_flag();
        app_.allow_windows_style_options(false);  // "/" begins paths
        app_.allow_extras();
        app_.require_subcommand(0, 1);
        for (const OptionRow& row : Options()) AddOption(row);
        for (const CommandRow& row : Commands())
            app_.add_subcommand(row.name)->fallthrough()->set_help_flag();
    }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    void Parse(std::vector<std::string> arguments) {
        std::ranges::reverse(arguments);  // as the library takes them
        app_.parse(std::move(arguments));
    }
    [[nodiscard]] const CommandRow* Command() const {
        const auto commands = app_.get_subcommands();
        return commands.empty() ? nullptr : FindCommand(commands.front()->get_name());
    }
    [[nodiscard]] std::map<OptionId, std::vector<std::string>> GivenOptions() const {
        std::map<OptionId, std::vector<std::string>> given;
        for (const auto& [id, option] : options_)
            if (option->count() > 0) given.emplace(id, option->results());
        return given;
    }
    /// What is no option that there is, in its order.
    [[nodiscard]] std::vector<std::string> Remaining() const { return app_.remaining(true); }

   private:
    void AddOption(const OptionRow& row) {
        CLI::Option* option =
            row.value ? app_.add_option(NamesForParser(row)) : app_.add_flag(NamesForParser(row));
        if (row.value)
            option->allow_extra_args(false);  // it must not swallow what follows
        else
            option->disable_flag_override();
        option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        options_.emplace(row.id, option);
    }

    CLI::App app_;
    std::map<OptionId, CLI::Option*> options_;  // the library's own
};

Error NoCommand(const std::string& typed) {
    return ComplaintAbout(kUnknownCommand, typed, NamesOf(Commands()));
}

Error NoOption(const std::string& typed, const CommandRow* command) {
    std::vector<OptionRow> taken;
    std::ranges::copy_if(Options(), std::back_inserter(taken), [&](const OptionRow& option) {
        return command == nullptr || Takes(*command, option);
    });
    return ComplaintAbout(kUnknownOption, typed.substr(0, typed.find('=')), NamesOf(taken));
}

Status CheckWord(ValueKind kind, const std::string& text) {
    const bool isAction = kind == ValueKind::kActionWord;
    if (!isAction && kind != ValueKind::kBlockWord) return Done{};
    const std::vector<std::string> words = isAction ? NamesOf(Actions()) : BlockWords();
    if (std::ranges::find(words, text) != words.end()) return Done{};
    return ComplaintAbout(isAction ? kNoAction : kNoBlock, text, words);
}

}  // namespace

Result<Invocation> Invocation::Parse(const std::vector<std::string>& arguments) {
    const auto mark = std::ranges::find(arguments, "--");  // behind it there are no options
    Parser parser;
    try {
        parser.Parse({arguments.begin(), mark});
    } catch (const CLI::ParseError& error) {
        return ComplaintOf(error);
    }
    Invocation invocation;
    invocation.command_ = parser.Command();
    invocation.options_ = parser.GivenOptions();
    for (std::string& rest : parser.Remaining()) {
        if (rest.size() > 1 && rest[0] == '-') return NoOption(rest, invocation.command_);
        invocation.arguments_.push_back(std::move(rest));
    }
    if (mark != arguments.end())
        invocation.arguments_.insert(invocation.arguments_.end(), mark + 1, arguments.end());
    if (const Status checked = invocation.Check(); !checked) return Error{checked.reason()};
    return invocation;
}

Status Invocation::Check() const {
    for (const auto& [id, values] : options_) {
        const OptionRow& row = RowOf(id);
        if (command_ && !Takes(*command_, row))
            return Complaint(kDoesNotGo, row.name, command_->name);
        if (!row.value) continue;
        if (!row.mayRepeat && values.size() > 1) return Complaint(kGivenTwice, row.name);
        // It stands for the next option, then, and its own value was forgotten.
        const auto isOption = [](const std::string& value) { return value.starts_with("--"); };
        if (std::ranges::any_of(values, isOption)) return Complaint(kNeedsValue, row.name);
    }
    if (command_) return CheckArguments();
    return arguments_.empty() ? Status(Done{}) : NoCommand(arguments_.front());
}

Status Invocation::CheckArguments() const {
    for (const OptionId id : command_->required)
        if (!Has(id)) return Complaint(kMissing, RowOf(id).name);
    const auto rows = command_->arguments;
    for (std::size_t i = arguments_.size(); i < rows.size(); ++i)
        if (rows[i].isRequired) return Complaint(kMissing, rows[i].name);
    for (std::size_t i = 0; i < arguments_.size(); ++i) {
        if (rows.empty() || (i >= rows.size() && !rows.back().mayRepeat))
            return Complaint(kTooMany, arguments_[i]);
        Status word = CheckWord(rows[std::min(i, rows.size() - 1)].kind, arguments_[i]);
        if (!word) return word;
    }
    return Done{};
}

bool AsksFor(OptionId id, const std::vector<std::string>& arguments) {
    const OptionRow& row = RowOf(id);
    for (const std::string& argument : arguments) {
        if (argument == "--") return false;
        if (argument == row.name || (row.shortName && argument == row.shortName)) return true;
    }
    return false;
}

}  // namespace sontaro::cli
