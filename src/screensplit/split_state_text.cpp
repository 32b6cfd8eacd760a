#include "screensplit/split_state_text.h"

#include <fmt/printf.h>

#include "screensplit/split_run.h"
#include "widgets/common_texts.h"
#include "widgets/exchange_texts.h"

namespace sontaro {

namespace {

using Kind = SplitStatus::Kind;
using Why = SplitFailure::Why;

constexpr LocalText kFailed = {"%s：%s", "%s: %s"};
constexpr LocalText kNotCorrected = {"尚未调整几何校正和融合。",
                                     "geometric correction and fusion have not been adjusted."};
constexpr LocalText kUnreadable = {"发来的配置无法读取。",
                                   "the configuration that it has sent cannot be read."};
constexpr LocalText kRefused = {"播放器拒绝，错误 %d。", "it has refused with error %d."};
constexpr LocalText kNotSupported = {"播放器不支持屏幕分割。", "it does not support screen split."};
constexpr LocalText kLinkEnded = {"连接已断开，没有应答。",
                                  "the connection has ended without an answer."};
constexpr LocalText kTimedOut = {"没有应答。", "it has not answered."};
constexpr LocalText kUnconfirmed = {"没有确认。", "it has not confirmed."};

/// In the order of `SplitTask`.
constexpr LocalText kTasks[] = {
    {"", ""},
    {"正在读取 %s 的几何校正和融合参数…", "Fetching the geometric correction and fusion of %s…"},
    {"正在读取 %s 的屏幕分割配置…", "Fetching the screen split configuration of %s…"},
    {"正在等待 %s 确认…", "Waiting for %s to confirm…"},
};

constexpr LocalText kNotApplied = {"分幕排序尚未应用。", "The order has not been applied yet."};
constexpr LocalText kAsFetched = {"与读取到的配置一致。", "As fetched."};
constexpr LocalText kEdited = {"已修改，尚未发送。", "Edited, not sent."};
constexpr LocalText kSent = {"已发送，%d/%d 台播放器已确认。",
                             "Sent and confirmed by %d of %d players."};
constexpr LocalText kBetween = {"、", ", "};
constexpr LocalText kMissing = {"未确认：%s。", " Not by: %s."};

std::string TextOf(const Ended& ended, SplitTask task) {
    switch (ended.how) {
        case End::kRefused: return fmt::sprintf(Localized(kRefused), ended.code);
        case End::kNotSupported: return Localized(kNotSupported);
        case End::kNotSent: return TextOf(ended.reason);
        case End::kLinkEnded: return Localized(kLinkEnded);
        default: return Localized(task == SplitTask::kSend ? kUnconfirmed : kTimedOut);
    }
}

std::string TextOf(const SplitFailure& failure) {
    switch (failure.why) {
        case Why::kNotCorrected: return Localized(kNotCorrected);
        case Why::kUnreadable: return Localized(kUnreadable);
        case Why::kNotAnswered: break;
    }
    return TextOf(failure.ended, failure.task);
}

std::string TextOfSent(const SplitStatus& status) {
    const std::size_t confirmed = status.players - status.unconfirmed.size();
    std::string text = fmt::sprintf(Localized(kSent), confirmed, status.players);
    std::string missing;
    for (const std::string& address : status.unconfirmed)
        missing += (missing.empty() ? "" : Localized(kBetween)) + address;
    return missing.empty() ? text : text + fmt::sprintf(Localized(kMissing), missing);
}

}  // namespace

std::string StateTextOf(const SplitRun& run) {
    if (const auto& failure = run.Failure()) {
        std::string text =
            kCautionMark +
            fmt::sprintf(Localized(kFailed), run.AddressOf(failure->device), TextOf(*failure));
        AddSentence(text, StatusTextOf(run));
        return text;
    }
    if (run.IsBusy())
        return fmt::sprintf(Localized(kTasks[static_cast<std::size_t>(run.Task())]),
                            run.AddressOf(run.AskedDevice()));
    return StatusTextOf(run);
}

std::string StatusTextOf(const SplitRun& run) {
    const SplitStatus status = run.Status();
    switch (status.kind) {
        case Kind::kNone: break;
        case Kind::kNotApplied: return Localized(kNotApplied);
        case Kind::kAsFetched: return Localized(kAsFetched);
        case Kind::kEdited: return Localized(kEdited);
        case Kind::kSent: return TextOfSent(status);
    }
    return {};
}

}  // namespace sontaro
