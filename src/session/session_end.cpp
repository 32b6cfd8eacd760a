#include "session/session_end.h"

#include <fmt/printf.h>

#include <iterator>

#include "base/local_text.h"

namespace sontaro {

namespace {

struct TroubleText {
    const char* word;
    LocalText told;
};

// In the order of `LinkTrouble`.
// clang-format off
constexpr TroubleText kTroubles[] = {
    {"", {"", ""}},
    {"taken", {"本程序中已有到该播放器的连接。", "This program has a connection to the player already."}},
    {"connect-refused", {"播放器拒绝连接，或没有通往它的路径。", "The connection was refused, or there is no way to the player."}},
    {"connect-timed-out", {"播放器没有应答连接。", "Nobody answers at the player's address."}},
    {"hung-up", {"播放器关闭了连接。", "The player has closed the connection."}},
    {"cut-off", {"播放器在应答中途关闭了连接。", "The player has closed the connection in the middle of an answer."}},
    {"broken", {"连接中断。", "The connection has broken."}},
    {"garbage", {"收到的数据不是播放器的数据包。", "What has come is no packet of a player."}},
    {"too-long", {"播放器通告的应答过长。", "The player has announced an answer that is too long."}},
    {"closed", {"连接已在本机关闭。", "The connection was closed here."}},
};

// In the order of `End`.
struct EndText {
    const char* word;
    LocalText told;  // "%d" in it: the code
};
constexpr EndText kEnds[] = {
    {"reply", {"已完成。", "Done."}},
    {"refused", {"播放器拒绝了请求（%d）。", "The player has refused (%d)."}},
    {"not-supported", {"播放器不支持此功能。", "The player does not support this."}},
    {"not-sent", {"未能发送。", "It could not be sent."}},
    {"link-ended", {"连接在应答之前结束。", "The connection has ended before the answer."}},
    {"timed-out", {"播放器没有及时应答。", "The player has not answered in time."}},
    {"cancelled", {"已取消。", "Cancelled."}},
};
// clang-format on

constexpr LocalText kUnreadable = {"播放器的应答无法使用：%s", "The answer is of no use: %s"};
constexpr LocalText kNotTaken = {"播放器没有接收数据。", "The player does not take anything in."};

const EndText& TextOf(End how) { return kEnds[static_cast<std::size_t>(how)]; }
const TroubleText& TextOf(LinkTrouble trouble) {
    return kTroubles[static_cast<std::size_t>(trouble)];
}

}  // namespace

const char* WordFor(const SessionEnd& end) {
    return end.how == End::kReply && !end.unreadable.empty() ? "unreadable" : TextOf(end.how).word;
}

const char* WordFor(LinkTrouble trouble) { return TextOf(trouble).word; }

std::string Told(const SessionEnd& end) {
    const bool isReply = end.how == End::kReply;
    if (isReply && !end.unreadable.empty())
        return fmt::sprintf(Localized(kUnreadable), end.unreadable);
    std::string told = end.how == End::kRefused
                           ? fmt::sprintf(Localized(TextOf(end.how).told), end.code)
                           : Localized(TextOf(end.how).told);
    if (end.trouble != LinkTrouble::kNone)
        told += ' ' + Localized(TextOf(end.trouble).told);
    else if (!end.unreadable.empty())
        told += ' ' + end.unreadable;
    else if (end.how == End::kNotSent && end.reason == NotSent::kTooMuchWaiting)
        told += ' ' + Localized(kNotTaken);
    return told;
}

}  // namespace sontaro
