#include "simulator/serial_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/hex_command.h"
#include "simulator/number.h"
#include "simulator/player_state.h"

namespace sontaro::simulator {

namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::optional<Bytes> ParseSerialBytes(std::string_view text) {
    const auto command = NormalizedHexCommand(text);
    if (!command || command->empty() || command->size() / 2 > kMostSerialBytes) return std::nullopt;
    return BytesOfHexCommand(*command);
}

std::optional<SerialEvent> ParseEvent(std::string_view line) {
    const std::size_t end = std::min(line.find_first_of(kBlanks), line.size());
    const auto time = ParseSeconds(line.substr(0, end));
    auto bytes = ParseSerialBytes(line.substr(end));
    if (!time || !bytes) return std::nullopt;
    return SerialEvent{*time, std::move(*bytes)};
}

}  // namespace

Result<std::vector<SerialEvent>> ParseSerialScript(std::string_view text) {
    std::vector<SerialEvent> script;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = Trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == '#') continue;
        auto event = ParseEvent(line);
        if (!event) return Error{fmt::format("line {} is not SECONDS HEX", number)};
        script.push_back(std::move(*event));
    }
    std::ranges::stable_sort(script, {}, &SerialEvent::time);
    return script;
}

std::optional<SerialLine> ParseSerialLine(std::string_view line, std::size_t players) {
    const std::size_t colon = line.find(':');
    std::size_t place = 1;
    if (colon != std::string_view::npos) {
        const auto number = ParseNumber<std::size_t>(Trimmed(line.substr(0, colon)), 1, players);
        if (!number) return std::nullopt;
        place = *number;
        line.remove_prefix(colon + 1);
    }
    auto bytes = ParseSerialBytes(line);
    if (!bytes) return std::nullopt;
    return SerialLine{place - 1, std::move(*bytes)};
}

}  // namespace sontaro::simulator
