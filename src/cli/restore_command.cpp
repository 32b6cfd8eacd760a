#include <fmt/printf.h>

#include <algorithm>
#include <map>
#include <mutex>

#include "base/count_text.h"
#include "base/path_text.h"
#include "cli/block_writes.h"
#include "cli/commands.h"
#include "cli/documents_reading.h"
#include "cli/exit_code.h"
#include "cli/plan_failures.h"
#include "cli/player_runs.h"
#include "venue/backup_store.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNotInBackup = {"备份中没有此播放器。", "it is not in the backup."};
constexpr LocalText kNoSuchId = {"备份中没有 ID 为 %s 的播放器。",
                                 "the backup has no player with the ID %s."};
constexpr LocalText kSeveral = {"备份中有多台 ID 为 %s 的播放器：%s。",
                                "the backup has several players with the ID %s: %s."};
constexpr LocalText kOneForAs = {"--as 只能用于一台播放器。", "--as is for one player."};
constexpr LocalText kOtherDevice = {"备份来自 ID 相同的另一台设备（%s）。",
                                    "the backup is of another device with this ID (%s)."};
constexpr LocalText kNothingToDo = {"没有要恢复的不同之处。",
                                    "nothing differs that is to be restored."};
constexpr CountText kQuestion = {"按此计划恢复 %d 台播放器吗？", "Restore %d player by this plan?",
                                 "Restore %d players by this plan?"};
constexpr LocalText kRestored = {"%s：已恢复 %s", "%s: restored %s"};
constexpr LocalText kRemark = {"备注", "remark"};
constexpr LocalText kRemarkLost = {"备注无法保存：%s", "the remark cannot be kept: %s"};

/// What is to be done to a player.
struct PlayerPlan {
    std::vector<BlockPlan> blocks = {};
    std::map<std::string, std::string> present = {};  ///< texts, by the names of the blocks
    std::string remark = {};  ///< of the player that it replaces; empty: its own stays

    [[nodiscard]] bool Sends() const {
        return std::ranges::any_of(blocks,
                                   [](const BlockPlan& block) { return !block.text.empty(); });
    }
};

class RestoreRun {
   public:
    RestoreRun(const Surroundings& surroundings, const Backup& backup, RunSettings settings,
               std::vector<SettingsPart> only)
        : surroundings_(surroundings),
          backup_(backup),
          settings_(std::move(settings)),
          only_(std::move(only)) {}

    int Run() {
        const auto chosen = ChoosePlayers(surroundings_, Identity::kNeeded);
        if (!chosen) return TellWrongUse(surroundings_, chosen.reason());
        TellMissing(surroundings_, *chosen);
        if (const auto end = EndWithoutPlayers(surroundings_, *chosen)) return *end;
        isWhole_ = chosen->missing.empty();
        if (const auto end = CheckReplacement(chosen->players.size())) return *end;
        ForAll(chosen->players, [this](Session& session, const DeviceRecord& player) {
            return Plan(session, player);
        });
        if (surroundings_.stop.stop_requested()) return kInterrupted;
        return Proceed(chosen->players);
    }

   private:
    using Work = std::function<PlayerReport(Session&, const DeviceRecord&)>;

    [[nodiscard]] const Invocation& Call() const { return surroundings_.call; }
    /// How plans are known.
    [[nodiscard]] static std::string KeyOf(const DeviceRecord& player) {
        return player.ip + ':' + std::to_string(player.tcpPort);
    }

    [[nodiscard]] std::optional<int> CheckReplacement(std::size_t players) const {
        if (!Call().Has(OptionId::kAs)) return std::nullopt;
        const std::string id = Call().Value(OptionId::kAs);
        if (players != 1) return TellWrongUse(surroundings_, Localized(kOneForAs));
        const std::vector<std::size_t> places = backup_.PlayersWithId(id);
        if (places.size() == 1) return std::nullopt;
        return TellWrongUse(surroundings_, places.empty() ? fmt::sprintf(Localized(kNoSuchId), id)
                                                          : SeveralText(places));
    }

