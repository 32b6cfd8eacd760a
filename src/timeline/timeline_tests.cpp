#include "timeline/timeline_tests.h"

#include <fmt/chrono.h>
#include <fmt/printf.h>

#include "base/local_text.h"
#include "exchange/player_requests.h"
#include "timeline/timeline_texts.h"

namespace sontaro {

namespace {

constexpr LocalText kSingle = {"发送单条命令！", "Send a single command!"};
constexpr LocalText kEmpty = {"命令不能为空！", "Command cannot be empty!"};

constexpr LocalText kSent = {"%s 已发送（%d/%d）：%s", "%s sent (%d of %d): %s"};
constexpr LocalText kNotSent = {"%s 未能发送（%d/%d）：%s", "%s could not be sent (%d of %d): %s"};
constexpr LocalText kNothing = {"%s 没有命令，已跳过（%d/%d）：%s",
                                "%s has no command, passed over (%d of %d): %s"};

const LocalText& TextOf(TestReport::Outcome outcome) {
    switch (outcome) {
        case TestReport::Outcome::kSent: return kSent;
        case TestReport::Outcome::kNotSent: return kNotSent;
        case TestReport::Outcome::kNoCommand: break;
    }
    return kNothing;
}

}  // namespace

SharedPacket TestPacket(const TimeNode& node) {
    constexpr std::uint32_t kTest = kBlockPlayerTimeline | std::uint32_t{2} << 16;
    return ReadyPacket(kCommandSettings, kTest, TestText(node));
}

std::string TestReport::Told() const {
    const auto clock = fmt::localtime(std::chrono::system_clock::to_time_t(time));
    std::string what = PlayerName(node.player) + ' ' + Localized(PortName(node.port));
    if (IsNetworkPort(node.port)) what += fmt::format(" {}:{}", node.ip, node.peerPort);
    return fmt::sprintf(Localized(TextOf(outcome)), fmt::format("{:%H:%M:%S}", clock), number,
                        count, what + ' ' + node.command);
}

TimelineTests::TimelineTests(const TimelineDocument& document, Conversation& talk, Prompts& prompts,
                             Timers& timers, std::function<void()> reported)
    : document_(document),
      talk_(talk),
      prompts_(prompts),
      reported_(std::move(reported)),
      next_(timers) {}

void TimelineTests::TestOne(NodeId id) {
    const std::weak_ptr alive = alive_;
    if (!document_.Find(id)) return;
    const TestReport::Outcome outcome = Send(id, 1, 1);
    if (alive.expired()) return;
    if (outcome == TestReport::Outcome::kSent) prompts_.Inform(Localized(kSingle));
    if (outcome == TestReport::Outcome::kNoCommand) prompts_.Warn(Localized(kEmpty));
}

void TimelineTests::TestAll(const NodeIds& ids, std::chrono::milliseconds gap) {
    const NodeIds there = document_.Existing(ids);
    waiting_.assign(there.begin(), there.end());
    count_ = there.size();
    gap_ = gap;
    SendNext();
}

void TimelineTests::Stop() {
    waiting_.clear();
    next_.Stop();
    reported_();
}

/// Connecting may take its time, and a box may be open meanwhile: the window may be gone
/// afterwards.
TestReport::Outcome TimelineTests::Send(NodeId id, std::size_t number, std::size_t count) {
    using Outcome = TestReport::Outcome;
    TestReport report{Outcome::kNoCommand,
                      {},
                      document_.Find(id).value_or(TimeNode()),
                      number,
                      count,
                      std::chrono::system_clock::now()};
    if (!report.node.command.empty()) {
        const std::weak_ptr alive = alive_;
        const Sending sending = talk_.Post(TestPacket(report.node));
        if (alive.expired()) return Outcome::kNotSent;
        report.outcome = sending ? Outcome::kSent : Outcome::kNotSent;
        report.reason = sending.Reason();
    }
    last_ = report;
    reported_();
    return report.outcome;
}

void TimelineTests::SendNext() {
    if (waiting_.empty()) return reported_();
    const std::size_t number = count_ - waiting_.size() + 1;
    const NodeId id = waiting_.front();
    waiting_.pop_front();
    if (!waiting_.empty()) next_.Start(gap_, [this] { SendNext(); });
    const std::weak_ptr alive = alive_;
    const TestReport::Outcome outcome = Send(id, number, count_);
    if (!alive.expired() && outcome == TestReport::Outcome::kNotSent) Stop();
}

}  // namespace sontaro
