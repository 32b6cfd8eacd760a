#include "batchsend/set_page_text.h"

#include <fmt/printf.h>

#include <algorithm>

#include "base/local_text.h"
#include "base/path_text.h"

namespace sontaro {

namespace {

/// In the order of `InquiryState`.
constexpr LocalText kStates[] = {
    {"", ""},
    {"等待查询", "Waiting"},
    {"正在查询…", "Asking…"},
    {"已应答", "Answered"},
    {"5 秒内没有应答", "No answer within 5 s"},
    {"无法连接", "Cannot be reached"},
    {"连接已断开", "The link has ended"},
};
/// In the order of `PlayerMode`.
constexpr LocalText kModes[] = {{"独立", "Independent"}, {"主机", "Master"}, {"从机", "Slave"}};

constexpr LocalText kProblem = {"%s：%s", "%s: %s"};
constexpr LocalText kMore = {"（另有 %d 个问题）", " (%d more)"};
constexpr LocalText kAmount = {"%d 个（%s）", "%d (%s)"};
constexpr LocalText kForAll = {"每台播放器的视频：%s", "Videos for every player: %s"};
constexpr LocalText kForOne = {"%s 的视频：%s，其中 %d 个只发给它",
                               "Videos for %s: %s, %d of them for it alone"};
constexpr LocalText kSearching = {"正在查找文件…", "Looking for files…"};
constexpr LocalText kLooking = {"正在检查文件…", "Looking at the files…"};
constexpr LocalText kGap = {"    ", "    "};
constexpr LocalText kProvisional = {"等待播放器类别名称的类别：%d 个",
                                    "Categories that wait for the players' names: %d"};
constexpr std::size_t kMostTold = 10;
constexpr const char* kDifferent = " ≠";
constexpr const char* kOpen = "?";  // behind a number

const SetVideo& VideoOf(const VideoSet& set, const SetProblem& problem) {
    const auto& videos = problem.player ? set.players[*problem.player].videos : set.videos;
    return *videos.Find(problem.video);
}

std::string VideosText(std::span<const SetVideo* const> videos) {
    std::uint64_t bytes = 0;
    for (const SetVideo* video : videos)
        bytes += static_cast<std::uint64_t>(std::max<std::int64_t>(video->size, 0));
    return fmt::sprintf(Localized(kAmount), videos.size(), BytesText(bytes));
}

}  // namespace

std::string TextOf(InquiryState state) {
    return Localized(kStates[static_cast<std::size_t>(state)]);
}

std::string TextOf(PlayerMode mode) { return Localized(kModes[static_cast<std::size_t>(mode)]); }

std::string ListText(const std::string& heading, std::span<const std::string> lines) {
    std::string text = heading;
    for (const std::string& line : lines.first(std::min(lines.size(), kMostTold)))
        text += '\n' + line;
    return lines.size() > kMostTold ? text + "\n…" : text;
}

std::string ProblemText(const VideoSet& set, const SetProblem& problem) {
    if (problem.kind == SetProblem::Kind::kUnreadable) return problem.Told();  // names the file
    const bool isPlayers = problem.kind == SetProblem::Kind::kDoesNotFit;
    const std::string name = isPlayers
                                 ? set.players[*problem.player].ip
                                 : TextOfPath(PathOfText(VideoOf(set, problem).path).filename());
    return fmt::sprintf(Localized(kProblem), name, problem.Told());
}

std::string AmountText(const VideoSet& set, SetPageRun::Place player) {
    if (player) return VideosText(VideosFor(set, *player));
    std::vector<const SetVideo*> videos;
    for (const SetVideo& video : set.videos) videos.push_back(&video);
    return VideosText(videos);
}

std::string TotalsText(const SetPageRun& run) {
    const VideoSet& set = run.Set();
    const SetPageRun::Place shown = run.Shown();
    const std::string amount = AmountText(set, shown);
    std::string text = shown ? fmt::sprintf(Localized(kForOne), set.players[*shown].ip, amount,
                                            set.players[*shown].videos.size())
                             : fmt::sprintf(Localized(kForAll), amount);
    if (run.IsSearching()) return text + Localized(kGap) + Localized(kSearching);
    if (run.IsLookingAtFiles()) return text + Localized(kGap) + Localized(kLooking);
    const auto waiting = std::ranges::count(set.aliases, true, &CategoryAlias::isProvisional);
    if (waiting > 0) text += Localized(kGap) + fmt::sprintf(Localized(kProvisional), waiting);
    return text;
}

std::string FirstProblemText(const SetPageRun& run) {
    const auto concerns = [&](const SetProblem& problem) {
        return !run.Shown() || !problem.player || problem.player == run.Shown();
    };
    const std::vector<SetProblem>& problems = run.Problems();
    const auto first = std::ranges::find_if(problems, concerns);
    if (first == problems.end()) return "";
    const auto more = std::count_if(first + 1, problems.end(), concerns);
    return ProblemText(run.Set(), *first) +
           (more > 0 ? fmt::sprintf(Localized(kMore), more) : std::string());
}

std::string SlotText(const SetPageRun& run, std::size_t slot) {
    const std::string name = run.NameOf(slot);
    const bool isOpen = run.Set().aliases.at(slot).isProvisional;
    return std::to_string(slot + 1) + (isOpen ? kOpen : "") + (name.empty() ? "" : "  ") + name +
           (run.Heard().Differ(slot) ? kDifferent : "");
}

}  // namespace sontaro
