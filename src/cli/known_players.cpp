#include "cli/known_players.h"

#include <algorithm>

#include "base/json.h"

namespace sontaro::cli {

KnownPlayers::KnownPlayers(const std::filesystem::path& dataFolder)
    : file_(dataFolder / "players.json") {}

std::optional<DeviceRecord> KnownPlayers::At(const Ipv4Address& address) const {
    const Json::Value& entry = file_.Root()[FormatIpv4(address)];
    if (!entry.isObject() || !entry["port"].isInt()) return std::nullopt;
    const int port = entry["port"].asInt();
    if (port < 1 || port > UINT16_MAX) return std::nullopt;
    DeviceRecord player;
    player.ip = FormatIpv4(address);
    player.tcpPort = static_cast<std::uint16_t>(port);
    player.id = TextOf(entry["id"]);
    player.mac = TextOf(entry["mac"]);
    return player;
}

std::set<std::string> KnownPlayers::MacsWithId(const std::string& id) const {
    std::set<std::string> macs;
    for (const Json::Value& entry : file_.Root())
        if (entry.isObject() && TextOf(entry["id"]) == id) macs.insert(TextOf(entry["mac"]));
    return macs;
}

void KnownPlayers::Take(const std::vector<DeviceRecord>& found) {
    const auto isNew = [&](const DeviceRecord& player) {
        const auto address = ParseIpv4(player.ip);
        const auto known = address ? At(*address) : std::nullopt;
        return !known || known->tcpPort != player.tcpPort || known->id != player.id ||
               known->mac != player.mac;
    };
    if (std::ranges::none_of(found, isNew)) return;
    static_cast<void>(file_.Update([&](Json::Value& root) {
        for (const DeviceRecord& player : found) {
            Json::Value& entry = root[player.ip] = Json::Value(Json::objectValue);
            entry["port"] = player.tcpPort;
            entry["id"] = player.id;
            entry["mac"] = player.mac;
        }
    }));
}

}  // namespace sontaro::cli
