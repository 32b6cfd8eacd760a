#include <fmt/printf.h>

#include <atomic>

#include "app/application_title.h"
#include "base/path_text.h"
#include "cli/cli_values.h"
#include "cli/commands.h"
#include "cli/documents_reading.h"
#include "cli/exit_code.h"
#include "cli/player_runs.h"
#include "venue/backup_writer.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNoFolder = {"缺少备份文件夹。", "the folder of the backups is missing."};
constexpr LocalText kNoKeep = {"--keep 需要 1 到 100000。", "--keep takes 1 to 100000."};
constexpr LocalText kFlatAlone = {"--flat 不能与 --keep 或 --only-changed 一起使用。",
                                  "--flat does not go with --keep or --only-changed."};
constexpr LocalText kNobody = {
    "它没有应答查找，无法得知是哪台播放器。",
    "it has not answered the search, so that it is not known who it is."};
constexpr LocalText kNothingRead = {"什么也没有读到，因此没有备份。",
                                    "nothing was read, so that there is no backup."};
constexpr LocalText kWritten = {"备份：%s", "backup: %s"};
constexpr LocalText kUnchanged = {"没有变化，最近的备份：%s",
                                  "nothing has changed; the latest backup: %s"};
constexpr LocalText kRead = {"已读取", "read"};
constexpr LocalText kNotSupported = {"不支持", "not supported"};
constexpr LocalText kFailed = {"失败", "failed"};

/// The names of the blocks that have come to that.
std::vector<std::string> NamesOf(const PlayerDocuments& documents, BlockReading::Outcome outcome) {
    std::vector<std::string> names;
    for (const BlockReading& block : documents.blocks)
        if (block.outcome == outcome) names.emplace_back(block.kind->name);
    return names;
}

Json::Value ListOf(const std::vector<std::string>& names) {
    Json::Value list(Json::arrayValue);
    for (const std::string& name : names) list.append(name);
    return list;
}

std::string TextOf(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
    return text.empty() ? "-" : text;
}

PlayerReport ReportOf(const ReadDocuments& read) {
    using Outcome = BlockReading::Outcome;
    PlayerReport report;
    report.failures = read.failures;
    if (!read.HasAny()) return report;
    const auto there = NamesOf(read.documents, Outcome::kRead);
    const auto unsupported = NamesOf(read.documents, Outcome::kNotSupported);
    const auto failed = NamesOf(read.documents, Outcome::kFailed);
    Json::Value object(Json::objectValue);
    object["read"] = ListOf(there);
    object["notSupported"] = ListOf(unsupported);
    object["failed"] = ListOf(failed);
    report.objects.push_back(std::move(object));
    report.rows.push_back({std::to_string(there.size()), TextOf(unsupported), TextOf(failed)});
    return report;
}

Result<BackupPlan> PlanOf(const Surroundings& surroundings) {
    const Invocation& call = surroundings.call;
    BackupPlan plan;
    plan.program = ProgramVersion();
    plan.isFlat = call.Has(OptionId::kFlat);
    plan.onlyChanged = call.Has(OptionId::kOnlyChanged);
    const Result<Venue> venue = VenueOf(surroundings);
    if (!venue) return Error{venue.reason()};
    const std::string folder = call.Argument(0).empty() ? venue->backupFolder : call.Argument(0);
    if (folder.empty()) return Error{Localized(kNoFolder)};
    plan.folder = PathOfText(folder);
    if (plan.isFlat && (plan.onlyChanged || call.Has(OptionId::kKeep)))
        return Error{Localized(kFlatAlone)};
    if (call.Has(OptionId::kKeep)) {
        constexpr int kMost = 100'000;
        const auto count = ParseCount(call.Value(OptionId::kKeep), 1, kMost);
        if (!count) return Error{Localized(kNoKeep)};
        plan.keep = static_cast<std::size_t>(*count);
    }
    return plan;
}

/// Reads every player and adds what there is. Whether anything was read, and everything.
class BackupRun {
   public:
    BackupRun(const Surroundings& surroundings, BackupWriter& writer)
        : surroundings_(surroundings), writer_(writer) {}

    int Run() {
        const int end = RunForPlayers(
            surroundings_, Identity::kNeeded,
            {Localized(kRead), Localized(kNotSupported), Localized(kFailed)},
            [this](Session& session, const DeviceRecord& player) { return Back(session, player); });
        if (end != kAllWell && end != kSomeFailed) return end;
        if (hasAny_) return Finish(end);
        surroundings_.output.Remark(Localized(kNothingRead));
        return kSomeFailed;
    }

   private:
    PlayerReport Back(Session& session, const DeviceRecord& player) {
        if (player.id.empty() && player.mac.empty())
            return PlayerReport::Of(FailureOf("not-identified", Localized(kNobody)));
        ReadDocuments read = ReadAll(session, player, AllKinds());
        RefuseBroken(read);
        PlayerReport report = ReportOf(read);
        if (surroundings_.stop.stop_requested()) return report;
        if (const Status added = writer_.Add(read.documents); !added)
            report.failures.push_back(FailureOf("not-written", added.reason()));
        else if (read.HasAny())
            hasAny_ = true;
        return report;
    }

    int Finish(int end) {
        const auto written = writer_.Finish();
        if (!written) {
            surroundings_.output.Remark("sontaro-cli: " + written.reason());
            return kSomeFailed;
        }
        const std::string folder = TextOfPath(written->folder);
        if (surroundings_.output.IsJson()) {
            Json::Value object(Json::objectValue);
            object["backup"] = folder;
            object["isNew"] = written->isNew;
            object["removed"] = Json::UInt64(written->removed);
            surroundings_.output.Object(object);
        } else {
            surroundings_.output.Line(
                fmt::sprintf(Localized(written->isNew ? kWritten : kUnchanged), folder));
        }
        if (!written->notRemoved.empty()) surroundings_.output.Remark(written->notRemoved);
        return end;
    }

    const Surroundings& surroundings_;
    BackupWriter& writer_;
    std::atomic<bool> hasAny_ = false;
};

}  // namespace

int RunBackup(const Surroundings& surroundings) {
    auto plan = PlanOf(surroundings);
    if (!plan) return TellWrongUse(surroundings, plan.reason());
    auto writer = BackupWriter::Begin(std::move(*plan));
    if (!writer) {
        surroundings.output.Remark("sontaro-cli: " + writer.reason());
        return kSomeFailed;
    }
    return BackupRun(surroundings, **writer).Run();
}

}  // namespace sontaro::cli
