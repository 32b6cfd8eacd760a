#include "widgets/settings_state_text.h"

#include <fmt/printf.h>

#include "widgets/exchange_texts.h"

namespace sontaro {

namespace {

/// In the order of `SettingsState`.
constexpr LocalText kStates[] = {
    {"正在等待播放器的设置…", "Waiting for the player's settings…"},
    {"未能读取：%s", "Not read: %s"},
    {"连接已断开，播放器没有应答。", "The connection has ended, the player has not answered."},
    {"播放器不支持这些设置。", "The player does not support these settings."},
    {"播放器返回错误 %d，所示内容未得到播放器确认。",
     "The player has answered with error %d. It does not hold what is shown."},
    {"播放器发来的设置无法使用。", "The settings that the player has sent cannot be used."},
    {"所示内容不是播放器自己的设置。", "These are not the player's settings."},
    {"播放器还没有这些设置，所示为默认值。",
     "The player has no such settings yet. These are the defaults."},
    {"与播放器中的设置一致。", "As the player has sent them."},
    {"有修改尚未发送到播放器。", "There are changes that have not been sent to the player."},
    {"未发送：%s", "Nothing has been sent: %s"},
    {"正在等待播放器确认…", "Waiting for the player to confirm…"},
    {"已发送，但连接已断开，播放器没有确认。",
     "Sent, but the player has not confirmed: the connection has ended."},
    {"播放器已确认。", "The player has confirmed."},
    {"播放器已确认，正在重启。请关闭本窗口。",
     "The player has confirmed, and restarts. Close this window."},
};
constexpr LocalText kNoAnswer = {"播放器已有 %d 秒没有应答。", "No answer for %d s."};

}  // namespace

std::string StateTextOf(const SettingsRun& run) {
    if (const int seconds = run.SecondsWithoutAnswer())
        return fmt::sprintf(Localized(kNoAnswer), seconds);
    const std::string& text = Localized(kStates[static_cast<std::size_t>(run.State())]);
    switch (run.State()) {
        case SettingsState::kUnreachable:
        case SettingsState::kNotSent: return fmt::sprintf(text, TextOf(run.LastReason()));
        case SettingsState::kRefused: return fmt::sprintf(text, run.LastCode());
        default: return text;
    }
}

}  // namespace sontaro
