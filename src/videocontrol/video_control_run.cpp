#include "videocontrol/video_control_run.h"

#include <algorithm>

#include "base/name_list.h"
#include "exchange/player_requests.h"

namespace sontaro {

namespace {

constexpr auto kTick = std::chrono::milliseconds(1000);
constexpr int kTicksPerPoll = 11;
constexpr int kWorryingTicks = static_cast<int>(kAnswerLimit / kTick);
constexpr std::uint32_t kVolumeParam = 1;
constexpr int kLoudest = 100;

/// Adds `name` to the names on offer; false when it is empty or already there.
bool Remember(std::vector<std::string>& names, const std::string& name) {
    if (name.empty() || std::ranges::find(names, name) != names.end()) return false;
    names.push_back(name);
    return true;
}

}  // namespace

const LocalText kUsbVideoLabel = {"USB视频", "USB Video"};

VideoControlRun::VideoControlRun(VideoControlView& view, const ExchangeServices& exchange,
                                 Target player)
    : view_(view),
      talk_(exchange, std::move(player),
            {[this](WindowMessage& message) { TakeUnasked(message); },
             [this] { view_.StateChanged(); }}),
      tick_(exchange.timers) {}

void VideoControlRun::Opened() {
    TickEverySecond();
    Poll();
}

void VideoControlRun::TickEverySecond() {
    tick_.Start(kTick, [this] {
        TickEverySecond();
        if (view_.IsInFront()) Tick();
    });
}

void VideoControlRun::Tick() {
    if (connectsAgain_ && !IsConnected()) return AskFromTheBeginning();
    if (movedVolume_) {
        Command(kVideoSound, TakeMovedVolume());
    } else if (++ticks_ == kTicksPerPoll) {
        ticks_ = 0;
        if (state_ != State::kReady) Poll();
    }
    if (talk_.IsAsking() && state_ != State::kReady) ++silentTicks_;
    if (SecondsOfSilence() > 0) view_.StateChanged();
}

void VideoControlRun::ReadAgain() {
    talk_.Cancel();
    trouble_ = {};
    AskFromTheBeginning();
    view_.StateChanged();
}

void VideoControlRun::Closing() {
    tick_.Stop();
    talk_.Cancel();
    if (movedVolume_ && IsConnected())
        talk_.Post(VideoCommandPacket(kVideoSound, TakeMovedVolume()));
}

std::string VideoControlRun::TakeMovedVolume() {
    return std::to_string(*std::exchange(movedVolume_, std::nullopt));
}

int VideoControlRun::SecondsOfSilence() const {
    return silentTicks_ >= kWorryingTicks ? silentTicks_ : 0;
}

void VideoControlRun::Poll() {
    if (talk_.IsAsking())
        talk_.Repeat();
    else if (IsConnected() && askedOver_ == talk_.Connection())
        Ask();
    else
        AskFromTheBeginning();
}

void VideoControlRun::AskFromTheBeginning() {
    connectsAgain_ = false;
    state_ = State::kAskingState;
    ticks_ = 0;
    Ask();
}

void VideoControlRun::Ask() {
    Request request = state_ == State::kAskingState     ? AskPlayerState()
                      : state_ == State::kAskingLayouts ? AskLayoutState()
                                                        : AskCaptions();
    request.limit = {};  // every eleventh tick repeats it
    silentTicks_ = 0;
    talk_.Ask(std::move(request), [this](const Ended& ended) { Answered(ended); });
    askedOver_ = talk_.Connection();
}

void VideoControlRun::Answered(const Ended& ended) {
    silentTicks_ = 0;
    switch (ended.how) {
        case End::kReply:
            trouble_ = {};
            if (state_ == State::kAskingState)
                Enter(State::kAskingLayouts);
            else if (state_ == State::kAskingLayouts)
                TakeLayouts(AsText(PayloadOf(*ended.reply))), Enter(State::kAskingCaptions);
            else
                TakeReply(AsText(PayloadOf(*ended.reply)));
            break;
        case End::kRefused: trouble_ = {Trouble::Kind::kRefused, {}, ended.code}; break;
        case End::kNotSent: trouble_ = {Trouble::Kind::kNotSent, ended.reason}; break;
        case End::kNotSupported:  // the end of the link is told next
        case End::kLinkEnded:
        case End::kTimedOut:
        case End::kCancelled: break;
    }
    view_.StateChanged();
}

void VideoControlRun::Enter(State state) {
    state_ = state;
    ticks_ = 0;
    if (state_ == State::kReady)
        AskVideos();
    else
        Ask();
    view_.StateChanged();
}

/// A player that does not know the question ends the link, which comes back without it.
void VideoControlRun::AskVideos() {
    listUnreadable_ = false;
    if (listUnsupported_) return;
    Request request = AskVideoList(VideoListFor::kRemoteControl);
    request.limit = {};
    request.boxes = Boxes::kMuted;
    talk_.Ask(std::move(request), [this](const Ended& ended) { VideosEnded(ended); });
}

void VideoControlRun::VideosEnded(const Ended& ended) {
    if (ended.how == End::kNotSupported) listUnsupported_ = connectsAgain_ = true;
    if (ended.how != End::kReply) return;
    const Result<VideoList> list = ReadVideoList(AsText(PayloadOf(*ended.reply)));
    listUnreadable_ = !list;
    if (list) {
        offered_.Take(*list);
        OfferNames();
    }
    view_.StateChanged();
}

void VideoControlRun::NameFolder(const std::string& name) {
    namedFolder_ = name;
    OfferNames();
}

void VideoControlRun::OfferNames() {
    if (std::vector<std::string> folders = offered_.Folders(); folders != folders_) {
        folders_ = std::move(folders);
        view_.OfferFolders(folders_);
    }
    if (std::vector<std::string> videos = offered_.VideosIn(namedFolder_); videos != videos_) {
        videos_ = std::move(videos);
        view_.OfferVideos(videos_);
    }
}

void VideoControlRun::Press(const std::string& caption) { Command(kVideoPlayMode, caption); }

void VideoControlRun::ChooseFolder(const std::string& name) {
    NameFolder(name);
    ChooseName(kVideoFolder, name);
}
void VideoControlRun::ChooseLayout(const std::string& name) { ChooseName(kVideoLayout, name); }
void VideoControlRun::ChooseVideo(const std::string& name) { ChooseName(kVideoPlayName, name); }
void VideoControlRun::ChooseUsbVideo(const std::string& name) { ChooseName(kVideoUsbName, name); }

void VideoControlRun::ChooseName(std::uint16_t commandId, const std::string& name) {
    if (!name.empty()) Command(commandId, name);
}

/// A command may be what brings the link back.
void VideoControlRun::Command(std::uint16_t commandId, const std::string& text) {
    const Sending sending = talk_.Post(VideoCommandPacket(commandId, text));
    trouble_ = sending ? Trouble{} : Trouble{Trouble::Kind::kNotSent, sending.Reason()};
    if (sending && sending.Connection() != askedOver_) {
        talk_.Cancel();
        AskFromTheBeginning();
    }
    view_.StateChanged();
}

void VideoControlRun::TakeUnasked(WindowMessage& message) {
    if (const auto* status = std::get_if<PlayerStatus>(&message.record)) {
        if (message.wParam == kVolumeParam && status->volume <= kLoudest)
            view_.ShowVolume(status->volume);
    } else if (message.id == MessageId::kLayoutState) {
        TakeLayouts(AsText(PayloadOf(message)));
    } else if (message.id == MessageId::kVideoReply) {
        TakeReply(AsText(PayloadOf(message)));
    }
}

void VideoControlRun::TakeLayouts(std::string_view names) {
    bool more = false;
    for (const std::string& name : ParseNameList(names)) more = Remember(layouts_, name) || more;
    if (more) view_.OfferLayouts(layouts_);
}

void VideoControlRun::TakeReply(std::string_view payload) {
    const std::optional<VideoReply> reply = VideoReply::Parse(payload);
    if (!reply) return;
    if (reply->Code() != 0) {
        TakeRefusal(*reply);
    } else if (reply->CommandId() == kVideoCaptions) {
        TakeCaptions(*reply);
    } else if (reply->CommandId() == kVideoPosition) {
        if (const auto position = reply->Position()) TakePosition(*position);
    } else if (reply->CommandId() == kVideoUsbList) {
        TakeUsbVideos(*reply);
    }
}

/// What a player reports by itself may be no report, but it refuses nothing.
void VideoControlRun::TakeRefusal(const VideoReply& reply) {
    if (reply.CommandId() == kVideoPosition || reply.CommandId() == kVideoUsbList) return;
    trouble_ = {Trouble::Kind::kRefused, {}, reply.Code()};
    view_.StateChanged();
}

void VideoControlRun::TakeCaptions(const VideoReply& reply) {
    view_.HideButtons();
    for (const VideoCaption& caption : reply.Captions()) {
        const auto* button = std::ranges::find(kVideoButtons, caption.type, &VideoButton::type);
        if (button != kVideoButtons.end()) view_.ShowButton(button->type, caption.caption);
    }
    view_.ButtonsChanged();
    if (state_ == State::kAskingCaptions) Enter(State::kReady);
}

void VideoControlRun::TakePosition(const VideoPosition& position) {
    view_.ShowPosition(position.Percent(), position.Text());
    if (position.named) view_.ShowTitle(position.folder + "->" + position.video);
    if (offered_.Add(position.folder, position.video)) OfferNames();
}

void VideoControlRun::TakeUsbVideos(const VideoReply& reply) {
    const std::string playing = reply.UsbVideo();
    const std::string label = Localized(kUsbVideoLabel);
    view_.ShowUsbLabel(playing.empty() ? label : label + "-" + playing);
    const auto names = reply.Names();
    if (!names || *names == usbVideos_) return;
    usbVideos_ = *names;
    view_.ShowUsbVideos(usbVideos_);
}

}  // namespace sontaro
