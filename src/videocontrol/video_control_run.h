// The remote control of one player, without its window.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/local_text.h"
#include "exchange/conversation.h"
#include "videocontrol/offered_videos.h"
#include "videocontrol/video_control_document.h"
#include "videocontrol/video_control_view.h"

namespace sontaro {

extern const LocalText kUsbVideoLabel;

/// Asks the player for its state, its layouts and its captions, one after the other, and turns
/// presses into commands and replies into what is shown. A state never goes back but with the link:
/// over a new one all of it is asked anew, since a player reports its position only to who has
/// asked for its captions. What it can play is asked for last and once, and nothing waits for that:
/// older players do not know the question. User-interface thread.
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
    /// The user has entered the name of a folder: while it is one that is offered, only its videos
    /// are. Nothing is sent.
    void NameFolder(const std::string& name);
    /// The user has chosen a name; an empty one is none. A folder is named as well.
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
    /// Whether the player has answered with a list of videos that cannot be read.
    [[nodiscard]] bool IsListUnreadable() const {
        return listUnreadable_ && state_ == State::kReady;
    }
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
    void AskVideos();
    void VideosEnded(const Ended& ended);
    void OfferNames();
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
    bool listUnsupported_ = false;  // the player has said so
    bool listUnreadable_ = false;
    bool connectsAgain_ = false;  // the question for the list has cost the link
    OfferedVideos offered_;
    std::string namedFolder_;
    std::vector<std::string> folders_;
    std::vector<std::string> layouts_;
    std::vector<std::string> videos_;
    std::vector<std::string> usbVideos_;
};

}  // namespace sontaro