    /// Players of the backup with one ID, each by what tells it from the others.
    [[nodiscard]] std::string SeveralText(const std::vector<std::size_t>& places) const {
        std::string list;
        for (const std::size_t place : places) {
            const ManifestPlayer& entry = backup_.Manifest().players[place];
            list += (list.empty() ? "" : "; ") + entry.folder + ' ' + entry.player.ip + ' ' +
                    entry.player.mac;
        }
        return fmt::sprintf(Localized(kSeveral), backup_.Manifest().players[places[0]].player.id,
                            list);
    }

    /// The player whose settings that one gets.
    [[nodiscard]] std::vector<std::size_t> PlacesOf(const DeviceRecord& player) const {
        if (Call().Has(OptionId::kAs)) return backup_.PlayersWithId(Call().Value(OptionId::kAs));
        if (player.id.empty()) return {};
        return backup_.PlayersWithId(player.id, player.mac);
    }

    void ForAll(const std::vector<DeviceRecord>& players, const Work& work) {
        ReportTeller teller(surroundings_.output, ChangeHeadings());
        ForEachPlayer(
            players, settings_.parallel, surroundings_.stop,
            [&](const DeviceRecord& player) {
                return WithSession(player, settings_.session,
                                   [&](Session& session) { return work(session, player); });
            },
            [&](const DeviceRecord& player, PlayerReport& report) { teller.Take(player, report); });
        teller.End();
        isWhole_ = isWhole_ && teller.IsWhole();
    }

    PlayerReport Plan(Session& session, const DeviceRecord& player) {
        const std::vector<std::size_t> places = PlacesOf(player);
        if (places.empty())
            return PlayerReport::Of(FailureOf("not-in-backup", Localized(kNotInBackup)));
        if (places.size() > 1) return PlayerReport::Of(FailureOf("ambiguous", SeveralText(places)));
        const auto wanted = backup_.Documents(places[0]);
        if (!wanted) return PlayerReport::Of(FailureOf("backup-broken", wanted.reason()));
        const ReadDocuments present = ReadAll(session, player, KindsIn(*wanted));
        PlayerPlan plan;
        plan.blocks = PlanPlayer(*wanted, present.documents, only_, Call().Has(OptionId::kForce));
        for (const BlockReading& block : present.documents.blocks)
            plan.present[block.kind->name] = block.text;
        if (Call().Has(OptionId::kAs) && present.HasAny() && !player.mac.empty() &&
            wanted->player.remark != player.remarks)
            plan.remark = wanted->player.remark;
        PlayerReport report;
        report.failures = present.failures;
        const std::string& mac = wanted->player.mac;
        if (!Call().Has(OptionId::kAs) && !mac.empty() && !player.mac.empty() && mac != player.mac)
            report.remarks.push_back(fmt::sprintf(Localized(kOtherDevice), mac));
        for (const BlockPlan& block : plan.blocks) Describe(block, report);
        if (!plan.remark.empty()) DescribeRemark(player, plan.remark, report);
        const std::lock_guard lock(mutex_);
        plans_[KeyOf(player)] = std::move(plan);
        return report;
    }

    /// What of the backup is to be restored at all.
    [[nodiscard]] std::vector<const SettingsBlockKind*> KindsIn(
        const PlayerDocuments& wanted) const {
        std::vector<const SettingsBlockKind*> kinds;
        for (const BlockReading& block : wanted.blocks) {
            const bool isMeant =
                only_.empty() ||
                std::ranges::find(only_, block.kind, &SettingsPart::kind) != only_.end();
            if (isMeant && block.outcome == BlockReading::Outcome::kRead)
                kinds.push_back(block.kind);
        }
        return kinds;
    }

    static void Describe(const BlockPlan& block, PlayerReport& report) {
        for (const RowDifference& row : block.rows) {
            Json::Value object = ObjectOf(*block.kind, row);
            object["planned"] = true;
            report.objects.push_back(std::move(object));
            report.rows.push_back(CellsOf(*block.kind, row));
        }
        if (const auto refused = FailureOf(block)) report.failures.push_back(*refused);
    }

    static void DescribeRemark(const DeviceRecord& player, const std::string& remark,
                               PlayerReport& report) {
        Json::Value object(Json::objectValue);
        object["key"] = "remark";
        object["before"] = player.remarks;
        object["after"] = remark;
        object["planned"] = true;
        report.objects.push_back(std::move(object));
        report.rows.push_back(
            {"-", "-", Localized(kRemark), player.remarks.empty() ? "-" : player.remarks, remark});
    }

