#include "timeline/timeline_run.h"

#include <algorithm>
#include <utility>

#include "base/file.h"
#include "exchange/player_requests.h"
#include "settings/own_file.h"
#include "settings/settings_files.h"
#include "timeline/timeline_texts.h"

namespace sontaro {

namespace {

using State = TimelineState;

constexpr LocalText kSaved = {"配置完成！", "Changes have been saved!"};
constexpr LocalText kNotThePlayers = {
    "尚未读到播放器自己的时间轴。仍要发送这些命令吗？",
    "The player's own timeline has not been read. Send these commands all the same?"};
constexpr LocalText kDiscardQuestion = {
    "有修改尚未得到播放器确认，读取会用播放器的时间轴替换列表。继续吗？",
    "The player has not confirmed all changes, and reading puts its timeline in their place. "
    "Continue?"};
constexpr LocalText kWhichHolds = {
    "播放器的时间轴已到，但之前已打开了文件。用播放器的时间轴替换列表吗？",
    "The player's timeline has come, but a file was opened before. Put the player's timeline in "
    "its place?"};

/// The nodes whose numbers are not below `first`.
std::vector<TimelineChange::Copy> NodesFrom(NodeId first, const GroupOrder& order) {
    std::vector<TimelineChange::Copy> nodes;
    for (const SharedGroup& group : order)
        for (const GroupNode& node : group->nodes)
            if (node.id >= first) nodes.push_back({NodeOf(*group, node), node.others});
    return nodes;
}

}  // namespace

TimelineRun::TimelineRun(TimelineDocument& document, TimelineView& view, Prompts& prompts,
                         const ExchangeServices& exchange, Target player, VideoListSource videos)
    : document_(document),
      view_(view),
      prompts_(prompts),
      videos_(std::move(videos)),
      talk_(exchange, std::move(player),
            {[this](WindowMessage& message) { TakeUnasked(message); },
             [this] { view_.StateChanged(); }}),
      tests_(document, talk_, prompts, exchange.timers, [this] { view_.StateChanged(); }),
      confirmed_(document.CurrentState()) {}

/// The player may take its time, but the user is told.
Request TimelineRun::WaitOn(Request request) {
    waited_ = {};
    request.atLimit = [this](std::chrono::milliseconds waited) {
        waited_ = waited;
        view_.StateChanged();
        return AtLimit::kWaitOn;
    };
    return request;
}

void TimelineRun::Read() {
    if (reading_ && talk_.IsAsking()) return talk_.Repeat();
    if (HasUnsentChanges() && !prompts_.Confirm(Localized(kDiscardQuestion))) return;
    talk_.Cancel();
    firstNew_ = document_.NextId();
    opened_ = false;
    reading_ = true;
    if (list_ == VideoListState::kNotSupported) return AskForTimeline();
    AskForList();
}

/// Without its videos a timeline can be edited all the same: a player that does not send them in
/// time is asked for its timeline.
void TimelineRun::AskForList() {
    waited_ = {};
    Enter(State::kWaitingForList);
    talk_.Ask(videos_.ask(), [this](const Ended& ended) { ListEnded(ended); });
}

void TimelineRun::ListEnded(const Ended& ended) {
    switch (ended.how) {
        case End::kReply:
            list_ = videos_.take(AsText(PayloadOf(*ended.reply))) ? VideoListState::kRead
                                                                  : VideoListState::kUnreadable;
            break;
        case End::kNotSupported:  // the link closes: nothing can be asked over it
            list_ = VideoListState::kNotSupported;
            view_.ShowVideoList();
            return ReadFailed(ended);
        case End::kRefused:
        case End::kTimedOut: list_ = VideoListState::kMissing; break;
        case End::kNotSent:
        case End::kLinkEnded:
        case End::kCancelled: return ReadFailed(ended);
    }
    view_.ShowVideoList();
    AskForTimeline();
}

void TimelineRun::AskForTimeline() {
    Enter(State::kWaiting);
    talk_.Ask(WaitOn(ReadSettings(kBlockPlayerTimeline)),
              [this](const Ended& ended) { TimelineEnded(ended); });
}

void TimelineRun::TimelineEnded(const Ended& ended) {
    if (ended.how != End::kReply) return ReadFailed(ended);
    reading_ = false;
    waited_ = {};
    TakeTimeline(AsText(PayloadOf(*ended.reply)));
}

void TimelineRun::ReadFailed(const Ended& ended) {
    reading_ = false;
    waited_ = {};
    reason_ = ended.reason;
    switch (ended.how) {
        case End::kNotSupported: return Enter(State::kNotSupported);
        case End::kNotSent: return Enter(State::kUnreachable);
        case End::kLinkEnded: return Enter(State::kLinkLost);
        default: return;
    }
}

/// A timeline that cannot be used changes nothing, and must not be sent for the player's. Questions
/// take their time: the window may have sent something else meanwhile.
void TimelineRun::TakeTimeline(std::string_view text) {
    answered_ = true;
    held_.Learn(text);
    Result<TimelineContent> content =
        text.empty() ? TimelineContent() : document_.Read(text, TimelineSource::kPlayer);
    known_ = content.ok();
    if (!content) return Enter(State::kUnreadable);
    if (opened_ && !prompts_.Confirm(Localized(kWhichHolds))) return Enter(State::kForeign);
    Replace(std::move(*content));
}

/// What was added is done again, and can be undone by itself.
void TimelineRun::Replace(TimelineContent content) {
    TimelineChange added;
    if (!opened_) added.copied = NodesFrom(firstNew_, document_.Order());
    const bool losesNothing = added.copied.size() == document_.NodeCount();
    document_.Replace(std::move(content));
    if (losesNothing) document_.ForgetSteps();
    confirmed_ = document_.CurrentState();
    document_.Apply(added);
    opened_ = false;
    firstNew_ = document_.NextId();
    view_.ShowNodes();
    Settle(State::kRead);
}

/// A timeline that comes by itself is one all the same. What the user has changed is not lost
/// without a question.
void TimelineRun::TakeUnasked(WindowMessage& message) {
    const Verdict verdict = ReadSettings(kBlockPlayerTimeline).judge(message);
    const Bytes payload(PayloadOf(message).begin(), PayloadOf(message).end());
    if (verdict.kind != Verdict::Kind::kReply || payload.empty() || reading_) return;
    if (HasUnsentChanges() && !opened_ && !prompts_.Confirm(Localized(kDiscardQuestion))) return;
    TakeTimeline(AsText(payload));
}

void TimelineRun::Changed() {
    if (!HasUnsentChanges()) return Enter(known_ ? settled_ : state_);
    if (known_) return Enter(State::kChanged);
    Enter(opened_ ? State::kForeign : state_);
}

/// Whatever is being waited for is given up: its answer would be about something else.
void TimelineRun::Save() {
    if (!MaySend()) return;
    if (document_.IsTooLong()) return prompts_.Warn(Localized(kTooManyCommands));
    if (!known_ && !prompts_.Confirm(Localized(kNotThePlayers))) return;
    talk_.Cancel();
    reading_ = false;
    const auto text = std::make_shared<const std::string>(document_.Write());
    const TimelineDocument::State state = document_.CurrentState();
    Enter(State::kSent);
    held_.GiveUp();
    talk_.Ask(WaitOn(WriteSettings(kBlockPlayerTimeline, *text)),
              [this, text, state](const Ended& ended) { SendEnded(text, state, ended); });
}

void TimelineRun::SendEnded(const std::shared_ptr<const std::string>& sent,
                            TimelineDocument::State state, const Ended& ended) {
    waited_ = {};
    held_.SendingEnded(ended.how, *sent);
    reason_ = ended.reason;
    switch (ended.how) {
        case End::kReply: break;
        case End::kRefused:
        case End::kNotSupported: return Enter(State::kNotSupported);
        case End::kNotSent: return Enter(State::kNotSent);
        case End::kLinkEnded: return Enter(State::kUnconfirmed);
        case End::kTimedOut:
        case End::kCancelled: return;
    }
    known_ = answered_ = true;
    opened_ = false;
    confirmed_ = state;
    Settle(State::kComparing);
    talk_.Ask(WaitOn(ReadSettings(kBlockPlayerTimeline)),
              [this, sent](const Ended& read) { Compare(*sent, read); });
    prompts_.Inform(Localized(kSaved));
}

void TimelineRun::Compare(const std::string& sent, const Ended& ended) {
    waited_ = {};
    if (ended.how == End::kCancelled) return;
    if (ended.how != End::kReply) return Settle(State::kUncompared);
    const std::string_view held = AsText(PayloadOf(*ended.reply));
    held_.Learn(held);
    difference_ = {};
    if (held == sent) return Settle(State::kEqual);
    NameTable names;
    const auto ours = ReadTimeline(sent, TimelineSource::kPlayer, names);
    const auto theirs =
        held.empty() ? TimelineContent() : ReadTimeline(held, TimelineSource::kPlayer, names);
    if (!theirs) return Settle(State::kUncompared);
    difference_ = sontaro::Compare(ours->order, theirs->order);
    Settle(difference_.IsNone() ? State::kEqual : State::kDifferent);
}

void TimelineRun::OpenFile(const std::filesystem::path& path) {
    const Result<std::string> text = ReadFile(path);
    const Status taken =
        text ? document_.Take(*text, TimelineSource::kFile) : Error{Localized(kFileUnreadable)};
    if (!taken) return TellFileRefused(path, taken.reason(), prompts_);
    FileTaken();
}

void TimelineRun::OpenEarlier(const std::string& text) {
    if (!document_.Take(text, TimelineSource::kFile))
        return prompts_.Warn(Localized(kEarlierUnusable));
    FileTaken();
}

void TimelineRun::FileTaken() {
    opened_ = true;
    view_.ShowNodes();
    Changed();
}

void TimelineRun::SaveFile(const std::filesystem::path& path) {
    KeepSettingsFile(path, document_.Write(), prompts_);
}

int TimelineRun::SecondsWithoutAnswer() const {
    return static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(waited_).count());
}

/// What is told as long as nothing is changed.
void TimelineRun::Settle(TimelineState state) {
    settled_ = state;
    Changed();
}

void TimelineRun::Enter(TimelineState state) {
    state_ = state;
    view_.StateChanged();
}

}  // namespace sontaro
