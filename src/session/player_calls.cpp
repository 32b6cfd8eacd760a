#include "session/player_calls.h"

#include <utility>

#include "base/name_list.h"
#include "exchange/player_requests.h"
#include "timeline/timeline_tests.h"

namespace sontaro {

namespace {

constexpr LocalText kNotReadable = {"格式无法识别。", "It cannot be read."};
constexpr LocalText kNothingToSend = {"没有可发送的内容。", "There is nothing to send."};
constexpr LocalText kTooLongToSend = {"内容超过一个数据包的长度。",
                                      "It is longer than a packet may be."};
constexpr std::uint8_t kRestarts = 1;

SessionEnd Unreadable() { return {End::kReply, 0, {}, {}, Localized(kNotReadable)}; }

SessionEnd NotSentAs(const LocalText& why) { return {End::kNotSent, 0, {}, {}, Localized(why)}; }

/// Asks, and makes of the answer what `read` does; `read` returns an optional value.
template <class Read>
auto AskFor(Session& session, Request request, const Read& read)
    -> Answered<typename decltype(read(std::declval<const WindowMessage&>()))::value_type> {
    const Answered<WindowMessage> answer = session.Ask(std::move(request));
    if (!answer) return answer.HowItEnded();
    auto value = read(*answer);
    if (!value) return Unreadable();
    return std::move(*value);
}

/// A player that restarts is told that its link may be closed; that ends it.
SessionEnd LetRestart(Session& session) {
    constexpr std::chrono::milliseconds kLimit{1000};
    static_cast<void>(session.Post(ReadyPacket(kCommandCloseLinks, 0), kLimit));
    static_cast<void>(session.Listen(kLimit));
    session.Close();
    return {End::kReply};
}

Request ReadRequest(const SettingsBlockKind& kind) {
    return kind.readBlock == kBlockScreenSplitRead ? ReadScreenSplit()
                                                   : ReadSettings(kind.readBlock);
}

}  // namespace

Answered<std::string> ReadBlockText(Session& session, const SettingsBlockKind& kind) {
    return AskFor(session, ReadRequest(kind), [](const WindowMessage& answer) {
        return std::optional(std::string(AsText(PayloadOf(answer))));
    });
}

Answered<BlockDocument> ReadBlock(Session& session, const SettingsBlockKind& kind) {
    Answered<std::string> text = ReadBlockText(session, kind);
    if (!text) return text.HowItEnded();
    return BlockDocument(kind, std::move(*text), BlockDocument::Source::kPlayer);
}

/// Without a text it would be a question.
SessionEnd WriteBlock(Session& session, const SettingsBlockKind& kind, std::string_view text,
                      Restart restart) {
    if (text.empty()) return NotSentAs(kNothingToSend);
    if (text.size() > kLongestPayload) return NotSentAs(kTooLongToSend);
    const bool restarts = kind.mayRestart && restart == Restart::kYes;
    const SessionEnd end =
        session
            .Ask(kind.writeBlock == kBlockScreenSplitWrite
                     ? WriteScreenSplit(text)
                     : WriteSettings(kind.writeBlock, text, restarts ? kRestarts : 0))
            .HowItEnded();
    return end && restarts ? LetRestart(session) : end;
}

Answered<std::uint64_t> ReadFreeSpace(Session& session) {
    return AskFor(session, AskPlayerData(0),
                  [](const WindowMessage& answer) { return FreeSpaceIn(answer, 0); });
}

Answered<PlayerMode> ReadMode(Session& session) { return AskFor(session, AskPlayerMode(), ModeIn); }

Answered<std::vector<std::string>> ReadLayouts(Session& session) {
    return AskFor(session, AskLayoutState(), [](const WindowMessage& answer) {
        return std::optional(ParseNameList(AsText(PayloadOf(answer))));
    });
}

Answered<VideoList> ReadVideos(Session& session) {
    return AskFor(session, AskVideoList(VideoListFor::kTimeline), [](const WindowMessage& answer) {
        Result<VideoList> list = ReadVideoList(AsText(PayloadOf(answer)));
        return list ? std::optional(std::move(*list)) : std::nullopt;
    });
}

Answered<std::vector<VideoCaption>> ReadCaptions(Session& session) {
    return AskFor(session, AskCaptions(), [](const WindowMessage& answer) {
        const auto reply = VideoReply::Parse(AsText(PayloadOf(answer)));
        return reply ? std::optional(reply->Captions()) : std::nullopt;
    });
}

bool TakeReport(const WindowMessage& message, NowPlaying& playing) {
    if (message.id != MessageId::kVideoReply) return false;
    const auto reply = VideoReply::Parse(AsText(PayloadOf(message)));
    if (!reply || reply->Code() != 0) return false;
    if (reply->CommandId() == kVideoPosition) {
        playing.position = reply->Position();
        return playing.position.has_value();
    }
    if (reply->CommandId() != kVideoUsbList) return false;
    playing.usbVideo = reply->UsbVideo();
    playing.usbVideos = reply->Names().value_or(std::vector<std::string>());
    return true;
}

Answered<NowPlaying> ReadNowPlaying(Session& session, std::chrono::milliseconds limit) {
    NowPlaying playing;
    Session::Heard others;
    others = session.SetListener([&](WindowMessage& message) {
        TakeReport(message, playing);
        others(message);
    });
    const SessionEnd asked = ReadCaptions(session).HowItEnded();
    const SessionEnd heard =
        asked ? session.Listen(limit, [&] { return playing.position.has_value(); }) : asked;
    session.SetListener(std::move(others));
    if (!asked || (!heard && heard.how != End::kTimedOut)) return heard;
    return playing;
}

SessionEnd SendVideoCommand(Session& session, VideoCommand command, const std::string& text) {
    const SharedPacket packet = VideoCommandPacket(command, text);
    Request request = AskVideoCommand(command, {});
    request.packet = packet;
    return session.Ask(std::move(request)).HowItEnded();
}

SessionEnd SendCommand(Session& session, const TimeNode& node) {
    return session.Post(TestPacket(node));
}

}  // namespace sontaro