    int Proceed(const std::vector<DeviceRecord>& players) {
        std::vector<DeviceRecord> toSend;
        for (const DeviceRecord& player : players) {
            const auto plan = plans_.find(KeyOf(player));
            if (plan != plans_.end() && (plan->second.Sends() || !plan->second.remark.empty()))
                toSend.push_back(player);
        }
        if (toSend.empty() && isWhole_) surroundings_.output.Remark(Localized(kNothingToDo));
        if (toSend.empty() || Call().Has(OptionId::kDryRun)) return EndCode();
        const std::string question = Counted(kQuestion, toSend.size());
        if (const auto end = EndUnlessConfirmed(surroundings_, question)) return *end;
        ForAll(toSend, [this](Session& session, const DeviceRecord& player) {
            return Write(session, player, plans_.at(KeyOf(player)));
        });
        KeepRemarks(toSend);
        return EndCode();
    }

    PlayerReport Write(Session& session, const DeviceRecord& player, const PlayerPlan& plan) {
        PlayerReport report;
        for (const BlockPlan& block : plan.blocks) {
            if (block.text.empty()) continue;
            const auto failure = WriteWithProof(surroundings_, session, player,
                                                {*block.kind, plan.present.at(block.kind->name),
                                                 block.text, RestartWith(*block.kind)});
            if (failure) {
                report.failures.push_back(*failure);
                if (surroundings_.stop.stop_requested()) break;
                continue;
            }
            Json::Value object(Json::objectValue);
            object["block"] = block.kind->name;
            object["restored"] = true;
            report.objects.push_back(std::move(object));
            report.lines.push_back(
                fmt::sprintf(Localized(kRestored), NameOf(player), block.kind->name));
        }
        return report;
    }

    [[nodiscard]] Restart RestartWith(const SettingsBlockKind& kind) const {
        return kind.mayRestart && Call().Has(OptionId::kRestart) ? Restart::kYes : Restart::kNo;
    }

    /// A player that takes the place of another one is called as that was.
    void KeepRemarks(const std::vector<DeviceRecord>& players) {
        DeviceRemarks remarks(surroundings_.config / "remarks.json");
        for (const DeviceRecord& player : players) {
            const std::string& remark = plans_.at(KeyOf(player)).remark;
            if (remark.empty()) continue;
            const Status kept = remarks.SetRemarks(player.mac, remark);
            if (kept) {
                TellRemark(player);
                continue;
            }
            isWhole_ = false;
            Tell(surroundings_.output, player,
                 FailureOf("not-kept", fmt::sprintf(Localized(kRemarkLost), kept.reason())));
        }
    }

    void TellRemark(const DeviceRecord& player) const {
        if (!surroundings_.output.IsJson())
            return surroundings_.output.Line(
                fmt::sprintf(Localized(kRestored), NameOf(player), Localized(kRemark)));
        Json::Value object = ObjectOf(player);
        object["key"] = "remark";
        object["restored"] = true;
        surroundings_.output.Object(object);
    }

    [[nodiscard]] int EndCode() const {
        if (surroundings_.stop.stop_requested()) return kInterrupted;
        return isWhole_ ? kAllWell : kSomeFailed;
    }

    const Surroundings& surroundings_;
    const Backup& backup_;
    const RunSettings settings_;
    const std::vector<SettingsPart> only_;
    std::mutex mutex_;  // of the plans, while they are made
    std::map<std::string, PlayerPlan> plans_;
    bool isWhole_ = true;
};

}  // namespace

int RunRestore(const Surroundings& surroundings) {
    auto settings = RunSettingsOf(surroundings);
    if (!settings) return TellWrongUse(surroundings, settings.reason());
    std::vector<SettingsPart> only;
    for (const std::string& text : surroundings.call.Values(OptionId::kOnly)) {
        auto part = PartOf(text);
        if (!part) return TellWrongUse(surroundings, part.reason());
        only.push_back(std::move(*part));
    }
    const auto backup = Backup::Open(PathOfText(surroundings.call.Argument(0)));
    if (!backup) return TellWrongUse(surroundings, backup.reason());
    return RestoreRun(surroundings, *backup, std::move(*settings), std::move(only)).Run();
}

}  // namespace sontaro::cli
