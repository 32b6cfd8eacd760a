// The messages that windows and link threads send each other, with what they carry.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "base/bytes.h"
#include "link/packet.h"
#include "link/sending.h"

namespace sontaro {

/// Message numbers. Receivers and senders: see the routing table in exchange/reply_router.cpp.
enum class MessageId : std::uint32_t {
    kLinkEvent = 0x464,           ///< TCP link threads -> main window: LinkEvent
    kUdpEvent = 0x4C8,            ///< UDP socket threads -> the window the socket names: UdpEvent
    kLinkEnded = 0x597,           ///< main window: a receive loop has ended: of the origin
    kSendRequest = 0x5F4,         ///< feature dialogs -> main window: SendRequest
    kPlayerState = 0x5FC,         ///< replies 10 and 19: ReplyRecord
    kUploadAcknowledged = 0x5FD,  ///< reply 20: wParam sub-command, lParam argument
    kDeviceModes = 0x604,         ///< reply 36: DeviceModes
    kPlayerStatus = 0x606,        ///< reply 19: PlayerStatus
    kSerialData = 0x608,          ///< reply 50: SerialData
    kParameterBlock = 0x60C,      ///< reply 54: ParameterBlock
    kVideoReply = 0x615,          ///< reply 59: ReplyRecord
    kOsd = 0x616,                 ///< settings block 4: ReplyRecord
    kControlProtocol = 0x617,     ///< settings block 1: ReplyRecord
    kScreenSplit = 0x61A,         ///< settings blocks 12 and 13: ReplyRecord
    kExtendedSerialPort = 0x61F,  ///< settings block 15: ReplyRecord
    kSubtitles = 0x620,           ///< settings block 16: ReplyRecord
    kTouchAction = 0x622,         ///< settings block 18: ReplyRecord
    kCave = 0x623,                ///< settings block 19: ReplyRecord
    kPlayerControl = 0x625,       ///< settings blocks 21 and 23: ReplyRecord
    kLayoutState = 0x627,         ///< reply 52: ReplyRecord, its payload the list of names
    kStopKeepAlive = 0x8001,      ///< main window: the origin's link has ended, stop timer 7
};

/// Event codes of TCP links and of the UDP socket (which uses 1 to 7).
enum class LinkCode : std::uint16_t {
    kReceiveException = 1,
    kShortSend = 2,
    kSendWaitTimedOut = 3,
    kSendWaitFailed = 4,
    kReceived = 5,
    kReceiveFailed = 6,
    kPeerClosed = 7,
    kReceiveEnded = 8,
};

/// What a TCP link thread reports.
struct LinkEvent {
    std::string ip;               ///< remote address of the connection, dotted
    std::uint16_t port = 0;       ///< remote TCP port
    std::uint16_t deviceTag = 0;  ///< tag of the target the link was connected for
    LinkCode code{};
    std::uint16_t error = 0;  ///< the platform's error number, 0 when there is none
    ByteView bytes;           ///< the receive buffer, valid only while the event is handled
    ConnectionNumber connection = 0;
};

/// What a UDP socket thread reports.
struct UdpEvent {
    std::array<std::uint8_t, 4> senderAddress{};  ///< octets in the order received
    std::uint16_t senderPort = 0;                 ///< host order
    LinkCode code{};
    std::uint16_t error = 0;  ///< the platform's error number, 0 when there is none
    ByteView bytes;           ///< the receive buffer, valid only while the event is handled
};

/// One player a request goes to.
struct Target {
    std::string ip;               ///< dotted IPv4 address
    std::uint16_t port = 0;       ///< TCP port
    std::uint16_t deviceTag = 0;  ///< echoed in every event of the link

    bool operator==(const Target&) const = default;
};

/// Header and payload on their way to players; never copied, for they may be large.
using SharedPacket = std::shared_ptr<const Bytes>;

/// Whether the boxes that a packet may lead to are shown: a failure to connect, "not supported"
/// and the notice that something is saved. One would hold a long procedure up.
enum class Boxes : std::uint8_t { kShown, kMuted };

/// Packets on their way from a dialog to players.
struct SendRequest {
    std::vector<Target> targets;  ///< none: the main window's current device
    SharedPacket bytes;           ///< header and payload; absent or empty: close every link
    Boxes boxes = Boxes::kShown;
    std::vector<Sending> outcomes = {};  ///< the receiver's answer: what became of it, per target
};

/// Where a reply came from, whatever record it became.
struct Origin {
    Target sender;        ///< the player
    PacketHeader header;  ///< its command without the bits that make it a reply
    ConnectionNumber connection = 0;
};

/// A reply's payload as it is forwarded to a dialog.
struct ReplyRecord {
    Bytes payload;
};

/// The status of a reply 19. The layout of the player's block is unknown, so that only the
/// reply's argument is filled in; the volume is none.
struct PlayerStatus {
    static constexpr std::uint16_t kNoVolume = 0xFFFF;

    std::uint16_t argument = 0;
    std::uint16_t volume = kNoVolume;  ///< 0 to 100
    std::uint16_t reserved = 0;
};
static_assert(sizeof(PlayerStatus) == 6);

/// The modes of a reply 36.
struct DeviceModes {
    std::uint16_t mode = 0;  ///< 1 or 2 as the reply's qualifier, else 0
    std::array<std::array<std::uint8_t, 4>, 20> entries{};
    std::array<std::uint8_t, 18> padding{};
    std::uint16_t trailer = 0;
};
static_assert(sizeof(DeviceModes) == 102);

/// The serial bytes of a reply 50.
struct SerialData {
    std::uint16_t count = 0;
    std::array<std::uint8_t, 1024> bytes{};
};
static_assert(sizeof(SerialData) == 1026);

/// The screen split parameters of a reply 54, zero filled behind what the player sent.
using ParameterBlock = std::array<std::uint8_t, 6524>;

/// A message. Its record belongs to the receiver, which may move it away.
struct WindowMessage {
    using Record = std::variant<std::monostate, LinkEvent, UdpEvent, SendRequest, ReplyRecord,
                                PlayerStatus, std::unique_ptr<DeviceModes>,
                                std::unique_ptr<SerialData>, std::unique_ptr<ParameterBlock>>;

    MessageId id{};
    std::uint32_t wParam = 0;
    Record record;
    std::uint32_t lParam = 0;
    Origin origin = {};  ///< of replies and of the end of a link
};

}  // namespace sontaro
