// The way of a timeline from a player into a dialog and back, without the dialog.
#pragma once

#include <filesystem>

#include "settings/held_document.h"
#include "timeline/timeline_difference.h"
#include "timeline/timeline_tests.h"
#include "timeline/timeline_view.h"

namespace sontaro {

/// Asks a player for its videos and its timeline, takes files, and sends the timeline back; once
/// that is confirmed, it asks for it again and compares. Nodes that the user has added while the
/// player was being asked are inserted into what it sends. User-interface thread.
class TimelineRun {
   public:
    /// All references outlive the run.
    TimelineRun(TimelineDocument& document, TimelineView& view, Prompts& prompts,
                const ExchangeServices& exchange, Target player, VideoListSource videos);

    /// Has `keep` called with what the player holds when that is about to be written over.
    void KeepBy(HeldDocument::Keep keep) { held_.KeepBy(std::move(keep)); }

    /// Asks the player for all of it; again, when that has been done before.
    void Read();
    /// Takes a message that the main window forwards.
    void Handle(WindowMessage& message) { talk_.Take(message); }
    /// The user has changed, undone or done again something.
    void Changed();
    /// The user has pressed OK; does nothing unless `MaySend`.
    void Save();
    /// Takes the timeline of a file in place of all nodes, or says which file cannot be read and
    /// why, and changes nothing.
    void OpenFile(const std::filesystem::path& path);
    /// The same for a timeline that the player held earlier.
    void OpenEarlier(const std::string& text);
    /// Writes the timeline to a file and says whether that worked.
    void SaveFile(const std::filesystem::path& path);

    /// What the player holds; none while that is not known.
    [[nodiscard]] const std::optional<std::string>& Held() const { return held_.Text(); }
    [[nodiscard]] TimelineState State() const { return state_; }
    [[nodiscard]] VideoListState VideoList() const { return list_; }
    [[nodiscard]] NotSent LastReason() const { return reason_; }
    /// What the player's timeline was found to differ in when it was last compared.
    [[nodiscard]] const TimelineDifference& Difference() const { return difference_; }
    /// Seconds that an answer is overdue, counted from the question; 0 while there is time.
    [[nodiscard]] int SecondsWithoutAnswer() const;
    [[nodiscard]] bool IsConnected() const { return talk_.Connection() != 0; }
    /// Whether the player has answered with a timeline, whatever it was, or a file was opened.
    [[nodiscard]] bool MaySend() const { return answered_ || opened_; }
    /// Whether there is something that the player has not confirmed.
    [[nodiscard]] bool HasUnsentChanges() const { return document_.CurrentState() != confirmed_; }
    [[nodiscard]] TimelineTests& Tests() { return tests_; }
    [[nodiscard]] const TimelineTests& Tests() const { return tests_; }

   private:
    [[nodiscard]] Request WaitOn(Request request);
    void AskForList();
    void ListEnded(const Ended& ended);
    void AskForTimeline();
    void TimelineEnded(const Ended& ended);
    void TakeTimeline(std::string_view text);
    void Replace(TimelineContent content);
    void TakeUnasked(WindowMessage& message);
    void SendEnded(const std::shared_ptr<const std::string>& sent, TimelineDocument::State state,
                   const Ended& ended);
    void Compare(const std::string& sent, const Ended& ended);
    void ReadFailed(const Ended& ended);
    void FileTaken();
    void Enter(TimelineState state);
    void Settle(TimelineState state);

    TimelineDocument& document_;
    TimelineView& view_;
    Prompts& prompts_;
    const VideoListSource videos_;
    Conversation talk_;
    TimelineTests tests_;
    HeldDocument held_;
    TimelineState state_ = TimelineState::kWaitingForList;
    TimelineState settled_ = TimelineState::kRead;  // while nothing has been changed
    VideoListState list_ = VideoListState::kNone;
    NotSent reason_{};
    TimelineDifference difference_;
    std::chrono::milliseconds waited_{0};
    bool reading_ = false;
    bool answered_ = false;  // with a timeline, whatever it was
    bool opened_ = false;    // a file, since the player was asked
    bool known_ = false;     // what the player holds
    NodeId firstNew_ = 1;    // of the nodes that were added since the player was asked
    TimelineDocument::State confirmed_;
};

}  // namespace sontaro
