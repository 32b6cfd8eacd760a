#include <fmt/printf.h>

#include <mutex>

#include "base/path_text.h"
#include "cli/block_writes.h"
#include "cli/commands.h"
#include "cli/documents_reading.h"
#include "cli/exit_code.h"
#include "cli/player_runs.h"
#include "venue/compare.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kOnlyFirst = {"只在第一方", "only on the first side"};
constexpr LocalText kOnlySecond = {"只在第二方", "only on the second side"};
constexpr LocalText kNeitherSide = {"两方都没有读到", "read on neither side"};
constexpr LocalText kMore = {"%s %s：另有 %d 处不同", "%s %s: %d more differences"};
constexpr LocalText kOtherForm = {"%s %s：值相同，仅写法不同",
                                  "%s %s: the same values in another form"};
constexpr LocalText kNobodyAsked = {"比较两个备份时不需要播放器。",
                                    "two backups are compared without players."};
constexpr LocalText kSame = {"没有不同。", "nothing differs."};

/// The table or the objects of what differs.
class Differences {
   public:
    explicit Differences(Output& output) : output_(output), table_(Headings()) {}

    /// Whether anything differs.
    bool Tell(const std::vector<PlayerComparison>& players) {
        for (const PlayerComparison& player : players) {
            differs_ = differs_ || !player.IsSame();
            isUncertain_ = isUncertain_ || player.IsUncertain();
            TellPlayer(player);
        }
        if (!output_.IsJson()) {
            output_.Table(table_);
            if (!differs_) output_.Remark(Localized(kSame));
        }
        return differs_;
    }

    /// Whether there is something that cannot be told.
    [[nodiscard]] bool IsUncertain() const { return isUncertain_; }

   private:
    using Sides = BlockComparison::Sides;

    static std::vector<std::string> Headings() {
        std::vector<std::string> headings = ChangeHeadings();
        headings.insert(headings.begin(), "ID");
        return headings;
    }

    void TellPlayer(const PlayerComparison& player) {
        player_ = player.second ? player.second : player.first;
        if (!player.first || !player.second)
            return TellSide("", player.first ? Sides::kFirstOnly : Sides::kSecondOnly);
        for (const BlockComparison& block : player.blocks) {
            if (block.sides == BlockComparison::Sides::kBoth)
                TellBlock(block);
            else
                TellSide(block.kind->name, block.sides, block.why);
        }
    }

    /// Several players may have one ID.
    [[nodiscard]] Json::Value ObjectOfPlayer() const {
        DeviceRecord device;
        device.ip = player_->ip;
        device.tcpPort = player_->port;
        device.id = player_->id;
        device.mac = player_->mac;
        device.remarks = player_->remark;
        return sontaro::cli::ObjectOf(device);
    }

    /// What only one side has: the player, or a block.
    void TellSide(const std::string& block, Sides sides, const std::string& why = {}) {
        const bool isFirst = sides == Sides::kFirstOnly;
        const std::string text = Localized(sides == Sides::kNeither ? kNeitherSide
                                           : isFirst                ? kOnlyFirst
                                                                    : kOnlySecond);
        table_.Add({player_->id, block.empty() ? "-" : block, "-",
                    why.empty() ? text : text + " (" + why + ")", "-", "-"});
        if (!output_.IsJson()) return;
        Json::Value object = ObjectOfPlayer();
        if (!block.empty()) object["block"] = block;
        object["only"] = sides == Sides::kNeither ? "neither" : isFirst ? "first" : "second";
        if (!why.empty()) object["why"] = why;
        output_.Object(object);
    }

    void TellBlock(const BlockComparison& block) {
        if (block.isOtherForm)
            output_.Remark(fmt::sprintf(Localized(kOtherForm), player_->id, block.kind->name));
        for (const RowDifference& row : block.differences) {
            std::vector<std::string> cells = CellsOf(*block.kind, row);
            cells.insert(cells.begin(), player_->id);
            table_.Add(std::move(cells));
            if (!output_.IsJson()) continue;
            Json::Value object = ObjectOf(*block.kind, row);
            const Json::Value known = ObjectOfPlayer();
            for (const std::string& key : known.getMemberNames()) object[key] = known[key];
            output_.Object(object);
        }
        if (block.notListed > 0)
            output_.Remark(
                fmt::sprintf(Localized(kMore), player_->id, block.kind->name, block.notListed));
    }

