#include "cli/player_choice.h"

#include <fmt/printf.h>

#include <algorithm>
#include <set>

#include "base/json.h"
#include "base/json_file.h"
#include "base/path_text.h"
#include "cli/known_players.h"
#include "cli/player_report.h"
#include "devices/device_rules.h"
#include "link/local_adapters.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNobodyNamed = {"请用 -p 指定播放器，或使用 --all。",
                                    "name players with -p, or take --all."};
constexpr LocalText kNobodyListed = {"%s 中没有列出播放器。", "%s lists no players."};
constexpr LocalText kNotTogether = {"%s 和 -p 不能同时使用。", "%s does not go with -p."};
constexpr LocalText kAmbiguous = {"“%s”有多台播放器：%s。", "\"%s\" fits several players: %s."};
constexpr LocalText kSearching = {"正在查找播放器…", "searching for players..."};
constexpr LocalText kNoAddress = {"--local-address 需要一个 IPv4 地址。",
                                  "--local-address takes an IPv4 address."};

constexpr int kRounds = 3;

bool Fits(const PlayerName& name, const DeviceRecord& player) {
    if (!name.ip.empty())
        return player.ip == name.ip && (name.port == 0 || name.port == player.tcpPort);
    return player.id == name.text || player.remarks == name.text;
}

std::vector<DeviceRecord> ThoseThatFit(const PlayerName& name,
                                       const std::vector<DeviceRecord>& players) {
    std::vector<DeviceRecord> fitting;
    std::ranges::copy_if(players, std::back_inserter(fitting),
                         [&](const DeviceRecord& player) { return Fits(name, player); });
    return fitting;
}

class Choice {
   public:
    Choice(const Surroundings& surroundings, Venue venue, Identity identity,
           std::vector<Ipv4Address> range)
        : surroundings_(surroundings),
          venue_(std::move(venue)),
          identity_(identity),
          range_(std::move(range)),
          known_(surroundings.data),
          remarks_(surroundings.config / "remarks.json") {}

    Result<ChosenPlayers> Make() {
        if (const Status read = ReadNames(); !read) return Error{read.reason()};
        if (const Status found = Find(); !found) return Error{found.reason()};
        known_.Take(found_);
        ChosenPlayers chosen;
        chosen.isNamed = !names_.empty();
        if (TakesAll()) chosen.players = found_;
        for (const PlayerName& name : names_)
            if (const Status taken = Take(name, chosen); !taken) return Error{taken.reason()};
        SortDevices(chosen.players, DeviceColumn::kIp, true);
        return chosen;
    }

   private:
    [[nodiscard]] const Invocation& Call() const { return surroundings_.call; }
    [[nodiscard]] bool TakesAll() const {
        return Call().Has(OptionId::kAll) ||
               (names_.empty() && Call().Command()->players == Players::kAllByDefault);
    }

    /// Those of -p, else those of --expect, else those of the venue.
    Status ReadNames() {
        for (const std::string& text : Call().Values(OptionId::kPlayer)) {
            Result<PlayerName> name = ReadPlayerName(text);
            if (!name) return Error{name.reason()};
            names_.push_back(std::move(*name));
        }
        for (const auto& [option, name] :
             {std::pair(OptionId::kAll, "--all"), {OptionId::kExpect, "--expect"}})
            if (Call().Has(option) && !names_.empty())
                return Error{fmt::sprintf(Localized(kNotTogether), name)};
        if (names_.empty() && Call().Has(OptionId::kExpect)) {
            auto expected = OpenExpectedPlayers(PathOfText(Call().Value(OptionId::kExpect)));
            if (!expected) return Error{expected.reason()};
            if (expected->empty())
                return Error{
                    fmt::sprintf(Localized(kNobodyListed), Call().Value(OptionId::kExpect))};
            names_ = std::move(*expected);
        } else if (names_.empty()) {
            names_ = venue_.players;
        }
        if (names_.empty() && !TakesAll()) return Error{Localized(kNobodyNamed)};
        return Done{};
    }

    Status Find() {
        if (!range_.empty()) return Ask({.localAddresses = GivenAddress(), .asked = range_});
        const bool needsBroadcast =
            TakesAll() ||
            std::ranges::any_of(names_, [](const PlayerName& name) { return name.ip.empty(); });
        FindPlan single;
        for (const PlayerName& name : names_) {
            const auto address = ParseIpv4(name.ip);
            if (address && (name.port == 0 || identity_ == Identity::kNeeded))
                single.asked.push_back(*address);
        }
        if (!single.asked.empty()) {
            single.localAddresses = GivenAddress();
            if (Status found = Ask(std::move(single)); !found) return found;
        }
        if (!needsBroadcast) return Done{};
        FindPlan all;
        all.localAddresses = GivenAddress();
        if (all.localAddresses.empty()) all.localAddresses = SavedAddress();
        if (!TakesAll())
            all.isEnough = [this](const auto& answered) { return HaveAllAnswered(answered); };
        return Ask(std::move(all));
    }

