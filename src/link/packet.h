// The packet envelope of the player protocol: a 16-byte header and a payload.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "base/bytes.h"

namespace sontaro {

inline constexpr std::uint32_t kPacketMagic = 0xA55A5A5A;
inline constexpr std::size_t kHeaderSize = 16;

/// Most bytes that one request holds; also the size of a link's receive buffer.
inline constexpr std::size_t kBufferSize = 0xA00000;

/// Most payload bytes of a packet that is sent.
inline constexpr std::size_t kLongestPayload = kBufferSize - kHeaderSize;

/// In the command byte of a reply: this is a reply.
inline constexpr std::uint8_t kReplyBit = 0x80;
/// In the command byte of a reply: the player does not support the command.
inline constexpr std::uint8_t kNotSupportedBit = 0x40;
/// The bits of a command byte that hold the command number.
inline constexpr std::uint8_t kCommandMask = 0x3F;

/// Command numbers.
enum Command : std::uint8_t {
    kCommandNone = 0,
    kCommandDiscovery = 1,
    kCommandSettings = 3,
    kCommandPlayerState = 10,
    kCommandPlayerData = 19,
    kCommandUpload = 20,
    kCommandCloseLinks = 33,
    kCommandDeviceModes = 36,
    kCommandSerialData = 50,
    kCommandLayoutState = 52,
    kCommandParameterBlock = 54,
    kCommandVideo = 59,
    kLastCommand = kCommandVideo,
};

/// Settings blocks of command 3, in the sub-command field.
enum SettingsBlock : std::uint16_t {
    kBlockControlProtocol = 1,
    kBlockOsd = 4,
    kBlockScreenSplitRead = 12,
    kBlockScreenSplitWrite = 13,
    kBlockExtendedSerialPort = 15,
    kBlockSubtitles = 16,
    kBlockTouchAction = 18,
    kBlockCave = 19,
    kBlockPlayerControl = 21,
    kBlockPlayerTimeline = 23,
};

/// Payload bytes of a reply to command 19.
inline constexpr std::size_t kPlayerDataSize = 207'496;

/// The header; every field is little-endian on the wire.
struct PacketHeader {
    std::uint32_t magic = kPacketMagic;
    std::uint8_t command = 0;    ///< number in the low 6 bits, reply and not-supported bits
    std::uint8_t qualifier = 0;  ///< small mode value of the command
    std::uint16_t reserved = 0;
    std::uint16_t subCommand = 0;  ///< for command 3 the settings block
    std::uint16_t argument = 0;    ///< for command 3: 0 read, 1 write, 2 test; in replies a status
    std::uint32_t payloadLength = 0;

    bool operator==(const PacketHeader&) const = default;
};

[[nodiscard]] std::array<std::uint8_t, kHeaderSize> EncodeHeader(const PacketHeader& header);

/// The header in the first 16 of `bytes`, of which there must be as many; nothing is checked.
[[nodiscard]] PacketHeader DecodeHeader(ByteView bytes);

/// A header and the payload that follows it.
struct DevicePacket {
    PacketHeader header;
    Bytes payload;

    /// A request from its two header words: `commandWord` is command + qualifier x 0x100,
    /// `selectorWord` is sub-command + argument x 0x10000. The payload length is set to match.
    [[nodiscard]] static DevicePacket Request(std::uint32_t commandWord, std::uint32_t selectorWord,
                                              std::string_view payload = {});

    /// The bytes on the wire.
    [[nodiscard]] Bytes Serialize() const;
};

}  // namespace sontaro
