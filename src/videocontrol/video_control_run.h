// The remote control of one player, without its window.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/local_text.h"
#include "exchange/conversation.h"
#include "videocontrol/video_control_document.h"

namespace sontaro {

/// A button that sends its own caption. The player decides which exist and what they say.
struct VideoButton {
    int type;             ///< the number that the player knows it by
    const char* caption;  ///< until the player gives one; in one language only
};

// clang-format off
inline constexpr std::array<VideoButton, 14> kVideoButtons = {{
    {2, "类别循环"}, {3, "单曲循环"}, {4, "单曲播放"},  {5, "类别随机"},  {6, "全部随机"},
    {7, "播放"},     {8, "暂停"},     {9, "上一首"},    {10, "下一首"},   {11, "开机"},
    {12, "关机"},    {13, "屏幕特效"}, {200, "上一首"}, {201, "下一首"},
}};
// clang-format on

/// What the remote control asks of its window. Texts are UTF-8.
class VideoControlView {
   public:
    virtual ~VideoControlView() = default;
    /// Whether no box covers the window: under one, time stands still. The player's answers wait
    /// behind it, and every poll would add one more.
    [[nodiscard]] virtual bool IsInFront() const = 0;
    virtual void HideButtons() = 0;
    virtual void ShowButton(int type, const std::string& caption) = 0;
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
    /// What the line tells has changed: the state, the connection, a trouble or a silence.
    virtual void StateChanged() = 0;
};

extern const LocalText kUsbVideoLabel;

/// Asks the player for its state, its layouts and its captions, one after the other, and turns
/// presses into commands and replies into what is shown. A state never goes back but with the link:
/// over a new one all of it is asked anew, since a player reports its position only to who has
/// asked for its captions. User-interface thread.
class VideoControlRun {
   public:
    enum class State { kAskingState, kAskingLayouts, kAskingCaptions, kReady };

    /// What went wrong with the latest command or question.
    struct Trouble {
        enum class Kind { kNone, kNotSent, kRefused };
        Kind kind = Kind::kNone;
        NotSent reason{};        ///< of what was not sent
        std::uint16_t code = 0;  ///< of a refusal

        bool operator==(const Trouble&) const = default;
    };

    VideoControlRun(VideoControlView& view, const ExchangeServices& exchange, Target player);

    /// The window has opened: asks for the player's state at once and every eleventh second.
    void Opened();
    /// Asks for all of it anew, and connects if need be.
    void ReadAgain();
    /// The window is about to close: what has not been sent yet goes out, and nothing is asked any
    /// more.
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

    /// Takes a message that the main window forwards.
    void Handle(WindowMessage& message) { talk_.Take(message); }

    [[nodiscard]] State CurrentState() const { return state_; }
    /// Whether there is a link, as far as is known.
    [[nodiscard]] bool IsConnected() const { return talk_.Connection() != 0; }
    [[nodiscard]] const Trouble& LastTrouble() const { return trouble_; }
    /// Seconds for which a question has not been answered; 0 as long as that is nothing to worry
    /// about. A player that has nothing to say of its own accord is sound.
    [[nodiscard]] int SecondsOfSilence() const;

   private:
    void TickEverySecond();
    void Tick();
    [[nodiscard]] std::string TakeMovedVolume();
    void Poll();
    void AskFromTheBeginning();
    void Ask();
    void Answered(const Ended& ended);
    void Enter(State state);
    void Command(std::uint16_t commandId, const std::string& text);
    void ChooseName(std::uint16_t commandId, const std::string& name);
    void TakeUnasked(WindowMessage& message);
    void TakeLayouts(std::string_view names);
    void TakeReply(std::string_view payload);
    void TakeRefusal(const VideoReply& reply);
    void TakeCaptions(const VideoReply& reply);
    void TakePosition(const VideoPosition& position);
    void TakeUsbVideos(const VideoReply& reply);

    VideoControlView& view_;
    Conversation talk_;
    Timer tick_;
    State state_ = State::kAskingState;
    ConnectionNumber askedOver_ = 0;  // the connection that the questions went over
    Trouble trouble_;
    int ticks_ = 0;
    int silentTicks_ = 0;
    std::optional<int> movedVolume_;
    std::vector<std::string> folders_;
    std::vector<std::string> layouts_;
    std::vector<std::string> videos_;
    std::vector<std::string> usbVideos_;
};

}  // namespace sontaro
