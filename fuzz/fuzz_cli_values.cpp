// Arguments, and texts for a terminal, of anything.
#include <algorithm>
#include <cstdlib>

#include "base/bytes.h"
#include "base/encoding.h"
#include "base/hex_command.h"
#include "cli/cli_values.h"
#include "cli/display_width.h"
#include "cli/invocation.h"
#include "session/player_search.h"
#include "venue/venue_file.h"

namespace sontaro::cli {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

void CheckKeyValue(std::string_view text) {
    const auto edit = ParseKeyValue(text);
    if (!edit) return;
    Expect(!edit->key.empty() && DecodeUtf8(edit->key) == edit->key);
    Expect(ParseKeyValue(KeyValueText(*edit)) == edit);
}

void CheckNumbers(std::string_view text) {
    constexpr std::chrono::seconds kMost{600};
    if (const auto count = ParseCount(text, 1, 9)) Expect(*count >= 1 && *count <= 9);
    if (const auto time = ParseSeconds(text, kMost)) Expect(time->count() > 0 && *time <= kMost);
}

void CheckAddresses(std::string_view text) {
    constexpr std::size_t kMost = 65'536;
    if (const auto range = AddressesIn(text)) {
        Expect(!range->empty() && range->size() <= kMost);
        Expect(std::ranges::is_sorted(*range));
    }
    if (const auto name = ReadPlayerName(text))
        Expect(name->ip.empty() || ParseIpv4(name->ip).has_value());
}

void CheckCommand(const std::string& text) {
    for (const auto& node :
         {ParseCommandToSend(text, {"00"}), ParseCommandToSend("232:0", {text, text})})
        if (node) {
            Expect(IsTimelinePort(node->port) && IsHexCommand(node->command));
            Expect(IsNetworkPort(node->port) == ParseIpv4(node->ip).has_value());
        }
}

/// Every line is an argument.
void CheckCall(std::string_view text) {
    std::vector<std::string> arguments;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        arguments.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    const auto call = Invocation::Parse(arguments);
    if (!call) return Expect(!call.reason().empty());
    Expect(call->Command() || call->Arguments().empty());
}

void CheckDisplay(std::string_view text) {
    constexpr std::size_t kColumns = 20;
    const std::string shown = Harmless(text);
    Expect(DecodeUtf8(shown) == shown && shown.find_first_of("\x1B\r\n") == std::string::npos);
    Expect(DisplayWidth(FilledUp(shown, kColumns)) >= kColumns);
    std::string joined;
    for (const std::string& line : Wrapped(shown, kColumns)) joined += line;
    std::erase(joined, ' ');
    std::string blankless = shown;
    std::erase(blankless, ' ');
    Expect(joined == blankless);
}

}  // namespace
}  // namespace sontaro::cli

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = sontaro::AsText({data, size});
    sontaro::cli::CheckKeyValue(text);
    sontaro::cli::CheckNumbers(text);
    sontaro::cli::CheckAddresses(text);
    sontaro::cli::CheckCommand(std::string(text));
    sontaro::cli::CheckCall(text);
    sontaro::cli::CheckDisplay(text);
    return 0;
}
