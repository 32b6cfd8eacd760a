#include "videocontrol/video_control_run.h"

#include <algorithm>

#include "base/name_list.h"

namespace sontaro {

namespace {

constexpr int kTicksPerPoll = 11;
constexpr int kWorryingSilence = 15;
constexpr std::uint32_t kReplyParam = 10;
constexpr std::uint32_t kVolumeParam = 1;

/// Adds `name` to the names on offer; false when it is empty or already there.
bool Remember(std::vector<std::string>& names, const std::string& name) {
    if (name.empty() || std::ranges::find(names, name) != names.end()) return false;
    names.push_back(name);
    return true;
}

}  // namespace

const LocalText kUsbVideoLabel = {"USB视频", "USB Video"};

void VideoControlRun::Opened() {
    view_.StartTimer();
    Poll();
}

void VideoControlRun::Tick() {
    if (movedVolume_) {
        SendVolume();
    } else if (++ticks_ == kTicksPerPoll) {
        ticks_ = 0;
        Poll();
    }
    ++silentTicks_;
    if (SecondsOfSilence() > 0) view_.StateChanged();
}

void VideoControlRun::Closing() {
    if (movedVolume_) SendVolume();
}

void VideoControlRun::SendVolume() {
    view_.Send(VideoCommandPacket(kVideoSound, std::to_string(*movedVolume_)));
    movedVolume_.reset();
}

int VideoControlRun::SecondsOfSilence() const {
    return state_ == State::kReady && silentTicks_ >= kWorryingSilence ? silentTicks_ : 0;
}

void VideoControlRun::Poll() {
    switch (state_) {
        case State::kAskingState: view_.Send(DevicePacket::Request(kCommandPlayerData, 0)); break;
        case State::kAskingLayouts:
            view_.Send(DevicePacket::Request(kCommandLayoutState, 0));
            break;
        case State::kAskingCaptions: view_.Send(VideoCommandPacket(kVideoCaptions)); break;
        case State::kReady: break;
    }
}

void VideoControlRun::Enter(State state) {
    state_ = state;
    ticks_ = 0;
    Poll();
    view_.StateChanged();
}

void VideoControlRun::Press(const std::string& caption) {
    view_.Send(VideoCommandPacket(kVideoPlayMode, caption));
}

void VideoControlRun::ChooseFolder(const std::string& name) { SendChoice(kVideoFolder, name); }
void VideoControlRun::ChooseLayout(const std::string& name) { SendChoice(kVideoLayout, name); }
void VideoControlRun::ChooseVideo(const std::string& name) { SendChoice(kVideoPlayName, name); }
void VideoControlRun::ChooseUsbVideo(const std::string& name) { SendChoice(kVideoUsbName, name); }

void VideoControlRun::SendChoice(std::uint16_t commandId, const std::string& name) {
    if (!name.empty()) view_.Send(VideoCommandPacket(commandId, name));
}

void VideoControlRun::Handle(const WindowMessage& message) {
    const auto* record = std::get_if<ReplyRecord>(&message.record);
    if (record && message.origin.sender.ip != playerIp_) return;
    EndSilence();
    if (const auto* status = std::get_if<PlayerStatus>(&message.record)) {
        TakeStatus(message.wParam, *status);
    } else if (!record) {
        return;
    } else if (message.id == MessageId::kPlayerState) {
        if (state_ == State::kAskingState) Enter(State::kAskingLayouts);
    } else if (message.id == MessageId::kLayoutState) {
        TakeLayouts(*record);
    } else if (message.id == MessageId::kVideoReply && message.wParam == kReplyParam) {
        TakeReply(AsText(record->payload));
    }
}

/// A player that was away may have started anew: only the question for its captions makes it
/// report its position again.
void VideoControlRun::EndSilence() {
    const bool wasSilent = SecondsOfSilence() > 0;
    silentTicks_ = 0;
    if (!wasSilent) return;
    view_.Send(VideoCommandPacket(kVideoCaptions));
    view_.StateChanged();
}

void VideoControlRun::TakeStatus(std::uint32_t wParam, const PlayerStatus& status) {
    if (wParam == kVolumeParam) view_.ShowVolume(std::min<int>(status.volume, 100));
}

void VideoControlRun::TakeLayouts(const ReplyRecord& record) {
    bool more = false;
    for (const std::string& name : ParseNameList(AsText(record.payload)))
        more = Remember(layouts_, name) || more;
    if (more) view_.OfferLayouts(layouts_);
    if (state_ == State::kAskingLayouts) Enter(State::kAskingCaptions);
}

void VideoControlRun::TakeReply(std::string_view payload) {
    const std::optional<VideoReply> reply = VideoReply::Parse(payload);
    if (!reply) return;
    if (reply->CommandId() == kVideoCaptions) {
        TakeCaptions(*reply);
    } else if (reply->CommandId() == kVideoPosition) {
        if (const auto position = reply->Position()) TakePosition(*position);
    } else if (reply->CommandId() == kVideoUsbList) {
        TakeUsbVideos(*reply);
    }
}

void VideoControlRun::TakeCaptions(const VideoReply& reply) {
    view_.HideButtons();
    for (const VideoCaption& caption : reply.Captions()) {
        const auto* button = std::ranges::find(kVideoButtons, caption.type, &VideoButton::type);
        if (button != kVideoButtons.end()) view_.ShowButton(button->id, caption.caption);
    }
    view_.ButtonsChanged();
    Enter(State::kReady);
    view_.StartTimer();
}

void VideoControlRun::TakePosition(const VideoPosition& position) {
    view_.ShowPosition(position.Percent(), position.Text());
    if (position.named) view_.ShowTitle(position.folder + "->" + position.video);
    if (Remember(folders_, position.folder)) view_.OfferFolders(folders_);
    if (Remember(videos_, position.video)) view_.OfferVideos(videos_);
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
