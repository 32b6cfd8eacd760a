// The remote control of one player, without its window.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/local_text.h"
#include "link/window_message.h"
#include "videocontrol/video_control_document.h"

namespace sontaro {

/// A button that sends its own caption. The player decides which exist and what they say.
struct VideoButton {
    int id;               ///< control number
    int type;             ///< the number that the player knows it by
    const char* caption;  ///< until the player gives one; in one language only
};

// clang-format off
inline constexpr std::array<VideoButton, 14> kVideoButtons = {{
    {2104, 2, "类别循环"}, {2105, 3, "单曲循环"}, {2106, 4, "单曲播放"}, {2107, 5, "类别随机"},
    {2108, 6, "全部随机"}, {2109, 7, "播放"},     {2110, 8, "暂停"},     {2113, 9, "上一首"},
    {2114, 10, "下一首"},  {2120, 11, "开机"},    {2121, 12, "关机"},    {2126, 13, "屏幕特效"},
    {2124, 200, "上一首"}, {2123, 201, "下一首"},
}};
// clang-format on

/// What the remote control asks of its window. Texts are UTF-8.
class VideoControlView {
   public:
    virtual ~VideoControlView() = default;
    virtual void Send(const DevicePacket& packet) = 0;
    /// Calls `VideoControlRun::Tick` every 1000 ms from now on.
    virtual void StartTimer() = 0;
    virtual void HideButtons() = 0;
    virtual void ShowButton(int id, const std::string& caption) = 0;
    /// Every caption of a reply has been given.
    virtual void ButtonsChanged() = 0;
    virtual void ShowPosition(int percent, const std::string& text) = 0;
    virtual void ShowTitle(const std::string& text) = 0;
    /// Sets the slider, 0 to 100, as if nobody had moved it.
    virtual void ShowVolume(int volume) = 0;
    virtual void ShowUsbLabel(const std::string& text) = 0;
    virtual void ShowUsbVideos(const std::vector<std::string>& names) = 0;
    virtual void OfferFolders(const std::vector<std::string>& names) = 0;
    virtual void OfferLayouts(const std::vector<std::string>& names) = 0;
    virtual void OfferVideos(const std::vector<std::string>& names) = 0;
    /// The state, or how long the player has been silent, has changed.
    virtual void StateChanged() = 0;
};

extern const LocalText kUsbVideoLabel;

/// Asks the player for its state, its layouts and its captions, one after the other, and turns
/// presses into commands and replies into what is shown. A state never goes back.
/// User-interface thread.
class VideoControlRun {
   public:
    enum class State { kAskingState, kAskingLayouts, kAskingCaptions, kReady };

    /// Listens to the player at `playerIp` alone: a link to another one may still be open.
    VideoControlRun(VideoControlView& view, std::string playerIp)
        : view_(view), playerIp_(std::move(playerIp)) {}

    /// The window has opened: asks for the player's state at once and every eleventh second.
    void Opened();
    /// A second has passed.
    void Tick();
    /// The window is about to close: what has not been sent yet goes out.
    void Closing();

    /// The user has moved the volume slider to `volume`; it is sent at the next tick.
    void MoveVolume(int volume) { movedVolume_ = volume; }
    /// The user has pressed a button with this caption.
    void Press(const std::string& caption);
    /// The user has chosen a name; an empty one is none.
    void ChooseFolder(const std::string& name);
    void ChooseLayout(const std::string& name);
    void ChooseVideo(const std::string& name);
    void ChooseUsbVideo(const std::string& name);

    /// Takes a reply that the main window forwards; other messages are ignored.
    void Handle(const WindowMessage& message);

    [[nodiscard]] State CurrentState() const { return state_; }
    /// Seconds since the player's last message; 0 as long as that is nothing to worry about, or
    /// the player is being waited for anyway.
    [[nodiscard]] int SecondsOfSilence() const;

   private:
    void SendVolume();
    void EndSilence();
    void Poll();
    void Enter(State state);
    void SendChoice(std::uint16_t commandId, const std::string& name);
    void TakeStatus(std::uint32_t wParam, const PlayerStatus& status);
    void TakeLayouts(const ReplyRecord& record);
    void TakeReply(std::string_view payload);
    void TakeCaptions(const VideoReply& reply);
    void TakePosition(const VideoPosition& position);
    void TakeUsbVideos(const VideoReply& reply);

    VideoControlView& view_;
    const std::string playerIp_;
    State state_ = State::kAskingState;
    int ticks_ = 0;
    int silentTicks_ = 0;
    std::optional<int> movedVolume_;
    std::vector<std::string> folders_;
    std::vector<std::string> layouts_;
    std::vector<std::string> videos_;
    std::vector<std::string> usbVideos_;
};

}  // namespace sontaro
