#include "simulator/player_group.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/file.h"
#include "link/discovery.h"

namespace sontaro::simulator {

namespace {

constexpr std::size_t kMostPlayers = 200;
constexpr std::size_t kLongestDatagram = 0x10000;

struct Model {
    std::uint16_t versionWord;
    std::uint16_t fpgaVersion;
    std::uint16_t channelCode;
};

constexpr Model kModels[] = {
    {0x1230, 0, 1}, {0x2140, 12, 41}, {0x1260, 0, 2}, {0x2300, 15, 11}, {0x2140, 12, 4},
};

PlayerIdentity IdentityAt(std::size_t index, std::string id) {
    const Model& model = kModels[index % std::size(kModels)];
    PlayerIdentity identity;
    identity.id = std::move(id);
    identity.versionWord = model.versionWord;
    identity.fpgaVersion = model.fpgaVersion;
    identity.channelCode = model.channelCode;
    return identity;
}

std::string IdAt(const LineUpOptions& options, std::size_t index) {
    if (options.count == 1 && !options.name.empty()) return options.name;
    const std::string prefix = options.name.empty() ? "SIMPLAYER" : options.name;
    return prefix + std::to_string(index + 1);
}

/// The wall's part of a player. The older models tell it in the shorter form.
Screens ScreensAt(const LineUpOptions& options, std::size_t index) {
    constexpr std::uint16_t kFirstLongBlock = 0x2000;
    const PlayerIdentity identity = IdentityAt(index, "");
    const int outputs =
        identity.channelCode < 10 ? identity.channelCode : identity.channelCode / 10;
    Screens screens;
    screens.outputs = std::min(outputs, 2);
    if (!options.outputs.empty())
        screens.outputs = options.outputs[std::min(index, options.outputs.size() - 1)];
    screens.corrections = screens.outputs;
    screens.width = options.width;
    screens.height = options.height;
    screens.shortBlock = identity.versionWord < kFirstLongBlock;
    return screens;
}

PlayerOptions PlayerAt(const LineUpOptions& options, std::size_t index) {
    PlayerOptions player;
    player.address = options.baseAddress;
    player.address.octets[3] = static_cast<std::uint8_t>(player.address.octets[3] + index);
    player.port = options.port;
    player.identity = IdentityAt(index, IdAt(options, index));
    if (!options.store.empty())
        player.file = options.store / (FormatIpv4(player.address) + ".json");
    if (!options.store.empty()) player.videoFolder = options.store / FormatIpv4(player.address);
    player.olderNames = options.olderNames;
    player.player = static_cast<std::int64_t>(index);
    const auto own = options.ownFaults.find(index);
    player.faults = own == options.ownFaults.end() ? options.faults : own->second;
    player.screens = ScreensAt(options, index);
    player.restartTime = options.restartTime;
    player.pacing.spacing = options.spacing;
    player.log = options.log;
    return player;
}

Status Check(const LineUpOptions& options) {
    constexpr std::size_t kLastOctet = 254;
    constexpr std::uint8_t kLoopbackNetwork = 127;
    const auto& octets = options.baseAddress.octets;
    if (options.count < 1 || options.count > kMostPlayers)
        return Error{fmt::format("there can be 1 to {} players", kMostPlayers)};
    if (octets[0] != kLoopbackNetwork)
        return Error{FormatIpv4(options.baseAddress) + " is not an address within 127.0.0.0/8"};
    if (octets[3] < 1 || octets[3] + options.count - 1 > kLastOctet)
        return Error{fmt::format("{} addresses from {} do not end at .{} or before", options.count,
                                 FormatIpv4(options.baseAddress), kLastOctet)};
    const std::string longest = IdAt(options, options.count - 1);
    if (longest.size() > kLongestId)
        return Error{fmt::format("the ID {} is longer than {} bytes", longest, kLongestId)};
    if (!options.ownFaults.empty() && options.ownFaults.rbegin()->first >= options.count)
        return Error{fmt::format("there is no player {}", options.ownFaults.rbegin()->first + 1)};
    return Done{};
}

Status LoadSchema(std::vector<PlayerOptions>& players, const std::filesystem::path& file) {
    const Result<std::string> schema = ReadFile(file);
    if (!schema) return Error{"--schema: " + schema.reason()};
    for (PlayerOptions& player : players) player.schema = *schema;
    return Done{};
}

Status LoadSerialScript(std::vector<PlayerOptions>& players, const std::filesystem::path& file) {
    const Result<std::string> text = ReadFile(file);
    if (!text) return Error{"--serial-script: " + text.reason()};
    const auto script = ParseSerialScript(*text);
    if (!script) return Error{"--serial-script: " + script.reason()};
    for (PlayerOptions& player : players) player.serialScript = *script;
    return Done{};
}

}  // namespace

Result<std::vector<PlayerOptions>> LineUp(const LineUpOptions& options) {
    if (const Status checked = Check(options); !checked) return Error{checked.reason()};
    std::vector<PlayerOptions> players;
    for (std::size_t i = 0; i < options.count; ++i) players.push_back(PlayerAt(options, i));
    Status loaded = Done{};
    if (!options.schema.empty()) loaded = LoadSchema(players, options.schema);
    if (loaded && !options.serialScript.empty())
        loaded = LoadSerialScript(players, options.serialScript);
    if (!loaded) return Error{loaded.reason()};
    return players;
}

PlayerGroup::PlayerGroup(const std::vector<PlayerOptions>& players) {
    for (const PlayerOptions& options : players)
        players_.push_back(std::make_unique<SimulatedPlayer>(options));
}

Status PlayerGroup::Start() {
    Stop();
    Status started = StartPlayers();
    if (started) started = HearBroadcasts();
    if (!started) Stop();
    return started;
}

Status PlayerGroup::StartPlayers() {
    for (const auto& player : players_)
        if (Status started = player->Start(); !started) return started;
    return Done{};
}

Status PlayerGroup::HearBroadcasts() {
    hearing_ = true;
    for (const std::uint16_t port : kDiscoveryPorts) {
        auto socket = std::make_unique<Socket>(Socket::Udp());
        if (!socket->ShareLoopbackAddress() || !socket->BindToBroadcasts(port))
            return Error{fmt::format("cannot hear broadcasts on port {}", port)};
        Socket& shared = *sockets_.emplace_back(std::move(socket));
        if (!threads_.Start([this, &shared] { PassOn(shared); }))
            return Error{"the system has no thread left"};
    }
    return Done{};
}

void PlayerGroup::PassOn(Socket& socket) {
    Bytes buffer(kLongestDatagram);
    Endpoint sender;
    while (hearing_) {
        const std::int64_t count = socket.ReceiveFrom(buffer, sender);
        if (!hearing_ || count <= 0) continue;
        const ByteView datagram = ByteView(buffer).first(static_cast<std::size_t>(count));
        for (const auto& player : players_) player->HearRequest(datagram, sender);
    }
}

void PlayerGroup::Stop() {
    hearing_ = false;
    for (const auto& socket : sockets_) socket->Shutdown();
    threads_.Join();
    sockets_.clear();
    for (const auto& player : players_) player->Stop();
}

}  // namespace sontaro::simulator
