// The last page of the wizard without its window: plan, run, proof and journal.
#pragma once

#include "base/prompts.h"
#include "batchsend/batch_run.h"
#include "batchsend/player_inquiry.h"
#include "batchsend/send_batch.h"
#include "batchsend/send_page_view.h"
#include "settings/held_document.h"

namespace sontaro {

/// Asks the players before a run what it would do, runs it, and asks them afterwards what has
/// arrived. User-interface thread.
class SendPage : private BatchView {
   public:
    /// All references outlive the page.
    SendPage(VideoSource& source, SendPageView& view, Prompts& prompts,
             const ExchangeServices& exchange, SendPlaces places);

    /// The page is shown for this set, of which nothing has been sent; makes the plan.
    void Enter(VideoSet set);
    /// The page is left: whatever is under way is stopped.
    void Leave();
    /// Asks the players once more, and forgets what the rows say of the last run.
    void MakePlan();
    void SkipPresent(bool wanted);
    void TryAgain(bool wanted);

    /// Skipping goes by what the files are now: they are looked at first.
    void Start();
    void Continue();
    /// Ends a run, or keeps one from beginning.
    void Stop();
    /// Runs exactly what did not end well in the latest run, also of an earlier program.
    void SendFailed();
    void Prove();
    /// Writes the latest journal as a table to the file at `path`, and says whether that worked.
    void Export(const std::filesystem::path& path);
    /// Takes a message that the main window forwards.
    void Handle(WindowMessage& message);

    [[nodiscard]] SendPhase Phase() const { return phase_; }
    [[nodiscard]] bool MayStart() const;
    [[nodiscard]] bool MayStop() const { return IsRunning() || phase_ == SendPhase::kStarting; }
    [[nodiscard]] bool MayContinue() const { return run_.MayContinue(); }
    /// Whether `Start` would begin the run anew that was stopped, and not another one.
    [[nodiscard]] bool StartsAnew() const { return MayContinue() && runsPlan_; }
    [[nodiscard]] bool MaySendFailed() const { return !IsRunning() && !failed_.empty(); }
    [[nodiscard]] bool MayProve() const { return phase_ == SendPhase::kIdle && hasRun_; }
    [[nodiscard]] bool MayExport() const { return !IsRunning() && latest_.journal; }
    [[nodiscard]] bool MayPlan() const { return phase_ == SendPhase::kIdle; }
    [[nodiscard]] bool IsRunning() const { return phase_ == SendPhase::kRunning; }
    /// Whether a run has begun since the page was entered.
    [[nodiscard]] bool HasRun() const { return hasRun_; }
    [[nodiscard]] const VideoSet& Set() const { return set_; }
    [[nodiscard]] const SendBatch& Batch() const { return batch_; }
    [[nodiscard]] const std::vector<UploadRow>& Rows() const { return run_.Rows(); }
    /// What the player of that row has proved; empty: it has not been asked.
    [[nodiscard]] std::string ProofText(std::size_t row) const;
    /// Of the video in transfer.
    [[nodiscard]] double Percent() const { return run_.Percent(); }
    [[nodiscard]] const UploadFigures& Figures() const { return figures_; }

    /// The status line: what is sent, or that it is done.
    [[nodiscard]] std::string LineText() const;
    /// What there is to say of the journals, and what the plan or the last run has come to.
    [[nodiscard]] std::string SummaryText() const;
    /// Speed and time left, or for how long the player has said nothing.
    [[nodiscard]] std::string PaceText() const;

   private:
    void RowChanged(std::size_t player) override { view_.PlayerChanged(player); }
    void StateChanged() override;
    void Heard(const UploadEvent& event) override;
    void NamesGo(std::size_t player) override;
    void Pause(std::chrono::milliseconds time) override { view_.Pause(time); }

    void Answered(std::size_t player);
    void LookAtFiles(void (SendPage::*looked)());
    void PlanIfKnown();
    void ComposePlan();
    void ShowPlan();
    void BeginPlanned();
    void BeginRun(std::vector<UploadPlayer> players);
    void RunEnded(bool isStopped);
    void TakeLatest(LatestJournal latest);
    void ProvePlayer(std::size_t player);
    void Learn(const Target& player, const PlayerFacts& facts);
    void KeepSettings();
    void Tick();
    void Become(SendPhase phase);
    void ProofOver();
    void Go();
    [[nodiscard]] std::string PhaseText() const;

    VideoSource& source_;
    SendPageView& view_;
    Prompts& prompts_;
    const SendPlaces places_;
    VideoSet set_;
    std::vector<PlayerFacts> facts_;  // as they were heard last, by the set's players
    std::optional<BatchPlan> plan_;
    SendBatch batch_;
    std::vector<std::optional<PlayerProof>> proofs_;  // by the batch's players
    std::map<std::string, std::string> settings_;     // as heard last, by IP address
    std::map<std::string, std::string> before_;       // those of them that the run began with
    std::map<std::string, HeldDocument> held_;        // the same, as far as it is still there
    LatestJournal latest_;
    std::vector<UploadPlayer> failed_;  // in it
    double lastSpeed_ = 0;              // of the latest run, bytes a second
    bool hasRun_ = false;
    bool runsPlan_ = false;   // and not what failed earlier
    bool isLooking_ = false;  // at the files
    SendPhase phase_ = SendPhase::kIdle;
    std::optional<JournalWriter> journal_;
    UploadFigures figures_;
    Timer tick_;
    PlayerInquiry inquiry_;
    BatchRun run_;
};

}  // namespace sontaro
