#include "exchange/reply_router.h"

#include <algorithm>
#include <optional>
#include <span>
#include <tuple>

#include "base/local_text.h"
#include "base/window_titles.h"
#include "link/crc16.h"

namespace sontaro {

namespace {

constexpr LocalText kNotSupported = {"当前版本不支持此功能,请及时更新！",
                                     "This function is not supported in the current version!"};
constexpr LocalText kLayoutLocked = {"布局已锁定，请先解锁！",
                                     "The layout is locked, please unlock it first!"};
constexpr LocalText kControlProtocolSaved = {"控制协议配置完成！", "Changes have been saved!"};

constexpr std::uint32_t kVideoReplyParam = 10;
constexpr std::uint16_t kLayoutIsLocked = 1;
constexpr std::uint8_t kRestartQualifier = 1;

/// A message for a window, or nothing when the reply is to be dropped.
using Message = std::optional<WindowMessage>;

Origin OriginOf(const Reply& reply) { return {reply.sender, reply.header, reply.connection}; }

WindowMessage Forward(const Reply& reply, MessageId id, std::uint32_t wParam) {
    return {id, wParam, ReplyRecord{Bytes(reply.payload.begin(), reply.payload.end())}, 0};
}

Message ForwardWithArgument(const Reply& reply, MessageId id) {
    return Forward(reply, id, reply.header.argument);
}

Message ForwardWithBlock(const Reply& reply, MessageId id) {
    return Forward(reply, id, reply.header.subCommand);
}

/// A document (argument 0), which may be empty, or the confirmation of a write (argument 1). The
/// answer to a test (argument 2) is no news.
bool IsTimelineNews(const Reply& reply) {
    constexpr std::uint16_t kTested = 2;
    return reply.header.argument != kTested;
}

/// The same, but an empty document is no news either.
bool IsSettingsNews(const Reply& reply) {
    constexpr std::uint16_t kDocument = 0;
    const bool isEmpty = reply.header.argument == kDocument && reply.payload.empty();
    return !isEmpty && IsTimelineNews(reply);
}

Message ForwardControlProtocol(const Reply& reply, MessageId id) {
    return Forward(reply, id, reply.payload.empty() ? 0 : 1);
}

Message ForwardVideoReply(const Reply& reply, MessageId id) {
    return Forward(reply, id, kVideoReplyParam);
}

Message ForwardPlayerData(const Reply& reply, MessageId id) {
    if (reply.payload.size() != kPlayerDataSize) return {};
    return ForwardWithArgument(reply, id);
}

Message ForwardLayoutState(const Reply& reply, MessageId id) {
    if (reply.header.qualifier != 0) return {};
    return ForwardWithArgument(reply, id);
}

Message MakeStatus(const Reply& reply, MessageId id) {
    if (reply.payload.size() != kPlayerDataSize) return {};
    return WindowMessage{id, reply.header.argument, PlayerStatus{reply.header.argument}, 0};
}

Message MakeUploadAcknowledgement(const Reply& reply, MessageId id) {
    return WindowMessage{id, reply.header.subCommand, {}, reply.header.argument};
}

Message MakeDeviceModes(const Reply& reply, MessageId id) {
    if (reply.header.subCommand * std::size_t{4} != reply.payload.size()) return {};
    auto modes = std::make_unique<DeviceModes>();
    const std::uint8_t qualifier = reply.header.qualifier;
    modes->mode = qualifier == 1 || qualifier == 2 ? qualifier : 0;
    const std::size_t count = std::min<std::size_t>(reply.header.subCommand, modes->entries.size());
    for (std::size_t i = 0; i < count; ++i)
        std::ranges::copy(reply.payload.subspan(4 * i, 4), modes->entries[i].begin());
    return WindowMessage{id, 1, std::move(modes), 0};
}

Message MakeSerialData(const Reply& reply, MessageId id) {
    auto serial = std::make_unique<SerialData>();
    if (reply.payload.empty() || reply.payload.size() >= serial->bytes.size()) return {};
    serial->count = static_cast<std::uint16_t>(reply.payload.size());
    std::ranges::copy(reply.payload, serial->bytes.begin());
    return WindowMessage{id, 0, std::move(serial), 0};
}

/// Whether the last two bytes are the checksum of all before them, low-order byte first.
bool EndsWithChecksum(ByteView bytes) {
    const std::uint16_t checksum = Crc16Modbus(bytes.first(bytes.size() - 2));
    return bytes[bytes.size() - 2] == (checksum & 0xFF) && bytes.back() == checksum >> 8;
}

Message MakeParameterBlock(const Reply& reply, MessageId id) {
    constexpr std::size_t kShortForm = 6517;
    constexpr std::size_t kLongForm = 6526;
    ByteView payload = reply.payload;
    if (!payload.empty() && payload.size() != kShortForm && payload.size() != kLongForm) return {};
    if (!payload.empty()) {
        if (!EndsWithChecksum(payload)) return {};
        payload = payload.first(payload.size() - 2);
    }
    auto block = std::make_unique<ParameterBlock>();
    std::ranges::copy(payload, block->begin());
    return WindowMessage{id, 0, std::move(block), 0};
}

enum class Delivery { kFirstOpen, kEveryOpen };

constexpr std::uint16_t kAnyBlock = 0xFFFF;

/// One way of a reply to a window. A reply takes every route that names it.
struct RoutingRow {
    std::uint8_t command = 0;
    std::uint16_t block = 0;
    std::array<std::optional<Window>, 6> windows;  // candidates, first choice first
    Delivery delivery{};
    MessageId message{};
    Message (*make)(const Reply&, MessageId) = nullptr;
    bool (*isNews)(const Reply&) = nullptr;  // for windows; absent: whatever it is
};

constexpr auto kFirst = Delivery::kFirstOpen;
constexpr auto kEvery = Delivery::kEveryOpen;
using enum Window;

// clang-format off
constexpr RoutingRow kRoutes[] = {
    {kCommandSettings, kBlockControlProtocol, {{kSetParam, kBatchSend, kControlProtocol, kPlayerTimeControl}}, kFirst, MessageId::kControlProtocol, ForwardControlProtocol},
    {kCommandSettings, kBlockOsd, {{kOsd}}, kFirst, MessageId::kOsd, ForwardWithArgument},
    {kCommandSettings, kBlockScreenSplitRead, {{kSetParam}}, kFirst, MessageId::kScreenSplit, ForwardWithBlock},
    {kCommandSettings, kBlockScreenSplitWrite, {{kSetParam}}, kFirst, MessageId::kScreenSplit, ForwardWithBlock},
    {kCommandSettings, kBlockExtendedSerialPort, {{kExtendedSerialPort}}, kFirst, MessageId::kExtendedSerialPort, ForwardWithArgument, IsSettingsNews},
    {kCommandSettings, kBlockSubtitles, {{kSubtitles}}, kFirst, MessageId::kSubtitles, ForwardWithArgument, IsSettingsNews},
    {kCommandSettings, kBlockTouchAction, {{kTouchAction}}, kFirst, MessageId::kTouchAction, ForwardWithArgument, IsSettingsNews},
    {kCommandSettings, kBlockCave, {{kCave}}, kFirst, MessageId::kCave, ForwardWithArgument, IsSettingsNews},
    {kCommandSettings, kBlockPlayerControl, {{kPlayerControl}}, kFirst, MessageId::kPlayerControl, ForwardWithArgument, IsSettingsNews},
    {kCommandSettings, kBlockPlayerTimeline, {{kPlayerTimeControl}}, kFirst, MessageId::kPlayerControl, ForwardWithArgument, IsTimelineNews},
    {kCommandPlayerState, kAnyBlock, {{kPlayerControl, kPlayerTimeControl, kControlProtocol, kVideoControl, kBatchSend, kSetParam}}, kFirst, MessageId::kPlayerState, ForwardWithArgument},
    {kCommandPlayerData, kAnyBlock, {{kVideoControl, kBatchSend, kControlProtocol, kSetParam}}, kFirst, MessageId::kPlayerState, ForwardPlayerData},
    {kCommandPlayerData, kAnyBlock, {{kVideoControl}}, kFirst, MessageId::kPlayerStatus, MakeStatus},
    {kCommandUpload, kAnyBlock, {{kBatchSend}}, kFirst, MessageId::kUploadAcknowledged, MakeUploadAcknowledgement},
    {kCommandDeviceModes, kAnyBlock, {{kSetParam}}, kFirst, MessageId::kDeviceModes, MakeDeviceModes},
    {kCommandSerialData, kAnyBlock, {{kControlProtocol, kSetParam, kPlayerControl}}, kFirst, MessageId::kSerialData, MakeSerialData},
    {kCommandLayoutState, kAnyBlock, {{kVideoControl, kControlProtocol}}, kEvery, MessageId::kLayoutState, ForwardLayoutState},
    {kCommandParameterBlock, kAnyBlock, {{kSetParam}}, kFirst, MessageId::kParameterBlock, MakeParameterBlock},
    {kCommandVideo, kAnyBlock, {{kVideoControl}}, kFirst, MessageId::kVideoReply, ForwardVideoReply},
};
// clang-format on

bool Takes(const RoutingRow& row, const Reply& reply) {
    return row.command == reply.header.command &&
           (row.block == kAnyBlock || row.block == reply.header.subCommand);
}

/// What a reply becomes by a route; none when it is of a wrong length.
Message MessageBy(const RoutingRow& row, const Reply& reply) {
    Message message = row.make(reply, row.message);
    if (message) message->origin = OriginOf(reply);
    return message;
}

void Follow(const RoutingRow& row, const Reply& reply, WindowDirectory& directory) {
    if (row.isNews && !row.isNews(reply)) return;
    for (const std::optional<Window>& window : row.windows) {
        if (!window || !directory.Find(TitleOf(*window))) continue;
        if (Message message = MessageBy(row, reply)) directory.Send(TitleOf(*window), *message);
        if (row.delivery == kFirst) return;
    }
}

bool HasRoute(std::uint8_t command) {
    return std::ranges::find(kRoutes, command, &RoutingRow::command) != std::end(kRoutes);
}

/// The command number of a reply; 0 for a request and for a command the player does not support.
std::uint8_t CommandNumber(std::uint8_t command) {
    const bool supported = (command & kReplyBit) != 0 && (command & kNotSupportedBit) == 0;
    return supported ? command & kCommandMask : 0;
}

/// Sends `message` about the link that `origin` names to the first open one of `windows`.
void TellFirstOpen(WindowDirectory& directory, std::initializer_list<Window> windows,
                   MessageId message, std::uint32_t wParam, const Origin& origin) {
    const auto tell = [&](Window window) {
        return directory.Send(TitleOf(window), {message, wParam, {}, 0, origin});
    };
    static_cast<void>(std::ranges::any_of(windows, tell));
}

}  // namespace

ReplyKind KindOf(const PacketHeader& received) {
    const std::uint8_t command = CommandNumber(received.command);
    if (command == kCommandNone) return ReplyKind::kNotSupported;
    if (!HasRoute(command)) return ReplyKind::kUnknown;
    const bool isLocked = command == kCommandLayoutState && received.argument == kLayoutIsLocked;
    return isLocked ? ReplyKind::kLayoutLocked : ReplyKind::kForwarded;
}

std::vector<WindowMessage> MessagesOf(const Reply& received) {
    Reply reply = received;
    reply.header.command = CommandNumber(received.header.command);
    std::vector<WindowMessage> messages;
    for (const RoutingRow& row : kRoutes)
        if (Takes(row, reply))
            if (Message message = MessageBy(row, reply)) messages.push_back(std::move(*message));
    return messages;
}

void ReplyRouter::Route(const Reply& received) {
    Reply reply = received;
    reply.header.command = CommandNumber(received.header.command);
    switch (KindOf(received.header)) {
        case ReplyKind::kNotSupported: return RefuseNotSupported(OriginOf(received));
        case ReplyKind::kUnknown: return actions_.CloseLinks();
        case ReplyKind::kLayoutLocked: return RefuseLocked(OriginOf(reply));
        case ReplyKind::kForwarded: return RouteByTable(reply);
    }
}

void ReplyRouter::RouteByTable(const Reply& reply) {
    for (const RoutingRow& row : kRoutes)
        if (Takes(row, reply)) Follow(row, reply, directory_);
    constexpr std::uint16_t kLastGoodResult = 1;  // more is the number of what is wrong
    if (reply.header.command == kCommandSettings &&
        reply.header.subCommand == kBlockControlProtocol && reply.payload.empty() &&
        reply.header.argument <= kLastGoodResult)
        AcknowledgeControlProtocol(reply);
}

void ReplyRouter::AcknowledgeControlProtocol(const Reply& reply) {
    if (reply.header.qualifier == kRestartQualifier)
        actions_.SendPacket(reply.sender, DevicePacket::Request(kCommandCloseLinks, 0));
    // Some only read it: an empty document is no confirmation there. A run shows no boxes.
    constexpr Window kSilent[] = {kPlayerTimeControl, kSetParam, kBatchSend};
    const auto isOpen = [this](Window window) { return directory_.Find(TitleOf(window)); };
    if (std::ranges::none_of(kSilent, isOpen)) prompts_.Inform(Localized(kControlProtocolSaved));
}

/// Whoever asked hears of it first: its request has ended by the time that the box is open.
void ReplyRouter::RefuseNotSupported(const Origin& origin) {
    Origin asked = origin;
    asked.header.command &= kCommandMask;
    const Boxes boxes = hub_.Report({ExchangeNews::Kind::kNotSupported, asked});
    if (boxes == Boxes::kShown) prompts_.Warn(Localized(kNotSupported));
    actions_.CloseLinks();
}

void ReplyRouter::RefuseLocked(const Origin& origin) {
    hub_.Report({ExchangeNews::Kind::kLayoutLocked, origin});
    prompts_.Inform(Localized(kLayoutLocked));
}

void ReplyRouter::LinkEnded(const Target& player, ConnectionNumber connection) {
    constexpr std::uint32_t kKeepAliveTimer = 7;
    const Origin origin{player, {}, connection};
    TellFirstOpen(directory_, {kSetParam, kBatchSend}, MessageId::kLinkEnded, 0, origin);
    TellFirstOpen(directory_, {kControlProtocol, kSetParam, kPlayerControl},
                  MessageId::kStopKeepAlive, kKeepAliveTimer, origin);
    hub_.Report({ExchangeNews::Kind::kLinkEnded, origin});
}

}  // namespace sontaro
