#include "batchsend/upload_packets.h"

#include <algorithm>
#include <string>

#include "exchange/player_requests.h"

namespace sontaro {

namespace {

using Kind = Verdict::Kind;

/// Before the name in an announcement: the video's size, low-order byte first.
constexpr std::size_t kSizeLength = 8;
/// In the answer to command 19: free space in MiB, low-order byte first.
constexpr std::size_t kFreeSpaceOffset = 4;
constexpr std::size_t kFreeSpaceLength = 4;
constexpr unsigned kMebibyteBits = 20;

constexpr std::uint16_t kLastGoodResult = 1;  // of the control protocol

std::uint32_t CommandWord(UploadStep step) {
    return kCommandUpload | static_cast<std::uint32_t>(step) << 8;
}

std::uint32_t SelectorWord(std::uint16_t number, std::uint16_t code) {
    return number | std::uint32_t{code} << 16;
}

}  // namespace

SharedPacket VideoAnnouncement(std::string_view name, std::uint64_t size, std::uint16_t code) {
    std::string payload(kSizeLength, '\0');
    for (std::size_t i = 0; i < kSizeLength; ++i) payload[i] = static_cast<char>(size >> 8 * i);
    payload += name.substr(name.find_last_of("/\\") + 1);
    return ReadyPacket(CommandWord(UploadStep::kAnnouncement), SelectorWord(0, code), payload);
}

std::uint16_t ChunkNumber(std::uint64_t sent) {
    const std::uint64_t chunks = (sent + kVideoChunkSize - 1) / kVideoChunkSize;
    return static_cast<std::uint16_t>(std::max<std::uint64_t>(chunks, 1));
}

SharedPacket VideoChunk(ChunkBuffer buffer, std::uint16_t number, std::uint16_t code,
                        UploadStep step) {
    PacketHeader header =
        DevicePacket::Request(CommandWord(step), SelectorWord(number, code)).header;
    header.payloadLength = static_cast<std::uint32_t>(buffer->size() - kHeaderSize);
    std::ranges::copy(EncodeHeader(header), buffer->begin());
    return buffer;
}

SharedPacket VideoTypePacket(std::string_view document) {
    return ReadyPacket(kCommandSettings, kBlockControlProtocol, document);
}

bool IsAcknowledgement(const WindowMessage& message) {
    return message.id == MessageId::kUploadAcknowledged && message.wParam == 0;
}

std::uint8_t QualifierOf(const WindowMessage& message) { return message.origin.header.qualifier; }

Verdict JudgeVideoTypes(const WindowMessage& message) {
    if (message.id != MessageId::kControlProtocol || !PayloadOf(message).empty()) return {};
    const std::uint16_t result = message.origin.header.argument;
    return {result > kLastGoodResult ? Kind::kRefused : Kind::kReply, result};
}

std::optional<std::uint64_t> FreeSpaceIn(const WindowMessage& message, std::uint16_t part) {
    const ByteView data = PayloadOf(message);
    const bool isMine = message.id == MessageId::kPlayerState &&
                        message.origin.header.command == kCommandPlayerData &&
                        message.wParam == part && data.size() == kPlayerDataSize;
    if (!isMine) return std::nullopt;
    std::uint64_t mebibytes = 0;
    for (std::size_t i = 0; i < kFreeSpaceLength; ++i)
        mebibytes |= std::uint64_t{data[kFreeSpaceOffset + i]} << 8 * i;
    return mebibytes << kMebibyteBits;
}

std::optional<PlayerMode> ModeIn(const WindowMessage& message) {
    const auto* record = std::get_if<std::unique_ptr<DeviceModes>>(&message.record);
    if (message.id != MessageId::kDeviceModes || !record || !*record) return std::nullopt;
    const std::uint16_t mode = (*record)->mode;
    return mode <= static_cast<std::uint16_t>(PlayerMode::kSlave) ? static_cast<PlayerMode>(mode)
                                                                  : PlayerMode::kIndependent;
}

Request AskPlayerMode() {
    return {ReadyPacket(kCommandDeviceModes, 0), [](const WindowMessage& message) {
                return Verdict{ModeIn(message) ? Kind::kReply : Kind::kNotMine};
            }};
}

}  // namespace sontaro