    Output& output_;
    CellTable table_;
    const VenuePlayer* player_ = nullptr;  // as the second side knows it, if that does
    bool differs_ = false;
    bool isUncertain_ = false;
};

int TellTrouble(const Surroundings& surroundings, const std::string& why) {
    static_cast<void>(TellWrongUse(surroundings, why));
    return kTrouble;
}

int TellResult(const Surroundings& surroundings,
               const Result<std::vector<PlayerComparison>>& comparison, bool isWhole) {
    if (!comparison) return TellTrouble(surroundings, comparison.reason());
    Differences differences(surroundings.output);
    const bool differs = differences.Tell(*comparison);
    if (!isWhole || differences.IsUncertain()) return kTrouble;
    return differs ? kSomeFailed : kAllWell;
}

/// What the players hold now.
struct VenueReading {
    std::vector<PlayerDocuments> documents = {};
    bool isWhole = true;
};

VenueReading ReadVenueNow(const Surroundings& surroundings, const ChosenPlayers& chosen,
                          const RunSettings& settings) {
    VenueReading venue;
    std::mutex mutex;
    const auto read = [&](Session& session, const DeviceRecord& player) {
        ReadDocuments documents = ReadAll(session, player, AllKinds());
        RefuseBroken(documents);
        PlayerReport report;
        report.failures = documents.failures;
        const std::lock_guard lock(mutex);
        if (documents.HasAny()) venue.documents.push_back(std::move(documents.documents));
        return report;
    };
    ForEachPlayer(
        chosen.players, settings.parallel, surroundings.stop,
        [&](const DeviceRecord& player) {
            return WithSession(player, settings.session,
                               [&](Session& session) { return read(session, player); });
        },
        [&](const DeviceRecord& player, const PlayerReport& report) {
            for (const Failure& failure : report.failures)
                Tell(surroundings.output, player, failure);
            venue.isWhole = venue.isWhole && report.failures.empty();
        });
    return venue;
}

int CompareWithPlayers(const Surroundings& surroundings, const Backup& backup) {
    const auto settings = RunSettingsOf(surroundings);
    if (!settings) return TellWrongUse(surroundings, settings.reason());
    const auto chosen = ChoosePlayers(surroundings, Identity::kNeeded);
    if (!chosen) return TellWrongUse(surroundings, chosen.reason());
    TellMissing(surroundings, *chosen);
    if (const auto end = EndWithoutPlayers(surroundings, *chosen)) return *end;
    const VenueReading venue = ReadVenueNow(surroundings, *chosen, *settings);
    if (surroundings.stop.stop_requested()) return kInterrupted;
    return TellResult(surroundings,
                      CompareWithVenue(backup, venue.documents, !chosen->isNamed && venue.isWhole),
                      venue.isWhole && chosen->missing.empty());
}

}  // namespace

int RunCompare(const Surroundings& surroundings) {
    const auto first = Backup::Open(PathOfText(surroundings.call.Argument(0)));
    if (!first) return TellTrouble(surroundings, first.reason());
    const std::string other = surroundings.call.Argument(1);
    if (other.empty()) return CompareWithPlayers(surroundings, *first);
    for (const OptionId option : {OptionId::kPlayer, OptionId::kAll, OptionId::kExpect})
        if (surroundings.call.Has(option))
            return TellWrongUse(surroundings, Localized(kNobodyAsked));
    const auto second = Backup::Open(PathOfText(other));
    if (!second) return TellTrouble(surroundings, second.reason());
    return TellResult(surroundings, CompareBackups(*first, *second), true);
}

}  // namespace sontaro::cli
