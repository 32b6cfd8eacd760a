// The way of a video wall from its players into the wizard and back, without the wizard.
#pragma once

#include <algorithm>

#include "base/json_file.h"
#include "base/prompts.h"
#include "exchange/conversation.h"
#include "screensplit/split_document.h"
#include "screensplit/split_status.h"
#include "settings/held_document.h"

namespace sontaro {

/// What the procedure asks of its window.
class SplitView {
   public:
    virtual ~SplitView() = default;
    /// Any row and any tile may be another one: shows them anew.
    virtual void ShowWall() = 0;
    /// What is to be told, or what may be pressed, has changed.
    virtual void StateChanged() = 0;
};

/// Fetches blocks and configuration of players, and sends the new configuration to all of them. It
/// stops at the first player that does not do its part; what was fetched or confirmed until then
/// stays. User-interface thread.
class SplitRun {
   public:
    /// Keeps what a player holds, and comes back at once.
    using Keep = std::function<void(const DeviceRecord& player, std::string text)>;

    /// All references outlive the run.
    SplitRun(SplitDocument& document, SplitView& view, Prompts& prompts, JsonFile& preferences,
             const ExchangeServices& exchange);

    /// Has `keep` called for every player whose document is known and about to be written over.
    void KeepBy(Keep keep) { keep_ = std::move(keep); }

    /// The page is entered with these players, in this order: begins to fetch. Another set of them
    /// is another document; of the same set the wall stays as it was arranged.
    void Enter(std::vector<DeviceRecord> players);
    /// The page is left: nothing is waited for any more.
    void Leave();
    /// Takes up the task that has stopped, at the player where it did. When what is shown is no
    /// longer what the others have confirmed, sending begins with the first player.
    void Retry();
    /// The user has changed, undone or done again something.
    void Changed();
    /// Lays out what slots and direction say, or tells why not.
    bool ApplyOrder();
    /// Sends the document to all players; does nothing unless `MayFinish`. An order that has not
    /// been applied is applied first.
    void Finish();
    /// Takes a message that the main window forwards.
    void Handle(WindowMessage& message);

    [[nodiscard]] SplitTask Task() const { return task_; }
    [[nodiscard]] SplitStepState StepState() const { return state_; }
    /// None while there is nothing to wait for.
    [[nodiscard]] const std::optional<SplitProgress>& Progress() const { return progress_; }
    [[nodiscard]] const std::optional<SplitFailure>& Failure() const { return failure_; }
    [[nodiscard]] bool IsBusy() const { return task_ != SplitTask::kNone; }
    [[nodiscard]] bool MayRetry() const { return failure_.has_value(); }
    [[nodiscard]] bool MayFinish() const {
        return !IsBusy() && !talks_.empty() && document_.HasConfiguration();
    }
    [[nodiscard]] SplitStatus Status() const;
    /// Which player was asked last; only while it is busy.
    [[nodiscard]] std::size_t AskedDevice() const { return std::min(index_, devices_.size() - 1); }
    /// The player whose document is shown; only when there are any.
    [[nodiscard]] const DeviceRecord& LastPlayer() const { return devices_.back().record; }
    /// What that one holds; none while it is not known.
    [[nodiscard]] std::optional<std::string> HeldByLast() const;
    /// The address of a player of the task.
    [[nodiscard]] const std::string& AddressOf(std::size_t device) const {
        return devices_[device].record.ip;
    }

   private:
    void BeginFetching();
    void FetchBlock();
    void TakeBlock(const Ended& ended);
    void FetchDocument();
    void TakeDocument(const Ended& ended);
    void CompareNext(std::size_t device);
    [[nodiscard]] bool MaySendToAll();
    void BeginSending();
    void SendNext();
    void Confirmed(const Ended& ended);
    void Complete();
    void Begin(SplitTask task, std::size_t range);
    void EndTask();
    void Fail(SplitFailure::Why why, Ended ended = {});
    void ConnectAnew();
    void Ask(Request request, void (SplitRun::*take)(const Ended&));
    [[nodiscard]] Request WithQuestion(Request request);

    SplitDocument& document_;
    SplitView& view_;
    Prompts& prompts_;
    JsonFile& preferences_;
    const ExchangeServices exchange_;
    std::vector<SplitDevice> devices_;
    std::vector<std::unique_ptr<Conversation>> talks_;  // one for each device
    Keep keep_ = [](const DeviceRecord&, const std::string&) {};
    std::vector<HeldDocument> held_;  // by device
    SplitTask task_ = SplitTask::kNone;
    SplitStepState state_ = SplitStepState::kRunning;
    std::size_t index_ = 0;  // of the device that is being asked
    std::optional<SplitProgress> progress_;
    std::optional<SplitFailure> failure_;
    bool settingsAgree_ = false;  // all players are known to have the same advanced and fixed ones
    std::string sent_;
    std::optional<Json::Value> sentWall_;  // to be remembered once all have confirmed it
    std::vector<bool> confirmed_;          // of `sent_`, by device
    Withdrawal sendAgain_;                 // of the question
};

}  // namespace sontaro
