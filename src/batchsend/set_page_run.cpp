#include "batchsend/set_page_run.h"

#include <fmt/printf.h>

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <utility>

#include "base/local_text.h"
#include "base/path_text.h"
#include "batchsend/name_questions.h"
#include "batchsend/set_page_text.h"
#include "batchsend/video_set_files.h"

namespace sontaro {

namespace {

using Kind = SetProblem::Kind;
using Question = PlayerInquiry::Question;

constexpr std::chrono::milliseconds kRest{1000};  // before what is entered is remembered

constexpr LocalText kNothingFound = {"没有找到文件。", "No files have been found."};
constexpr LocalText kCut = {"文件过多，只添加了前 %d 个。",
                            "There are too many files: only %d have been added."};
constexpr LocalText kNotSeen = {"无法读取：", "This cannot be read:"};
constexpr LocalText kNoSlot = {"64 个类别都已使用，以下文件夹的视频放入类别 %d：",
                               "All 64 categories are taken. The videos of these folders are in "
                               "category %d:"};

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
        // their slot is taken before folders look for free ones
        std::stable_partition(files.files.begin(), files.files.end(),
                              [](const FoundFile& file) { return file.category.empty(); });
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
    SettleCategories();
}

/// Folders become categories by the names that players have, all of which are waited for: one that
/// has told nothing yet may use any slot. What is found goes to slots as they were when it was
/// looked for.
void SetPageRun::TakeFound() {
    const auto hasCategory = [](const FoundFile& file) { return !file.category.empty(); };
    const auto isReady = [&](const Found& found) {
        return !inquiry_.IsAsking() || std::ranges::none_of(found.files.files, hasCategory);
    };
    std::vector<Found> ready;
    for (Found& found : std::exchange(found_, {}))
        (isReady(found) ? ready : found_).push_back(std::move(found));
    WhileNamesStay([&] {
        for (const Found& found : ready) Take(found);
    });
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
        told.push_back(ListText(fmt::sprintf(Localized(kNoSlot), found.slot + 1),
                                std::vector(withoutSlot.begin(), withoutSlot.end())));
    if (!files.unreadable.empty()) told.push_back(ListText(Localized(kNotSeen), files.unreadable));
    if (files.files.empty() && told.empty()) told.push_back(Localized(kNothingFound));
    for (const std::string& text : told) services_.prompts.Warn(text);
}

/// Folders whose categories were named while nobody had told names find theirs, as soon as nothing
/// goes on that knows them by the slots that they have.
void SetPageRun::SettleCategories() {
    if (!inquiry_.IsAsking() && !IsSearching() && stays_ == 0) SettleByWhatIsTold();
}

void SetPageRun::SettleByWhatIsTold() {
    const ToldNames names = heard_.All(shown_);
    if (names.empty() || !isEntered_) return;
    const std::vector<SettledName> settled = SettleNames(set_, names);
    if (settled.empty()) return;
    view_.CategoriesSettled(settled);
    Changed();
    TellSettled(settled, services_.prompts);
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

void SetPageRun::WhileNamesStay(const std::function<void()>& step) {
    ++stays_;
    step();
    --stays_;
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
    if (isLooking_)
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
    SettleByWhatIsTold();  // nobody else is waited for any more
    return KeepNames(set_, heard_, shown_, services_.videoTypeFile, services_.prompts);
}

}  // namespace sontaro
