#include "batchsend/send_page.h"

#include <algorithm>
#include <utility>

#include "base/file.h"
#include "base/local_text.h"
#include "batchsend/send_page_text.h"
#include "settings/settings_files.h"

namespace sontaro {

namespace {

using Question = PlayerInquiry::Question;

constexpr std::chrono::milliseconds kFigurePeriod{500};
constexpr std::chrono::milliseconds kAtOnce{0};

}  // namespace

SendPage::SendPage(VideoSource& source, SendPageView& view, Prompts& prompts,
                   const ExchangeServices& exchange, SendPlaces places)
    : source_(source),
      view_(view),
      prompts_(prompts),
      places_(std::move(places)),
      tick_(exchange.timers),
      inquiry_(exchange, [this](std::size_t player) { Answered(player); }),
      run_(source, *this, exchange, places_.videoTypeFile) {}

void SendPage::Enter(VideoSet set) {
    set_ = std::move(set);
    run_.TryAgain(set_.triesAgain);
    settings_.clear();
    if (!journal_) TakeLatest(LatestJournalIn(places_.journals));
    MakePlan();
}

void SendPage::Leave() {
    Stop();
    inquiry_.Cancel();
    source_.Close();
    tick_.Stop();
    Become(SendPhase::kIdle);
}

void SendPage::Become(SendPhase phase) {
    phase_ = phase;
    view_.StateChanged();
}

void SendPage::StateChanged() { view_.StateChanged(); }

void SendPage::MakePlan() {
    if (IsRunning()) return;
    hasRun_ = false;
    facts_.assign(set_.players.size(), {});
    plan_.reset();
    phase_ = set_.players.size() > 0 ? SendPhase::kPlanning : SendPhase::kIdle;
    ShowPlan();
    if (phase_ == SendPhase::kIdle) return;
    std::vector<Target> players;
    for (const UploadRow& row : Rows()) players.push_back(row.player.target);
    inquiry_.Ask(std::move(players),
                 {Question::kFreeSpace, Question::kVideos, Question::kControlProtocol});
    LookAtFiles(&SendPage::PlanIfKnown);
    view_.StateChanged();
}

/// They may have changed since they were chosen.
void SendPage::LookAtFiles(void (SendPage::*looked)()) {
    const std::vector<std::filesystem::path> files = FilesOf(set_);
    isLooking_ = !files.empty();
    if (!isLooking_) return (this->*looked)();
    source_.LookAt(files, [this, files, looked](const VideoSource::Sizes& sizes) {
        TakeFileSizes(set_, files, sizes);
        isLooking_ = false;
        (this->*looked)();
    });
}

void SendPage::Answered(std::size_t player) {
    if (phase_ == SendPhase::kProving) ProvePlayer(player);
    if (phase_ == SendPhase::kPlanning) return PlanIfKnown();
    if (phase_ == SendPhase::kProving && !inquiry_.IsAsking()) return ProofOver();
    view_.StateChanged();
}

void SendPage::PlanIfKnown() {
    if (phase_ == SendPhase::kPlanning && !isLooking_ && !inquiry_.IsAsking()) ComposePlan();
    view_.StateChanged();
}

/// With what is known by now.
void SendPage::ComposePlan() {
    phase_ = SendPhase::kIdle;
    for (std::size_t i = 0; i < set_.players.size(); ++i)
        Learn(Rows()[i].player.target, inquiry_.FactsOf(i));
    plan_.emplace(set_, facts_);
    ShowPlan();
}

/// In place of what the rows say of a run. Without a plan only the players are known.
void SendPage::ShowPlan() {
    batch_ = plan_ ? SendBatch(set_, *plan_) : SendBatch();
    proofs_.assign(batch_.Players().size(), {});
    run_.SetPlayers(plan_ ? plan_->Players() : BatchPlan(set_, facts_).Players());
    view_.BatchChanged();
}

/// What a run has come to stays until another one begins.
void SendPage::SkipPresent(bool wanted) {
    set_.skipsPresent = wanted;
    if (plan_) plan_.emplace(set_, facts_);
    if (plan_ && !hasRun_) ShowPlan();
    view_.StateChanged();
}

void SendPage::TryAgain(bool wanted) {
    set_.triesAgain = wanted;
    run_.TryAgain(wanted);
}

/// What players have cannot be skipped before they have told it.
bool SendPage::MayStart() const {
    const bool areAsked = std::ranges::all_of(facts_, &PlayerFacts::isAsked);
    return !MayStop() && set_.players.size() > 0 && (areAsked || !set_.skipsPresent);
}

void SendPage::Start() {
    if (!MayStart()) return;
    if (phase_ == SendPhase::kPlanning) ComposePlan();
    inquiry_.Cancel();
    if (!set_.skipsPresent) return BeginPlanned();
    Become(SendPhase::kStarting);
    LookAtFiles(&SendPage::BeginPlanned);
}

void SendPage::BeginPlanned() {
    plan_.emplace(set_, facts_);
    ShowPlan();
    runsPlan_ = true;
    BeginRun(plan_->Players());
}

void SendPage::SendFailed() {
    if (!MaySendFailed()) return;
    if (phase_ == SendPhase::kPlanning) ComposePlan();
    inquiry_.Cancel();
    if (!batch_.Has(failed_)) {
        batch_ = SendBatch(failed_);
        proofs_.assign(failed_.size(), {});
    }
    runsPlan_ = false;
    BeginRun(failed_);
}

void SendPage::BeginRun(std::vector<UploadPlayer> players) {
    journal_.emplace(places_.journals, players, places_.wallClock);
    before_ = settings_;
    KeepSettings();
    batch_.Begin(players);
    for (std::size_t i = 0; i < proofs_.size(); ++i)
        if (std::ranges::find(players, batch_.Players()[i], &UploadPlayer::target) != players.end())
            proofs_[i].reset();
    run_.SetPlayers(std::move(players));
    hasRun_ = true;
    view_.BatchChanged();
    Go();
    run_.Start();
}

void SendPage::Continue() {
    if (!MayContinue()) return;
    inquiry_.Cancel();
    proofs_.assign(batch_.Players().size(), {});
    batch_.Resume(Rows());
    view_.BatchChanged();
    Go();
    run_.Continue();
}

void SendPage::Go() {
    figures_.Begin(places_.clock());
    Become(SendPhase::kRunning);
    Tick();
}

/// What the players said before the run, beside its journal.
void SendPage::KeepSettings() {
    for (const auto& [address, text] : before_)
        // The run goes on without: only the comparison with it is lost.
        static_cast<void>(
            WriteFileAtomically(BesideJournal(journal_->Path(), address + ".json"), text));
}

void SendPage::Tick() {
    tick_.Start(kFigurePeriod, [this] { Tick(); });
    view_.StateChanged();
}

void SendPage::Stop() {
    if (IsRunning()) return run_.Stop();
    if (!MayStop()) return;
    source_.Close();
    Become(SendPhase::kIdle);
}

void SendPage::Heard(const UploadEvent& event) {
    journal_->Add(event);
    figures_.Take(event, run_.Rows(), places_.clock());
    for (const std::size_t video : batch_.Take(event)) view_.VideoChanged(video);
    if (event.kind == UploadEvent::Kind::kRunEnded)
        RunEnded(event.note.kind == UploadNote::Kind::kStopped);
}

/// The proof is a pass of its own, which begins once the run is over altogether.
void SendPage::RunEnded(bool isStopped) {
    tick_.Stop();
    TakeLatest({journal_->Journal()});
    Become(SendPhase::kIdle);
    if (!isStopped) tick_.Start(kAtOnce, [this] { Prove(); });
}

void SendPage::TakeLatest(LatestJournal latest) {
    latest_ = std::move(latest);
    failed_ = latest_.journal ? FailedIn(*latest_.journal) : std::vector<UploadPlayer>();
    if (latest_.journal && latest_.journal->Speed() > 0) lastSpeed_ = latest_.journal->Speed();
}

void SendPage::Prove() {
    if (!MayProve()) return;
    proofs_.assign(batch_.Players().size(), {});
    phase_ = SendPhase::kProving;
    inquiry_.Ask(batch_.Players(), {Question::kVideos, Question::kControlProtocol});
    view_.StateChanged();
}

void SendPage::ProvePlayer(std::size_t player) {
    const InquiryState state = inquiry_.StateOf(player);
    if (state == InquiryState::kWaiting || state == InquiryState::kAsking) return;
    const PlayerFacts& facts = inquiry_.FactsOf(player);
    const Target& target = batch_.Players()[player];
    const auto before = before_.find(target.ip);
    proofs_[player] = batch_.Prove(
        player, facts, before == before_.end() ? std::nullopt : std::optional(before->second));
    Learn(target, facts);
    for (std::size_t video = 0; video < batch_.Videos().size(); ++video) view_.VideoChanged(video);
    for (std::size_t row = 0; row < Rows().size(); ++row)
        if (Rows()[row].player.target == target) view_.PlayerChanged(row);
}

/// What a player says after a run is also what the next plan goes by, and what the next run is
/// compared with.
void SendPage::Learn(const Target& player, const PlayerFacts& facts) {
    if (facts.controlProtocol) settings_[player.ip] = *facts.controlProtocol;
    for (std::size_t i = 0; i < facts_.size(); ++i) {
        if (set_.players[i].ip != player.ip) continue;
        if (facts.isReached) facts_[i] = facts;
        facts_[i].isAsked |= facts.isAsked;
    }
}

void SendPage::ProofOver() {
    if (plan_) plan_.emplace(set_, facts_);
    if (plan_) batch_.Learn(set_, *plan_);
    view_.BatchChanged();
    Become(SendPhase::kIdle);
}

void SendPage::Export(const std::filesystem::path& path) {
    if (latest_.journal) KeepSettingsFile(path, JournalCsv(*latest_.journal), prompts_);
}

void SendPage::Handle(WindowMessage& message) {
    if (IsRunning())
        run_.Handle(message);
    else
        inquiry_.Handle(message);
}

std::string SendPage::ProofText(std::size_t row) const {
    const auto& players = batch_.Players();
    const auto found = std::ranges::find(players, Rows()[row].player.target);
    if (found == players.end()) return "";
    const auto& proof = proofs_[static_cast<std::size_t>(found - players.begin())];
    return proof ? proof->Text() : "";
}

/// After a stop nothing is being sent.
std::string SendPage::LineText() const {
    return run_.MayContinue() ? "" : sontaro::LineText(run_.Line());
}

/// While a run goes on, an earlier one's journal is beside the point.
std::string SendPage::SummaryText() const {
    const bool isKept = !journal_ || journal_->IsWhole();
    std::string text = IsRunning() && isKept ? "" : JournalText(latest_, isKept);
    AddSentence(text, PhaseText());
    return text;
}

std::string SendPage::PhaseText() const {
    if (phase_ == SendPhase::kRunning) return "";
    if (phase_ == SendPhase::kStarting || (phase_ == SendPhase::kPlanning && !inquiry_.IsAsking()))
        return LookingText();
    if (phase_ == SendPhase::kPlanning)
        return PlanningText(inquiry_.PlayersDone(), inquiry_.PlayerCount());
    if (!hasRun_) return plan_ ? PlanText(*plan_, facts_, lastSpeed_) : "";
    std::string text = ResultText(Rows());
    if (phase_ == SendPhase::kProving)
        AddSentence(text, ProvingText(inquiry_.PlayersDone(), inquiry_.PlayerCount()));
    return text;
}

std::string SendPage::PaceText() const {
    return IsRunning() ? sontaro::PaceText(figures_, run_.SilentSeconds(), places_.clock()) : "";
}

}  // namespace sontaro
