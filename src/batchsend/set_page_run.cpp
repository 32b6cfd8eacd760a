#include "batchsend/set_page_run.h"

#include <fmt/printf.h>

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <utility>

#include "base/local_text.h"
#include "base/path_text.h"
#include "batchsend/set_page_text.h"
#include "batchsend/video_set_files.h"
#include "batchsend/video_types.h"

namespace sontaro {

namespace {

using Kind = SetProblem::Kind;
using Question = PlayerInquiry::Question;

constexpr std::chrono::milliseconds kRest{1000};  // before what is entered is remembered
constexpr std::size_t kMostTold = 10;

constexpr LocalText kNothingFound = {"没有找到文件。", "No files have been found."};
constexpr LocalText kCut = {"文件过多，只添加了前 %d 个。",
                            "There are too many files: only %d have been added."};
constexpr LocalText kNotSeen = {"无法读取：", "This cannot be read:"};
constexpr LocalText kNoSlot = {"64 个类别都已使用，以下文件夹的视频放入类别 %d：",
                               "All 64 categories are taken. The videos of these folders are in "
                               "category %d:"};
constexpr LocalText kNamesNotKept = {"无法保存类别名称：%s",
                                     "The names of the categories cannot be kept: %s"};
constexpr LocalText kNamesUnknown = {
    "还不知道播放器现有的类别名称，因此不会发送类别名称，视频按类别编号存放。仍要继续吗？",
    "The names that players have for their categories are not known, so yours are not sent: the "
    "videos go by the numbers of their categories. Go on all the same?"};
constexpr LocalText kReplaced = {
    "类别名称将写入所有播放器。未另外命名的类别都采用 %s 的名称，它会替换其他播放器中的名称：",
    "The names of the categories are written to all players. Where you have given none, those of "
    "%s replace those of the others:"};
constexpr LocalText kUnknownReplaced = {
    "类别名称（%s 的名称）也将写入以下播放器，它们目前的类别名称未知：%s。",
    "The names, those of %s, are also written to players whose own ones are not known: %s."};
constexpr LocalText kGoOn = {"仍要继续吗？", "Go on all the same?"};
constexpr LocalText kOneSlot = {"%d（%s）", "%d (%s)"};
constexpr LocalText kSettled = {
    "已得知播放器的类别名称。以下文件夹的视频改用对应的类别编号：",
    "The names that players have for their categories are known now. The videos of these folders "
    "have gone to another number:"};
constexpr LocalText kOneSettled = {"%s：%d → %d", "%s: %d → %d"};
constexpr LocalText kDropped = {
    "播放器没有空闲的类别，以下名称已取消，视频仍在原编号的类别中：",
    "Players have no category left for these names. The videos stay where they are:"};
constexpr LocalText kOneDropped = {"%s：%d", "%s: %d"};

/// Lines behind a heading, no more than a box has room for.
std::string Listed(const std::string& heading, std::span<const std::string> lines) {
    std::string text = heading;
    for (const std::string& line : lines.first(std::min(lines.size(), kMostTold)))
        text += '\n' + line;
    return lines.size() > kMostTold ? text + "\n…" : text;
}

}  // namespace

SetPageRun::SetPageRun(VideoSet& set, SetPageView& view, SetPageServices services)
    : set_(set),
      view_(view),
      services_(std::move(services)),
      walk_(services_.thread, services_.threads),
      inquiry_(services_.exchange, [this](std::size_t player) { PlayerAnswers(player); }),
      link_(services_.exchange),
      remember_(services_.exchange.timers) {
    set_ = RememberedVideoSet(services_.preferences);
}

/// The player that was shown stays so as far as it is still there.
void SetPageRun::Enter(std::vector<DeviceRecord> players) {
    const std::string shown = shown_ ? players_[*shown_].ip : "";
    const auto same = std::ranges::find(players, shown, &DeviceRecord::ip);
    const bool isThere = same != players.end();
    shown_ = isThere ? Place(same - players.begin()) : std::nullopt;
    players_ = std::move(players);
    isEntered_ = true;
    TakePlayers(set_, players_);
    heard_.SetPlayers(set_.players);
    free_.assign(players_.size(), std::nullopt);
    Check();
    Ask();
    Show(shown_);
    LookAtFiles();
    SettleCategories();
}

void SetPageRun::Leave() {
    if (!std::exchange(isEntered_, false)) return;
    GiveUpSearch();
    services_.source.Close();
    isLooking_ = false;
    inquiry_.Cancel();
    link_.Reset();
    Remember();
}

void SetPageRun::Ask() {
    std::vector<Target> targets;
    for (std::size_t i = 0; i < players_.size(); ++i) targets.push_back(TargetOf(i));
    inquiry_.Ask(std::move(targets),
                 {Question::kMode, Question::kFreeSpace, Question::kControlProtocol});
}

Target SetPageRun::TargetOf(std::size_t player) const {
    return {players_[player].ip, players_[player].tcpPort, 0};
}

void SetPageRun::AskAgain() {
    if (!MayAskAgain()) return;
    if (shown_)
        inquiry_.AskAgain(*shown_);
    else
        Ask();
}

bool SetPageRun::MayAskAgain() const {
    if (!isEntered_) return false;
    if (!shown_) return !inquiry_.IsAsking();
    const InquiryState state = inquiry_.StateOf(*shown_);
    return state != InquiryState::kWaiting && state != InquiryState::kAsking;
}

void SetPageRun::PlayerAnswers(std::size_t player) {
    const PlayerFacts& facts = inquiry_.FactsOf(player);
    const bool isAnswered = inquiry_.StateOf(player) == InquiryState::kAnswered;
    if (isAnswered) heard_.Take(player, facts);
    link_.SetAnswered(TargetOf(player), isAnswered);
    link_.Hold(inquiry_.IsAsking());
    if (facts.free != free_[player]) {
        free_[player] = facts.free;
        Check();
        view_.VideosChanged();
    }
    view_.PlayerChanged(player);
    SettleCategories();
    TakeFound();
}

void SetPageRun::Handle(WindowMessage& message) {
    if (message.id == MessageId::kLinkEnded)
        link_.Ended(message.origin.sender);
    else
        inquiry_.Handle(message);
}

void SetPageRun::Show(Place player) {
    shown_ = player;
    link_.Show(player ? std::optional(TargetOf(*player)) : std::nullopt);
    view_.SetChanged();
}

const Elements<SetVideo>& SetPageRun::Videos() const {
    return shown_ ? std::as_const(set_.players)[*shown_].videos : set_.videos;
}

Elements<SetVideo>& SetPageRun::VideosOf(Place player) {
    return player ? set_.players[*player].videos : set_.videos;
}

void SetPageRun::Add(Paths chosen, std::uint32_t slot) {
    if (!isEntered_ || chosen.empty()) return;
    for (std::filesystem::path& path : chosen) path.make_preferred();  // one spelling for a file
    walk_.Begin(std::move(chosen), [this, player = shown_, slot](FoundFiles files) {
        found_.push_back({std::move(files), player, slot});
        TakeFound();
        view_.SetChanged();
    });
    view_.SetChanged();
}

void SetPageRun::GiveUpSearch() {
    walk_.GiveUp();
    found_.clear();
    view_.SetChanged();
}

/// Folders become categories by the names that players have, which are waited for.
void SetPageRun::TakeFound() {
    const auto hasCategory = [](const FoundFile& file) { return !file.category.empty(); };
    const auto isReady = [&](const Found& found) {
        return heard_.Of(shown_) != nullptr || !inquiry_.IsAsking() ||
               std::ranges::none_of(found.files.files, hasCategory);
    };
    std::vector<Found> ready;
    for (Found& found : std::exchange(found_, {}))
        (isReady(found) ? ready : found_).push_back(std::move(found));
    for (const Found& found : ready) Take(found);
}

void SetPageRun::Take(const Found& found) {
    Elements<SetVideo>& videos = VideosOf(found.player);
    std::set<std::string> paths;
    for (const SetVideo& video : videos) paths.insert(video.path);
    const ToldNames names = heard_.All(shown_);
    std::map<std::string, std::optional<std::uint32_t>> slots = {{"", found.slot}};
    std::set<std::string> withoutSlot;
    for (const FoundFile& file : found.files.files) {
        const std::string path = TextOfPath(file.path);
        if (!paths.insert(path).second) continue;
        const auto [slot, isNew] = slots.try_emplace(file.category);
        if (isNew) slot->second = SlotNamed(file.category, names, set_);
        if (!slot->second) withoutSlot.insert(file.category);
        AddVideos(videos, std::span(&path, 1), slot->second.value_or(found.slot));
    }
    Changed();
    LookAtFiles();
    const FoundFiles& files = found.files;
    std::vector<std::string> told;
    if (!files.isWhole) told.push_back(fmt::sprintf(Localized(kCut), files.files.size()));
    if (!withoutSlot.empty())
        told.push_back(Listed(fmt::sprintf(Localized(kNoSlot), found.slot + 1),
                              std::vector(withoutSlot.begin(), withoutSlot.end())));
    if (!files.unreadable.empty()) told.push_back(Listed(Localized(kNotSeen), files.unreadable));
    if (files.files.empty() && told.empty()) told.push_back(Localized(kNothingFound));
    for (const std::string& text : told) services_.prompts.Warn(text);
}

/// Folders whose categories were named while nobody had told names find theirs.
void SetPageRun::SettleCategories() {
    const ToldNames names = heard_.All(shown_);
    if (names.empty()) return;
    const std::vector<SettledName> settled = SettleNames(set_, names);
    if (settled.empty()) return;
    Changed();
    std::vector<std::string> moved;
    std::vector<std::string> dropped;
    for (const SettledName& one : settled) {
        if (!one.to)
            dropped.push_back(fmt::sprintf(Localized(kOneDropped), one.name, one.from + 1));
        else if (*one.to != one.from)
            moved.push_back(
                fmt::sprintf(Localized(kOneSettled), one.name, one.from + 1, *one.to + 1));
    }
    if (!moved.empty()) services_.prompts.Inform(Listed(Localized(kSettled), moved));
    if (!dropped.empty()) services_.prompts.Warn(Listed(Localized(kDropped), dropped));
}

void SetPageRun::Remove(const Ids& ids) {
    VideosOf(shown_).RemoveWithIds(ids);
    Changed();
}

void SetPageRun::MoveUp(const Ids& ids) {
    MoveVideosUp(VideosOf(shown_), ids);
    Changed();
}

void SetPageRun::MoveDown(const Ids& ids) {
    MoveVideosDown(VideosOf(shown_), ids);
    Changed();
}

void SetPageRun::PutInto(std::uint32_t slot, const Ids& ids) {
    SetCategory(VideosOf(shown_), ids, slot);
    Edited();
}

void SetPageRun::SetCode(std::uint32_t code, const Ids& ids) {
    ChangeVideos(VideosOf(shown_), ids, [code](SetVideo& video) { video.code = code; });
    Edited();
}

void SetPageRun::RemoveNumbers(bool wanted, const Ids& ids) {
    ChangeVideos(VideosOf(shown_), ids,
                 [wanted](SetVideo& video) { video.removesNumbers = wanted; });
    Edited();
}

std::string SetPageRun::NameOf(std::size_t slot) const {
    const std::string& alias = set_.aliases.at(slot).name;
    const CategoryNames* const names = heard_.Of(shown_);
    return alias.empty() && names ? names->at(slot) : alias;
}

void SetPageRun::SetAliases(const std::array<CategoryAlias, kVideoCategories>& aliases) {
    set_.aliases = aliases;
    Edited();
    SettleCategories();
}

void SetPageRun::WriteNames(bool wanted) {
    set_.writesNames = wanted;
    Edited();
}

void SetPageRun::Open(const std::filesystem::path& path) {
    if (!OpenVideoSet(set_, path, services_.prompts)) return;
    TakePlayers(set_, players_);
    Changed();
    LookAtFiles();
    SettleCategories();
}

void SetPageRun::Save(const std::filesystem::path& path) const {
    SaveVideoSet(set_, path, services_.prompts);
}

/// All of them, as any may have changed. What has not been answered by then is given up.
void SetPageRun::LookAtFiles() {
    const Paths files = FilesOf(set_);
    isLooking_ = !files.empty();
    if (!isLooking_) return;
    services_.source.LookAt(
        files, [this, files](const VideoSource::Sizes& sizes) { TakeSizes(files, sizes); });
    view_.VideosChanged();
}

void SetPageRun::TakeSizes(const Paths& files, const VideoSource::Sizes& sizes) {
    TakeFileSizes(set_, files, sizes);
    isLooking_ = false;
    Check();
    view_.VideosChanged();
}

void SetPageRun::Changed() {
    Keep();
    view_.SetChanged();
}

/// The same videos are there, in the same order.
void SetPageRun::Edited() {
    Keep();
    view_.VideosChanged();
}

void SetPageRun::Keep() {
    Check();
    remember_.Start(kRest, [this] { Remember(); });
}

void SetPageRun::Check() { problems_ = ProblemsOf(set_, free_); }

void SetPageRun::Remember() {
    remember_.Stop();
    RememberVideoSet(set_, services_.preferences);
}

bool SetPageRun::GoOn() {
    const auto isRefused = [](const SetProblem& problem) {
        return problem.kind == Kind::kTooLong || problem.kind == Kind::kNameTooLong;
    };
    const auto refused = std::ranges::find_if(problems_, isRefused);
    if (refused != problems_.end()) {
        const SetProblem problem = *refused;
        Show(problem.player);
        view_.ChooseVideo(problem.video);
        services_.prompts.Warn(ProblemText(set_, problem));
        return false;
    }
    return KeepNames();
}

bool SetPageRun::KeepNames() {
    const CategoryNames* const heard = heard_.Of(shown_);
    const auto names = heard ? std::optional(*heard) : std::nullopt;
    const bool isWanted = set_.writesNames || heard_.HaveOthersThan(set_.aliases);
    if (isWanted && names && !MayReplaceNames()) return false;
    const auto kept = KeepVideoTypes(services_.videoTypeFile, set_, names, isWanted);
    if (!kept) {
        services_.prompts.Warn(fmt::sprintf(Localized(kNamesNotKept), kept.reason()));
        return false;
    }
    return *kept != VideoTypeFile::kNamesUnknown ||
           services_.prompts.Confirm(Localized(kNamesUnknown));
}

/// The document has all 64 names: those of one player where the user has given none.
bool SetPageRun::MayReplaceNames() const {
    std::vector<std::string> replaced;
    for (std::size_t slot = 0; slot < kVideoCategories; ++slot)
        if (set_.aliases.at(slot).name.empty() && heard_.Differ(slot))
            replaced.push_back(fmt::sprintf(Localized(kOneSlot), slot + 1, heard_.Told(slot)));
    const std::string silent = heard_.Silent();
    if (replaced.empty() && silent.empty()) return true;
    const std::string source = heard_.SourceOf(shown_);
    std::string question;
    if (!replaced.empty())
        question = Listed(fmt::sprintf(Localized(kReplaced), source), replaced) + '\n';
    if (!silent.empty())
        question += fmt::sprintf(Localized(kUnknownReplaced), source, silent) + '\n';
    return services_.prompts.Confirm(question + Localized(kGoOn));
}

}  // namespace sontaro
