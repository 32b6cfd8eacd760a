#include <fmt/printf.h>

#include "cli/commands.h"
#include "cli/exit_code.h"
#include "cli/player_runs.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNoRange = {"“%s”不是地址范围（如 192.168.1.0/24）。",
                                "\"%s\" is no range of addresses, such as 192.168.1.0/24."};

constexpr LocalText kVersionHeading = {"版本", "version"};
constexpr LocalText kRemarkHeading = {"备注", "remark"};

/// The codes that there are: 1 to 9 outputs, or one input and 1 to 9 outputs in the tens.
void AddChannels(Json::Value& object, std::uint16_t code) {
    const bool hasInput = code > 9 && code % 10 == 1;
    const int outputs = hasInput ? code / 10 : code;
    if (outputs < 1 || outputs > 9) return;
    object["inputs"] = hasInput ? 1 : 0;
    object["outputs"] = outputs;
}

Json::Value FoundObject(const DeviceRecord& player) {
    Json::Value object = ObjectOf(player);
    object["version"] = fmt::sprintf("%d.%d.%d", player.versionWord >> 12,
                                     player.versionWord >> 8 & 0xF, player.versionWord >> 4 & 0xF);
    if (player.fpgaVersion != 0) object["fpga"] = player.fpgaVersion;
    AddChannels(object, player.channelCode);
    object["versionText"] = player.versionText;
    if (player.sharesAddress) object["sharesAddress"] = true;
    return object;
}

void Tell(const Surroundings& surroundings, const std::vector<DeviceRecord>& players) {
    CellTable table(
        {"IP", "TCP", "MAC", "ID", Localized(kVersionHeading), Localized(kRemarkHeading)});
    for (const DeviceRecord& player : players) {
        if (surroundings.output.IsJson()) surroundings.output.Object(FoundObject(player));
        table.Add({player.ip, std::to_string(player.tcpPort), player.mac, player.id,
                   player.versionText, player.remarks});
    }
    if (!surroundings.output.IsJson()) surroundings.output.Table(table);
}

}  // namespace

int RunFind(const Surroundings& surroundings) {
    if (const auto settings = RunSettingsOf(surroundings); !settings)
        return TellWrongUse(surroundings, settings.reason());
    std::vector<Ipv4Address> range;
    if (const std::string text = surroundings.call.Argument(0); !text.empty()) {
        auto addresses = AddressesIn(text);
        if (!addresses) return TellWrongUse(surroundings, fmt::sprintf(Localized(kNoRange), text));
        range = std::move(*addresses);
    }
    auto chosen = ChoosePlayers(surroundings, Identity::kNeeded, std::move(range));
    if (!chosen) return TellWrongUse(surroundings, chosen.reason());
    // Where a player was once does not say that it is there.
    for (const DeviceRecord& player : chosen->players)
        if (player.silent)
            chosen->missing.push_back(player.ip + ':' + std::to_string(player.tcpPort));
    std::erase_if(chosen->players, [](const DeviceRecord& player) { return player.silent; });
    Tell(surroundings, chosen->players);
    TellMissing(surroundings, *chosen);
    if (const auto end = EndWithoutPlayers(surroundings, *chosen)) return *end;
    return chosen->missing.empty() ? kAllWell : kSomeFailed;
}

}  // namespace sontaro::cli