    /// Those with addresses have been asked before. Where a name may stand for several players,
    /// one that answers is not enough.
    [[nodiscard]] bool HaveAllAnswered(const std::vector<DeviceRecord>& answered) const {
        return std::ranges::all_of(names_, [&](const PlayerName& name) {
            if (!name.ip.empty()) return true;
            const std::size_t fitting = ThoseThatFit(name, answered).size();
            return fitting > 0 && fitting >= BearersOf(name.text);
        });
    }

    /// How many players are known to have that note or that ID.
    [[nodiscard]] std::size_t BearersOf(const std::string& text) const {
        std::set<std::string> macs = known_.MacsWithId(text);
        const Json::Value& notes = notes_.Root();
        for (auto note = notes.begin(); note != notes.end(); ++note)
            if (note->isObject() && TextOf((*note)["Remarks"]) == text) macs.insert(note.name());
        return macs.size();
    }

    Status Ask(FindPlan plan) {
        surroundings_.output.Progress(Localized(kSearching));
        plan.rounds = kRounds;
        plan.remarks = &remarks_;
        plan.stop = surroundings_.stop;
        auto found = surroundings_.find(plan);
        if (!found) return Error{found.reason()};
        for (DeviceRecord& player : *found)
            if (std::ranges::none_of(
                    found_, [&](const DeviceRecord& other) { return other.IsSameDevice(player); }))
                found_.push_back(std::move(player));
        return Done{};
    }

    [[nodiscard]] std::vector<std::string> GivenAddress() const {
        const std::string given = Call().Value(OptionId::kLocalAddress);
        if (!given.empty()) return {given};
        return venue_.localAddress.empty() ? std::vector<std::string>()
                                           : std::vector{venue_.localAddress};
    }

    /// The one that the windows have served with; one that is no longer the machine's says nothing.
    [[nodiscard]] std::vector<std::string> SavedAddress() const {
        const JsonFile preferences(surroundings_.config / "preferences.json");
        const std::string saved = TextOf(preferences.Root()[kLocalAddressKey]);
        return !saved.empty() && IsLocalAddress(saved) ? std::vector{saved}
                                                       : std::vector<std::string>();
    }

    Status Take(const PlayerName& name, ChosenPlayers& chosen) {
        std::vector<DeviceRecord> fitting = ThoseThatFit(name, found_);
        if (fitting.size() > 1) return Ambiguous(name, fitting);
        if (fitting.empty()) {
            if (auto unheard = Unheard(name)) fitting.push_back(std::move(*unheard));
        }
        if (fitting.empty()) {
            chosen.missing.push_back(name.text);
            return Done{};
        }
        const auto isSame = [&](const DeviceRecord& other) {
            return other.ip == fitting[0].ip && other.tcpPort == fitting[0].tcpPort;
        };
        if (std::ranges::none_of(chosen.players, isSame)) chosen.players.push_back(fitting[0]);
        return Done{};
    }

    static Error Ambiguous(const PlayerName& name, const std::vector<DeviceRecord>& players) {
        std::string list;
        for (const DeviceRecord& player : players)
            list += (list.empty() ? "" : "; ") + NameOf(player) + " " + player.mac;
        return Error{fmt::sprintf(Localized(kAmbiguous), name.text, list)};
    }

    /// A player that has not answered, or was not asked, as far as its address and port are known.
    [[nodiscard]] std::optional<DeviceRecord> Unheard(const PlayerName& name) const {
        const auto address = ParseIpv4(name.ip);
        if (!address) return std::nullopt;
        std::optional<DeviceRecord> player = known_.At(*address);
        if (player && (name.port == 0 || name.port == player->tcpPort)) {
            remarks_.ApplyTo(*player);
            player->silent = true;
            return player;
        }
        if (name.port == 0) return std::nullopt;
        player.emplace();
        player->ip = name.ip;
        player->tcpPort = name.port;
        player->silent = true;
        return player;
    }

    const Surroundings& surroundings_;
    const Venue venue_;
    const Identity identity_;
    std::vector<Ipv4Address> range_;
    KnownPlayers known_;
    const DeviceRemarks remarks_;
    const JsonFile notes_{surroundings_.config / "remarks.json"};
    std::vector<PlayerName> names_;
    std::vector<DeviceRecord> found_;
};

}  // namespace

Result<Venue> VenueOf(const Surroundings& surroundings) {
    const Invocation& call = surroundings.call;
    if (!call.Has(OptionId::kVenue)) return Venue();
    return OpenVenue(surroundings.data, call.Value(OptionId::kVenue));
}

Result<ChosenPlayers> ChoosePlayers(const Surroundings& surroundings, Identity identity,
                                    std::vector<Ipv4Address> range) {
    const std::string local = surroundings.call.Value(OptionId::kLocalAddress);
    if (surroundings.call.Has(OptionId::kLocalAddress) && !ParseIpv4(local))
        return Error{Localized(kNoAddress)};
    Result<Venue> venue = VenueOf(surroundings);
    if (!venue) return Error{venue.reason()};
    return Choice(surroundings, std::move(*venue), identity, std::move(range)).Make();
}

}  // namespace sontaro::cli
