#include <fmt/printf.h>

#include "cli/category_choice.h"
#include "cli/commands.h"
#include "cli/exit_code.h"
#include "cli/player_runs.h"
#include "cli/upload_page.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNoPaths = {"缺少要发送的文件或文件夹。",
                                "the files or folders to send are missing."};
constexpr LocalText kAlone = {"--again 不能与文件、播放器和类别一起使用。",
                              "--again does not go with files, players and a category."};
constexpr LocalText kNothingLeft = {"上次运行没有剩下什么。", "nothing is left of the last run."};
constexpr LocalText kVideo = {"视频", "video"};
constexpr LocalText kBytes = {"字节", "bytes"};
constexpr LocalText kState = {"状态", "state"};

constexpr const char* kFateWords[] = {"not-meant", "to-send",     "send-anyway", "skipped",
                                      "no-room",   "unreachable", "unreadable"};
constexpr const char* kOutcomeWords[] = {"none",   "under-way", "done",
                                         "failed", "left-out",  "not-sent"};
constexpr const char* kProofWords[] = {"confirmed", "missing", "other-size", "other-category",
                                       "cannot-tell"};

template <class Value, std::size_t kCount>
const char* WordIn(const char* const (&words)[kCount], Value value) {
    return words[std::min(static_cast<std::size_t>(value), kCount - 1)];
}

/// Every video on its way to every player: the plan, or what has become of it.
void TellPairs(const Surroundings& surroundings, const SendBatch& batch, bool isPlan) {
    CellTable table({"IP", Localized(kVideo), Localized(kBytes), Localized(kState)});
    for (std::size_t i = 0; i < batch.Players().size(); ++i)
        for (std::size_t j = 0; j < batch.Videos().size(); ++j) {
            const SendPair& pair = batch.PairAt(i, j);
            if (pair.fate == PlannedFate::kNotMeant && pair.outcome == SendOutcome::kNone) continue;
            const BatchVideo& video = batch.Videos()[j];
            table.Add(
                {batch.Players()[i].ip, video.video.name, std::to_string(video.size), pair.Text()});
            if (!surroundings.output.IsJson()) continue;
            Json::Value object(Json::objectValue);
            object["ip"] = batch.Players()[i].ip;
            object["port"] = batch.Players()[i].port;
            object["name"] = video.video.name;
            object["bytes"] = Json::UInt64(video.size);
            object["planned"] = isPlan;
            object["plan"] = WordIn(kFateWords, pair.fate);
            if (pair.outcome != SendOutcome::kNone)
                object["outcome"] = WordIn(kOutcomeWords, pair.outcome);
            if (pair.proof) object["proof"] = WordIn(kProofWords, *pair.proof);
            if (!pair.note.empty()) object["note"] = pair.note;
            surroundings.output.Object(object);
        }
    if (!surroundings.output.IsJson()) surroundings.output.Table(table);
}

/// What the player has acknowledged and its list cannot tell is no trouble.
bool HasTrouble(const SendBatch& batch) {
    for (std::size_t i = 0; i < batch.Players().size(); ++i)
        for (std::size_t j = 0; j < batch.Videos().size(); ++j) {
            const SendPair& pair = batch.PairAt(i, j);
            if (pair.IsTrouble() && pair.proof != ProofKind::kCannotTell) return true;
        }
    return false;
}

int TellResult(const Surroundings& surroundings, const SendPage& page, bool isWhole) {
    TellPairs(surroundings, page.Batch(), false);
    surroundings.output.Remark(page.SummaryText());
    if (surroundings.stop.stop_requested()) return kInterrupted;
    const bool allDone = std::ranges::all_of(page.Rows(), &UploadRow::IsWhole);
    return isWhole && allDone && !HasTrouble(page.Batch()) ? kAllWell : kSomeFailed;
}

int SendAgain(const Surroundings& surroundings, const RunSettings& settings) {
    const Invocation& call = surroundings.call;
    const bool isAlone = call.Arguments().empty() && !call.Has(OptionId::kPlayer) &&
                         !call.Has(OptionId::kAll) && !call.Has(OptionId::kExpect) &&
                         !call.Has(OptionId::kCategory) && !call.Has(OptionId::kDryRun);
    if (!isAlone) return TellWrongUse(surroundings, Localized(kAlone));
    UploadPage page(surroundings, settings.session.connectLimit);
    if (page.SendAgain()) return TellResult(surroundings, page.Page(), true);
    surroundings.output.Remark(Localized(kNothingLeft));
    return kAllWell;
}

}  // namespace

int RunUpload(const Surroundings& surroundings) {
    const Invocation& call = surroundings.call;
    const auto settings = RunSettingsOf(surroundings);
    if (!settings) return TellWrongUse(surroundings, settings.reason());
    if (call.Has(OptionId::kAgain)) return SendAgain(surroundings, *settings);
    if (call.Arguments().empty()) return TellWrongUse(surroundings, Localized(kNoPaths));
    const auto chosen = ChoosePlayers(surroundings, Identity::kNeeded);
    if (!chosen) return TellWrongUse(surroundings, chosen.reason());
    TellMissing(surroundings, *chosen);
    if (const auto end = EndWithoutPlayers(surroundings, *chosen)) return *end;
    const auto category = ChooseCategory(surroundings, chosen->players, settings->session);
    if (const int* end = std::get_if<int>(&category)) return *end;
    UploadPage page(surroundings, settings->session.connectLimit);
    const auto files = page.FilesIn(call.Arguments());
    if (!files) return TellWrongUse(surroundings, files.reason());
    VideoSet set;
    TakePlayers(set, chosen->players);
    AddVideos(set.videos, *files, std::get<std::uint32_t>(category));
    set.skipsPresent = call.Has(OptionId::kSkipPresent);
    page.Plan(std::move(set));
    if (surroundings.stop.stop_requested()) return kInterrupted;
    TellPairs(surroundings, page.Page().Batch(), true);
    surroundings.output.Remark(page.Page().SummaryText());
    const bool isWhole = chosen->missing.empty();
    if (call.Has(OptionId::kDryRun))
        return isWhole && !HasTrouble(page.Page().Batch()) ? kAllWell : kSomeFailed;
    page.Send();
    return TellResult(surroundings, page.Page(), isWhole);
}

}  // namespace sontaro::cli
