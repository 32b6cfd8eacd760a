#include "simulator/player_arguments.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/path_text.h"
#include "simulator/number.h"

namespace sontaro::simulator {

namespace {

constexpr std::uint16_t kDefaultPort = 9000;
constexpr std::size_t kLargestCount = 100'000;

/// Takes over an option's value; false when the value is impossible.
using Setter = bool (*)(PlayerArguments& arguments, std::string_view value);

struct OptionRow {
    std::string_view name;
    std::string_view value;  ///< what stands for the value in the help; empty: there is none
    std::string_view help;
    Setter set;
};

bool SetCount(PlayerArguments& arguments, std::string_view value) {
    const auto count = ParseNumber<std::size_t>(value, 1, kLargestCount);
    if (count) arguments.lineUp.count = *count;
    return count.has_value();
}

bool SetBaseAddress(PlayerArguments& arguments, std::string_view value) {
    const auto address = ParseIpv4(std::string(value));
    if (address) arguments.lineUp.baseAddress = *address;
    return address.has_value();
}

bool SetPort(PlayerArguments& arguments, std::string_view value) {
    const auto port = ParseNumber<std::uint16_t>(value, 0, UINT16_MAX);
    if (port) arguments.lineUp.port = *port;
    return port.has_value();
}

bool SetName(PlayerArguments& arguments, std::string_view value) {
    arguments.lineUp.name = value;
    return !value.empty();
}

bool SetStore(PlayerArguments& arguments, std::string_view value) {
    arguments.lineUp.store = PathOfText(value);
    return !value.empty();
}

bool SetSchema(PlayerArguments& arguments, std::string_view value) {
    arguments.lineUp.schema = PathOfText(value);
    return !value.empty();
}

bool SetSerialScript(PlayerArguments& arguments, std::string_view value) {
    arguments.lineUp.serialScript = PathOfText(value);
    return !value.empty();
}

bool SetRestartTime(PlayerArguments& arguments, std::string_view value) {
    const auto time = ParseSeconds(value);
    if (time) arguments.lineUp.restartTime = *time;
    return time.has_value();
}

bool SetSpacing(PlayerArguments& arguments, std::string_view value) {
    constexpr int kMost = 1000;
    const auto milliseconds = ParseNumber<int>(value, 0, kMost);
    if (milliseconds) arguments.lineUp.spacing = std::chrono::milliseconds(*milliseconds);
    return milliseconds.has_value();
}

bool SetLog(PlayerArguments& arguments, std::string_view value) {
    arguments.log = PathOfText(value);
    return !value.empty();
}

bool SetFaults(PlayerArguments& arguments, std::string_view value) {
    constexpr std::size_t kMostPlayers = 255;
    const std::size_t colon = value.find(':');
    const bool isForOne = colon != std::string_view::npos;
    const auto player = ParseNumber<std::size_t>(value.substr(0, colon), 1, kMostPlayers);
    if (isForOne && !player) return false;
    const auto faults = ParseFaultScript(isForOne ? value.substr(colon + 1) : value);
    if (!faults) return false;
    (isForOne ? arguments.lineUp.ownFaults[*player - 1] : arguments.lineUp.faults) = *faults;
    return true;
}

/// "2,1": the first player has two outputs, all others have one.
bool SetOutputs(PlayerArguments& arguments, std::string_view value) {
    std::vector<int> outputs;
    for (bool isLast = false; !isLast;) {
        const std::size_t comma = std::min(value.find(','), value.size());
        const auto count = ParseNumber<int>(value.substr(0, comma), 1, 2);
        if (!count) return false;
        outputs.push_back(*count);
        isLast = comma == value.size();
        value.remove_prefix(std::min(comma + 1, value.size()));
    }
    arguments.lineUp.outputs = std::move(outputs);
    return true;
}

bool SetResolution(PlayerArguments& arguments, std::string_view value) {
    const std::size_t times = std::min(value.find('x'), value.size());
    const auto width = ParseNumber<int>(value.substr(0, times), 0, UINT16_MAX);
    const auto height =
        ParseNumber<int>(value.substr(std::min(times + 1, value.size())), 0, UINT16_MAX);
    if (!width || !height) return false;
    arguments.lineUp.width = *width;
    arguments.lineUp.height = *height;
    return true;
}

bool SetOlderNames(PlayerArguments& arguments, std::string_view) {
    return arguments.lineUp.olderNames = true;
}

bool SetHelp(PlayerArguments& arguments, std::string_view) { return arguments.help = true; }

constexpr OptionRow kOptions[] = {
    {"--count", "N", "number of players (1)", SetCount},
    {"--base-address", "IP", "the first player's address, the others follow (127.0.0.2)",
     SetBaseAddress},
    {"--port", "PORT", "TCP port of each player, 0 for any free one (9000)", SetPort},
    {"--name", "TEXT", "start of the IDs, up to 12 bytes with the number (SIMPLAYER)", SetName},
    {"--store", "DIR", "keep each player's state in a file in DIR, and its videos in a folder",
     SetStore},
    {"--schema", "FILE",
     "serve FILE, whatever it holds, as the schema of serial ports,\n"
     "subtitles, touch and Cave",
     SetSchema},
    {"--serial-script", "FILE",
     "let the serial ports receive what the lines of FILE say, SECONDS HEX,\n"
     "such as 2.5 A5 01 02: so many seconds after the start",
     SetSerialScript},
    {"--restart-time", "SECONDS", "how long a player is away that restarts (3)", SetRestartTime},
    {"--spacing", "MS",
     "least time between two packets of a player (40); tools may take those\n"
     "that arrive together for one",
     SetSpacing},
    {"--older-names", "", "answer command 10 in its form 1 with the layouts instead of the videos",
     SetOlderNames},
    {"--outputs", "LIST",
     "outputs of each player in a video wall, 1 or 2: 2,1 is two of the first\n"
     "player and one of all others (as its model has)",
     SetOutputs},
    {"--resolution", "WxH", "pixels of every output (1920x1080)", SetResolution},
    {"--log", "FILE", "write a line per event to FILE", SetLog},
    {"--fault", "SCRIPT",
     "faults of every player, separated by commas: refuse, silent, drop,\n"
     "not-supported, garbage, oversize, bad-json (settings end halfway),\n"
     "no-ack (saves are not answered), no-second-part (of the player's\n"
     "data), bad-list (of videos), refuse-saves (as not supported),\n"
     "empty-timeline, changed-timeline (read without its last node),\n"
     "no-return (from a restart), bad-checksum, empty-block, no-correction,\n"
     "other-resolution (half of it, in the block of the screen split),\n"
     "hang-up (after every reply), no-second-query (of the free space),\n"
     "withhold=N, withhold-once=N (the N-th chunk of a video is not\n"
     "acknowledged, 0: its announcement), lose-chunk=N (with the link),\n"
     "restart-at=N (the N-th chunk of all restarts the player),\n"
     "disk-full=MIB (of videos fill the disk: no chunk is acknowledged),\n"
     "store-short (videos are kept without their last byte), slow=BYTES\n"
     "(read in a second), delay-ack=500ms (of an upload alone),\n"
     "result=N (of reading the control protocol), items=N (in schemas),\n"
     "unread=BLOCK (settings whose reading is not answered),\n"
     "unsupported=BLOCK, refused=BLOCK, cut=BYTES, close-after=BYTES,\n"
     "delay=500ms;\n"
     "2:SCRIPT is for the second player alone, instead of those of all",
     SetFaults},
    {"--help", "", "show this text", SetHelp},
};

}  // namespace

std::string PlayerHelp() {
    constexpr int kColumn = 24;
    std::string text = "sontaro-player: simulated video players on this machine\n\n";
    for (const OptionRow& row : kOptions) {
        std::string help(row.help);
        for (std::size_t end = help.find('\n'); end < help.size(); end = help.find('\n', end + 1))
            help.insert(end + 1, kColumn + 2, ' ');
        text +=
            fmt::format("  {:<{}}{}\n", fmt::format("{} {}", row.name, row.value), kColumn, help);
    }
    text +=
        "\nA line of hexadecimal bytes on the standard input, such as A5 01 02, arrives at the\n"
        "serial port of the first player; 2: A5 01 02 at that of the second.\n";
    return text;
}

Result<PlayerArguments> ParsePlayerArguments(const std::vector<std::string_view>& arguments) {
    PlayerArguments parsed;
    parsed.lineUp.port = kDefaultPort;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const auto row = std::ranges::find(kOptions, *argument, &OptionRow::name);
        if (row == std::end(kOptions)) return Error{fmt::format("unknown option {}", *argument)};
        std::string_view value;
        if (!row->value.empty()) {
            if (++argument == arguments.end())
                return Error{fmt::format("{} needs a value", row->name)};
            value = *argument;
        }
        if (!row->set(parsed, value))
            return Error{fmt::format("{} cannot be \"{}\"", row->name, value)};
    }
    return parsed;
}

}  // namespace sontaro::simulator
