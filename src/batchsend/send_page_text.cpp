#include "batchsend/send_page_text.h"

#include <fmt/chrono.h>
#include <fmt/printf.h>

#include <algorithm>

#include "base/count_text.h"
#include "base/local_text.h"
#include "batchsend/set_problems.h"
#include "batchsend/upload_figures.h"

namespace sontaro {

namespace {

constexpr LocalText kPlanning = {"正在询问播放器（%d/%d）…", "Asking the players (%d/%d)…"};
constexpr LocalText kLooking = {"正在检查文件…", "Looking at the files…"};
constexpr LocalText kProving = {"正在核对播放器中的视频（%d/%d）…",
                                "Comparing what has arrived (%d/%d)…"};
constexpr LocalText kPlan = {"将进行 %s（%s），共 %s。", "To be sent: %s to %s, %s in all."};
constexpr CountText kTransfers = {"%d 次视频传输", "%d transfer of a video",
                                  "%d transfers of videos"};
constexpr CountText kPlayers = {"%d 台播放器", "%d player", "%d players"};
constexpr LocalText kEstimate = {"按上次的速度约需 %s。", "At the last speed it takes about %s."};
constexpr CountText kTooFull = {"%d 台播放器空间不足。", "%d player has too little room.",
                                "%d players have too little room."};
constexpr CountText kUnreached = {"无法连接 %d 台播放器。", "%d player cannot be reached.",
                                  "%d players cannot be reached."};
constexpr CountText kUntold = {"有 %d 台播放器未告知已有视频：将发送全部视频。",
                               "What %d player has already is not known: it gets everything.",
                               "What %d players have already is not known: they get everything."};
constexpr LocalText kNothing = {"没有要发送的视频。", "There are no videos to be sent."};
constexpr LocalText kResult = {"%d 台完成", "%d OK"};
constexpr LocalText kFailed = {"，%d 台失败：", ", %d failed: "};
constexpr LocalText kWaiting = {"，%d 台未开始", ", %d not begun"};
constexpr LocalText kOneFailed = {"%s（%s）", "%s (%s)"};
constexpr LocalText kNamesFailed = {"类别名称：%s", "names of categories: %s"};
constexpr LocalText kBetween = {"、", ", "};
constexpr LocalText kStop = {"。", "."};
constexpr LocalText kNotKept = {
    "无法写入发送记录：关闭此窗口后将无法重新发送失败的视频。",
    "The journal cannot be written: what fails can be sent again only while this window is open."};
constexpr LocalText kUnreadable = {"无法读取最近一次的发送记录。",
                                   "The latest journal cannot be read."};
constexpr LocalText kEarlier = {"重新发送和导出使用的是更早的发送记录（%s）。",
                                "What can be sent again and exported is that of an earlier run, "
                                "of %s."};

/// Why a row counts as failed, in a few words. With all videos there, it is the names of the
/// categories that are not.
std::string ReasonOf(const UploadRow& row) {
    if (row.status == UploadStatus::kInProgress) return NoteText({UploadNote::Kind::kStopped});
    const std::string note = NoteText(row.note);
    const std::string reason =
        note.empty() || row.status == UploadStatus::kDiskTooSmall ? StatusText(row) : note;
    const bool hasVideos =
        !row.plan.empty() && row.confirmed == row.plan.size() && row.leftOut.empty();
    return hasVideos ? fmt::sprintf(Localized(kNamesFailed), reason) : reason;
}

/// Down to the minute; the text itself when it is no time.
std::string LocalTime(const std::string& time) {
    const auto known = TimeIn(time);
    if (!known) return time;
    return fmt::format("{:%Y-%m-%d %H:%M}",
                       fmt::localtime(std::chrono::system_clock::to_time_t(*known)));
}

}  // namespace

std::string PlanningText(std::size_t done, std::size_t all) {
    return fmt::sprintf(Localized(kPlanning), done, all);
}

std::string LookingText() { return Localized(kLooking); }

std::string ProvingText(std::size_t done, std::size_t all) {
    return fmt::sprintf(Localized(kProving), done, all);
}

std::string PlanText(const BatchPlan& plan, std::span<const PlayerFacts> facts, double speed) {
    const PlanTotals& totals = plan.Totals();
    const auto unreached = std::ranges::count_if(
        facts, [](const PlayerFacts& player) { return player.isAsked && !player.isReached; });
    const auto having = [&plan](PlannedFate fate) {
        return std::ranges::count_if(plan.Fates(), [fate](const auto& fates) {
            return std::ranges::find(fates, fate) != fates.end();
        });
    };
    const auto tooFull = having(PlannedFate::kDoesNotFit);
    const auto untold = having(PlannedFate::kListUnknown);
    std::string text;
    if (totals.videos > 0)
        text = fmt::sprintf(Localized(kPlan), Counted(kTransfers, totals.videos),
                            Counted(kPlayers, totals.players), BytesText(totals.bytes));
    else if (unreached == 0 && tooFull == 0)
        text = Localized(kNothing);
    if (const auto seconds = plan.Estimate(speed); seconds && totals.videos > 0)
        AddSentence(text, fmt::sprintf(Localized(kEstimate), DurationText(*seconds)));
    const auto add = [&text](const CountText& told, std::ptrdiff_t players) {
        if (players > 0) AddSentence(text, Counted(told, static_cast<std::size_t>(players)));
    };
    add(kUntold, untold);
    add(kTooFull, tooFull);
    add(kUnreached, unreached);
    return text;
}

std::string ResultText(std::span<const UploadRow> rows) {
    const auto whole = std::ranges::count_if(rows, &UploadRow::IsWhole);
    std::string failed;
    std::size_t count = 0;
    std::size_t waiting = 0;
    for (const UploadRow& row : rows) {
        if (row.IsWhole()) continue;
        if (!IsFinal(row.status) && row.status != UploadStatus::kInProgress) {
            ++waiting;
            continue;
        }
        ++count;
        failed += (failed.empty() ? "" : Localized(kBetween)) +
                  fmt::sprintf(Localized(kOneFailed), row.player.target.ip, ReasonOf(row));
    }
    std::string text = fmt::sprintf(Localized(kResult), whole);
    if (count > 0) text += fmt::sprintf(Localized(kFailed), count) + failed;
    if (waiting > 0) text += fmt::sprintf(Localized(kWaiting), waiting);
    return text + Localized(kStop);
}

std::string JournalText(const LatestJournal& latest, bool isKept) {
    if (!isKept) return Localized(kNotKept);
    if (latest.isLatest) return "";
    std::string text = Localized(kUnreadable);
    if (latest.journal)
        AddSentence(text, fmt::sprintf(Localized(kEarlier), LocalTime(latest.journal->time)));
    return text;
}

}  // namespace sontaro
