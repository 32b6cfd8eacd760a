// The upload of videos to many players, one after another, without its page.
#pragma once

#include <map>

#include "batchsend/player_upload.h"

namespace sontaro {

/// What the procedure asks of its page.
class BatchView {
   public:
    virtual ~BatchView() = default;
    /// What is told of a player has changed.
    virtual void RowChanged(std::size_t player) = 0;
    /// What may be pressed, the status line or the figures have changed.
    virtual void StateChanged() = 0;
    virtual void Heard(const UploadEvent& event) = 0;
    /// Blocks the thread for so long: players are not spoken to any sooner after one another.
    virtual void Pause(std::chrono::milliseconds time) = 0;
};

/// Serves the players in their order. What goes on after the end of a player's turn is the news
/// that its link has ended. No box is shown meanwhile. User-interface thread.
class BatchRun : private UploadOwner {
   public:
    /// Between two players.
    static constexpr std::chrono::milliseconds kPause{2000};

    /// All references outlive the run. `document` is the file of the video categories, which need
    /// not exist.
    BatchRun(VideoSource& source, BatchView& view, const ExchangeServices& exchange,
             std::filesystem::path document);
    ~BatchRun() override;
    BatchRun(const BatchRun&) = delete;
    BatchRun& operator=(const BatchRun&) = delete;

    /// Other players and videos, of which nothing has been sent. Not during a run.
    void SetPlayers(std::vector<UploadPlayer> players);
    /// What failed is sent once more at the end of a run.
    void TryAgain(bool wanted) { triesAgain_ = wanted; }

    /// Begins with the first player; does nothing during a run, or without players.
    void Start();
    /// Takes up the run that was stopped, with the video that was in flight.
    void Continue();
    void Stop();
    /// Takes a message that the main window forwards.
    void Handle(WindowMessage& message);

    [[nodiscard]] bool IsRunning() const { return running_; }
    [[nodiscard]] bool MayContinue() const { return stopped_ && !running_; }
    [[nodiscard]] const std::vector<UploadRow>& Rows() const { return rows_; }
    /// The player that is served, or was when the run was stopped.
    [[nodiscard]] std::size_t CurrentPlayer() const { return current_; }
    [[nodiscard]] const UploadLine& Line() const { return line_; }
    /// Of the video in transfer.
    [[nodiscard]] double Percent() const { return percent_; }
    /// Since the last answer of the player that is served.
    [[nodiscard]] int SilentSeconds() const { return upload_ ? upload_->SilentSeconds() : 0; }

   private:
    /// What the end of a link that has been dropped is waited for.
    struct OwedEnd {
        ConnectionNumber connection = 0;  ///< 0: there was none, and the run goes on by itself
    };

    using SizeOfFile = std::map<std::filesystem::path, Result<std::uint64_t>>;

    void Heard(UploadEvent event) override;
    void Changed() override;
    void Ended(UploadStatus status, UploadNote note) override;

    void Begin();
    void Look();
    void Plan(const SizeOfFile& sizes);
    void PlanRow(std::size_t player, const SizeOfFile& sizes);
    void Tick();
    void Serve();
    void TakeEnd(const Origin& origin);
    void EndPlayer(UploadStatus status, UploadNote note);
    void FailVideosInFlight(const UploadNote& note);
    void GoOn();
    void NoteLooking(bool isLooking);
    void SkipEnded();
    [[nodiscard]] bool BeginSecondRound();
    void ServeNext();
    void Finish();
    void CloseLinks();

    VideoSource& source_;
    BatchView& view_;
    const ExchangeServices exchange_;
    const std::filesystem::path document_;
    std::vector<UploadRow> rows_;
    std::size_t current_ = 0;
    std::unique_ptr<PlayerUpload> upload_;  // of the current player; stays until the next one's
    std::optional<OwedEnd> owed_;
    bool running_ = false;
    bool stopped_ = false;
    bool triesAgain_ = false;
    bool isSecondRound_ = false;
    UploadLine line_;
    double percent_ = 0;
    Timer tick_;
    Timer self_;                        // the end that no link tells
    ExchangeHub::Subscription muting_;  // between two players nobody else listens
};

}  // namespace sontaro
