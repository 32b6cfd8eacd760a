#include "screensplit/split_run.h"

#include <fmt/printf.h>

#include <algorithm>
#include <utility>

#include "devices/device_rules.h"
#include "exchange/player_requests.h"
#include "screensplit/split_memory.h"

namespace sontaro {

namespace {

constexpr std::chrono::milliseconds kLimit{3000};
constexpr int kMostRepeats = 3;
constexpr std::uint16_t kLeastPort = 1025;

constexpr LocalText kNotCorrected = {"请先调整几何校正和融合",
                                     "Please adjust geometric correction and fusion first"};
constexpr LocalText kCompleted = {"屏幕分割参数设置完成", "Screen split param setup completed"};
constexpr LocalText kSendAgain = {"%s 尚未确认。再次发送吗？", "%s has not confirmed. Send again?"};
constexpr LocalText kSameForAll = {
    "请注意：%s 的高级参数和固定参数将发送到全部 %d 台播放器。继续吗？",
    "Please note: the advanced and fixed values of %s go to all %d players. Continue?"};

bool IsSameSet(const std::vector<SplitDevice>& devices, const std::vector<DeviceRecord>& players) {
    return std::ranges::equal(devices, players, [](const SplitDevice& a, const DeviceRecord& b) {
        return a.record.ip == b.ip && a.record.id == b.id;
    });
}

/// Reading may be repeated without a word.
Request WithRepeats(Request request) {
    request.limit = kLimit;
    request.atLimit = [left = std::make_shared<int>(kMostRepeats)](auto) {
        return (*left)-- > 0 ? AtLimit::kRepeat : AtLimit::kEnd;
    };
    return request;
}

}  // namespace

SplitRun::SplitRun(SplitDocument& document, SplitView& view, Prompts& prompts,
                   JsonFile& preferences, const ExchangeServices& exchange)
    : document_(document),
      view_(view),
      prompts_(prompts),
      preferences_(preferences),
      exchange_(exchange) {}

void SplitRun::Enter(std::vector<DeviceRecord> players) {
    const bool isSame = IsSameSet(document_.Devices(), players);
    if (!isSame) document_.SetDevices({});
    document_.ForgetConfiguration();
    devices_.clear();
    held_.assign(players.size(), {});
    for (std::size_t i = 0; i < players.size(); ++i)
        held_[i].KeepBy(
            [this, i](std::string text) { keep_(devices_[i].record, std::move(text)); });
    for (DeviceRecord& player : players) devices_.push_back({std::move(player)});
    index_ = 0;
    sent_.clear();
    confirmed_.clear();
    settingsAgree_ = false;
    failure_.reset();
    view_.ShowWall();  // at once: what a picture shows of the names is no longer there
    ConnectAnew();
    BeginFetching();
}

void SplitRun::Leave() {
    talks_.clear();
    sendAgain_.Withdraw();
    failure_.reset();
    EndTask();
}

void SplitRun::Retry() {
    if (!failure_) return;
    const SplitTask task = failure_->task;
    index_ = failure_->device;
    ConnectAnew();
    switch (task) {
        case SplitTask::kNone: return;
        case SplitTask::kFetchBlocks: return BeginFetching();
        case SplitTask::kFetchDocument: return FetchDocument();
        case SplitTask::kSend: break;
    }
    if (document_.Write() != sent_) return Finish();
    BeginSending();
}

/// Every link is closed, so that each player gets one of its own: nine are free then. What an
/// earlier attempt has asked for comes over another connection.
void SplitRun::ConnectAnew() {
    failure_.reset();
    talks_.clear();
    view_.StateChanged();
    const auto closing = std::make_shared<const Bytes>();
    if (!devices_.empty()) exchange_.channel.Send({}, closing, Boxes::kMuted);
    for (const SplitDevice& device : devices_)
        talks_.push_back(std::make_unique<Conversation>(
            exchange_, Target{device.record.ip, device.record.tcpPort, 0},
            Conversation::Listener{}));
}

void SplitRun::Begin(SplitTask task, std::size_t range) {
    task_ = task;
    state_ = SplitStepState::kRunning;
    progress_ = SplitProgress{index_, range};
    failure_.reset();
    view_.StateChanged();
}

void SplitRun::EndTask() {
    task_ = SplitTask::kNone;
    state_ = SplitStepState::kEnded;
    progress_.reset();
    view_.StateChanged();
}

void SplitRun::Fail(SplitFailure::Why why, Ended ended) {
    ended.reply = nullptr;
    failure_ = SplitFailure{task_, index_, why, ended};
    EndTask();
}

/// What has no address, or a port that players do not have, is not asked at all.
void SplitRun::Ask(Request request, void (SplitRun::*take)(const Ended&)) {
    const DeviceRecord& player = devices_[index_].record;
    if (player.ip.empty() || player.tcpPort < kLeastPort)
        return Fail(SplitFailure::Why::kNotAnswered, {End::kNotSent, 0, NotSent::kConnectFailed});
    talks_[index_]->Ask(std::move(request), [this, take](const Ended& ended) {
        sendAgain_.Withdraw();
        if (ended.how == End::kCancelled) return;
        if (task_ == SplitTask::kSend) held_[index_].SendingEnded(ended.how, sent_);
        if (ended.how != End::kReply) return Fail(SplitFailure::Why::kNotAnswered, ended);
        (this->*take)(ended);
    });
}

/// A configuration is not sent twice without the user's knowing.
Request SplitRun::WithQuestion(Request request) {
    request.limit = kLimit;
    request.atLimit = [this](auto) {
        const std::string question = fmt::sprintf(Localized(kSendAgain), AddressOf(index_));
        return prompts_.ConfirmUnlessSettled(question, sendAgain_) ? AtLimit::kRepeat
                                                                   : AtLimit::kEnd;
    };
    return request;
}

void SplitRun::BeginFetching() {
    if (devices_.empty()) return;
    Begin(SplitTask::kFetchBlocks, devices_.size());
    FetchBlock();
}

void SplitRun::FetchBlock() { Ask(WithRepeats(AskParameterBlock()), &SplitRun::TakeBlock); }

void SplitRun::TakeBlock(const Ended& ended) {
    const auto& block = std::get<std::unique_ptr<ParameterBlock>>(ended.reply->record);
    SplitDevice& device = devices_[index_];
    device.params = SplitDeviceParams(*block);
    if (!device.params.IsCorrected()) {
        Fail(SplitFailure::Why::kNotCorrected);
        return prompts_.Warn(Localized(kNotCorrected));
    }
    progress_->position = ++index_;
    view_.StateChanged();
    if (index_ < devices_.size()) return FetchBlock();
    document_.SetDevices(devices_);
    view_.ShowWall();
    index_ = devices_.size() - 1;
    FetchDocument();
}

void SplitRun::FetchDocument() {
    Begin(SplitTask::kFetchDocument, devices_.size());
    progress_->position = devices_.size();
    state_ = SplitStepState::kQueued;
    Ask(WithRepeats(ReadScreenSplit()), &SplitRun::TakeDocument);
}

void SplitRun::TakeDocument(const Ended& ended) {
    const std::string_view text = AsText(PayloadOf(*ended.reply));
    held_[index_].Learn(text);
    auto configuration = SplitConfiguration::Read(text);
    if (!configuration) return Fail(SplitFailure::Why::kUnreadable);
    document_.SetConfiguration(std::move(*configuration));
    EndTask();
    view_.ShowWall();
    settingsAgree_ = false;
    CompareNext(0);
}

/// Only the last player is asked for what is shown. What the others hold is asked in passing, and
/// no box is shown for it: it is going to be replaced. One that does not say it may have anything.
void SplitRun::CompareNext(std::size_t device) {
    if (device + 1 >= devices_.size()) {
        settingsAgree_ = true;
        return;
    }
    Request request = ReadScreenSplit();
    request.limit = kLimit;
    request.boxes = Boxes::kMuted;
    talks_[device]->Ask(std::move(request), [this, device](const Ended& ended) {
        if (ended.how != End::kReply) return;
        const std::string_view text = AsText(PayloadOf(*ended.reply));
        held_[device].Learn(text);
        if (!document_.HasConfiguration()) return;
        const auto theirs = SplitConfiguration::Read(text);
        if (theirs && theirs->HasSettingsOf(document_.Configuration())) CompareNext(device + 1);
    });
}

void SplitRun::Changed() {
    view_.ShowWall();
    view_.StateChanged();
}

bool SplitRun::ApplyOrder() {
    const auto refusal = document_.ApplyOrder();
    Changed();
    if (refusal) prompts_.Warn(Localized(*refusal));
    return !refusal;
}

void SplitRun::Finish() {
    if (!MayFinish()) return;
    if (!document_.IsSettled() && !ApplyOrder()) return;
    if (document_.WallLength() == 0)
        return prompts_.Warn(Localized(*RefusalOfChoice(ChoiceMode::kMultiple, 0)));
    if (!MaySendToAll() || !MayFinish()) return;  // the page may be left under the question
    sent_ = document_.Write();
    sentWall_ = document_.IsLaidOut() ? WallToJson(document_) : std::nullopt;
    confirmed_.assign(devices_.size(), false);
    index_ = 0;
    BeginSending();
}

bool SplitRun::MaySendToAll() {
    return settingsAgree_ ||
           prompts_.Confirm(
               fmt::sprintf(Localized(kSameForAll), devices_.back().record.ip, devices_.size()));
}

/// All players get the same document, whatever is changed meanwhile. A question that is open in
/// passing is of no interest any more.
void SplitRun::BeginSending() {
    for (const auto& talk : talks_) talk->Cancel();
    Begin(SplitTask::kSend, devices_.size());
    SendNext();
}

void SplitRun::SendNext() {
    state_ = SplitStepState::kQueued;
    held_[index_].GiveUp();
    Ask(WithQuestion(WriteScreenSplit(sent_)), &SplitRun::Confirmed);
}

void SplitRun::Confirmed(const Ended&) {
    confirmed_[index_] = true;
    progress_->position = ++index_;
    state_ = SplitStepState::kEnded;
    view_.StateChanged();
    if (index_ == devices_.size()) return Complete();
    state_ = SplitStepState::kRunning;
    SendNext();
}

void SplitRun::Complete() {
    settingsAgree_ = true;
    if (sentWall_) RememberWall(*sentWall_, preferences_);
    EndTask();
    prompts_.Inform(Localized(kCompleted));
}

std::optional<std::string> SplitRun::HeldByLast() const {
    return held_.empty() ? std::nullopt : held_.back().Text();
}

void SplitRun::Handle(WindowMessage& message) {
    for (const auto& talk : talks_)
        if (talk->Take(message)) return;  // which may have done away with all of them
}

SplitStatus SplitRun::Status() const {
    using Kind = SplitStatus::Kind;
    SplitStatus status{Kind::kNone, devices_.size()};
    if (!document_.HasConfiguration()) return status;
    if (!confirmed_.empty() && document_.Write() == sent_) {
        status.kind = Kind::kSent;
        for (std::size_t i = 0; i < devices_.size(); ++i)
            if (!confirmed_[i]) status.unconfirmed.push_back(AddressOf(i));
    } else if (std::ranges::find(confirmed_, true) == confirmed_.end() && document_.IsAsFetched()) {
        status.kind = Kind::kAsFetched;
    } else {
        status.kind = document_.IsSettled() ? Kind::kEdited : Kind::kNotApplied;
    }
    return status;
}

}  // namespace sontaro
