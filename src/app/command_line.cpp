#include "app/command_line.h"

#include <charconv>

#include "base/path_text.h"
#include "link/socket.h"

namespace sontaro {

namespace {

constexpr int kDefaultDemoPlayers = 3;
constexpr int kMostDemoPlayers = 200;

/// One option split at "=" or completed by the argument after it.
struct Option {
    std::string name;
    std::optional<std::string> value;
};

Status SetDemo(CommandLine& line, const Option& option) {
    int count = kDefaultDemoPlayers;
    if (option.value) {
        const std::string& text = *option.value;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
        if (error != std::errc() || end != text.data() + text.size() || count < 1 ||
            count > kMostDemoPlayers)
            return Error{"--demo takes a number from 1 to " + std::to_string(kMostDemoPlayers)};
    }
    line.demoPlayers = count;
    return Done{};
}

Status SetLocalAddress(CommandLine& line, const Option& option) {
    if (!ParseIpv4(*option.value)) return Error{"--local-address takes an IPv4 address"};
    line.localAddress = *option.value;
    return Done{};
}

Status SetLanguageOption(CommandLine& line, const Option& option) {
    if (*option.value != "zh" && *option.value != "en") return Error{"--language takes zh or en"};
    line.language = *option.value == "zh" ? Language::kChinese : Language::kEnglish;
    return Done{};
}

Status SetTour(CommandLine& line, const Option& option) {
    line.tour = PathOfText(*option.value);
    return Done{};
}

Status SetHelp(CommandLine& line, const Option&) {
    line.help = true;
    return Done{};
}

enum class Value { kNone, kOptional, kRequired };

struct OptionRule {
    const char* name;
    Value value;
    Status (*apply)(CommandLine&, const Option&);
    const char* help;
};

constexpr OptionRule kOptions[] = {
    {"--demo", Value::kOptional, SetDemo,
     "  --demo[=N]           run against N (default 3) simulated players inside the program"},
    {"--local-address", Value::kRequired, SetLocalAddress,
     "  --local-address A    offer and select the local address A for finding players"},
    {"--language", Value::kRequired, SetLanguageOption,
     "  --language zh|en     user interface in Chinese or English, for this run"},
    {"--tour", Value::kRequired, SetTour,
     "  --tour DIR           with --demo: press every control, leave pictures in DIR, exit"},
    {"--help", Value::kNone, SetHelp, "  --help               show this text"},
};

const OptionRule* FindRule(const std::string& name) {
    for (const OptionRule& rule : kOptions)
        if (name == rule.name) return &rule;
    return nullptr;
}

Option SplitOption(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos) return {argument, std::nullopt};
    return {argument.substr(0, equals), argument.substr(equals + 1)};
}

}  // namespace

Result<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        Option option = SplitOption(arguments[i]);
        const OptionRule* rule = FindRule(option.name);
        if (!rule) return Error{"unknown option " + arguments[i]};
        if (rule->value == Value::kRequired && !option.value && i + 1 < arguments.size())
            option.value = arguments[++i];
        if (rule->value == Value::kRequired && (!option.value || option.value->empty()))
            return Error{option.name + " needs a value"};
        if (rule->value == Value::kNone && option.value)
            return Error{option.name + " takes no value"};
        if (const Status applied = rule->apply(line, option); !applied)
            return Error{applied.reason()};
    }
    if (!line.tour.empty() && !line.demoPlayers) return Error{"--tour goes with --demo"};
    return line;
}

std::string CommandLineHelp() {
    std::string text = "Usage: sontaro [options]\n";
    for (const OptionRule& rule : kOptions) text += std::string(rule.help) + "\n";
    return text;
}

}  // namespace sontaro
