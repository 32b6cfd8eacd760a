#include "timeline/timeline_state_text.h"

#include <fmt/printf.h>

#include "widgets/common_texts.h"
#include "widgets/exchange_texts.h"

namespace sontaro {

namespace {

/// In the order of `TimelineState`. Of the last two, the comparison itself says more.
constexpr LocalText kStates[] = {
    {"正在等待播放器的视频列表…", "Waiting for the player's list of videos…"},
    {"正在等待播放器的时间轴…", "Waiting for the player's timeline…"},
    {"未能读取：%s", "Not read: %s"},
    {"连接已断开，播放器没有应答。", "The connection has ended, the player has not answered."},
    {"播放器不支持时间轴。", "The player does not support timelines."},
    {"播放器发来的时间轴无法使用。", "The timeline that the player has sent cannot be used."},
    {"所示内容不是播放器自己的时间轴。", "This is not the player's own timeline."},
    {"与播放器中的时间轴一致。", "As the player has sent it."},
    {"有修改尚未发送到播放器。", "There are changes that have not been sent to the player."},
    {"未发送：%s", "Nothing has been sent: %s"},
    {"正在等待播放器确认…", "Waiting for the player to confirm…"},
    {"已发送，但连接已断开，播放器没有确认。",
     "Sent, but the player has not confirmed: the connection has ended."},
    {"播放器已确认，正在读回比较…", "The player has confirmed. Reading it back to compare…"},
    {"播放器已确认，但未能读回比较。",
     "The player has confirmed, but what it holds could not be read back."},
    {"", ""},
    {"", ""},
};
/// In the order of `VideoListState`.
constexpr LocalText kLists[] = {
    {"", ""},
    {"", ""},
    {"视频列表无法使用，名称需要手工输入。", "Its list of videos cannot be used: type the names."},
    {"播放器没有发来视频列表，名称需要手工输入。",
     "It has sent no list of videos: type the names."},
    {"播放器不支持视频列表，名称需要手工输入。",
     "It does not support the list of videos: type the names."},
};
constexpr LocalText kNoAnswer = {"播放器已有 %d 秒没有应答。", "No answer for %d s."};

std::string ExchangeText(const TimelineRun& run) {
    if (const int seconds = run.SecondsWithoutAnswer())
        return fmt::sprintf(Localized(kNoAnswer), seconds);
    const std::string& text = Localized(kStates[static_cast<std::size_t>(run.State())]);
    switch (run.State()) {
        case TimelineState::kUnreachable:
        case TimelineState::kNotSent: return fmt::sprintf(text, TextOf(run.LastReason()));
        case TimelineState::kEqual: return Told(run.Difference());
        case TimelineState::kDifferent: return kCautionMark + Told(run.Difference());
        default: return text;
    }
}

}  // namespace

std::string StateTextOf(const TimelineRun& run) {
    std::string text = ExchangeText(run);
    const std::string& list = Localized(kLists[static_cast<std::size_t>(run.VideoList())]);
    if (!list.empty()) text += (CurrentLanguage() == Language::kChinese ? "" : " ") + list;
    return text;
}

std::string TestTextOf(const TimelineTests& tests) {
    if (!tests.Last()) return {};
    std::string text = tests.Last()->Told();
    if (tests.Last()->outcome == TestReport::Outcome::kNotSent)
        text = kCautionMark + text + ' ' + TextOf(tests.Last()->reason);
    return text;
}

}  // namespace sontaro
