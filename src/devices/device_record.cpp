#include "devices/device_record.h"

#include <fmt/printf.h>

#include "base/encoding.h"
#include "base/local_text.h"
#include "link/packet.h"

namespace sontaro {

namespace {

constexpr std::size_t kShortestReply = 40;
constexpr std::uint32_t kShortestPayload = 30;
constexpr std::size_t kIdOffset = 34;
constexpr std::size_t kIdLength = 12;

constexpr LocalText kNoInput = {"通道:(无输入%d输出)", "Channel:(No Input %d Output)"};
constexpr LocalText kOneInput = {"通道:(1输入%d输出)", "Channel:(1 Input %d Output)"};
constexpr LocalText kWithFpga = {"播放器版本号:%d.%d.%d FPGA版本号:%d.0 %s",
                                 "Player ver:%d.%d.%d FPGA ver:%d.0 %s"};
constexpr LocalText kWithoutFpga = {"播放器版本号:%d.%d.%d %s", "Player ver:%d.%d.%d %s"};
constexpr LocalText kUnknownPlayer = {"未知播放器", "Unknown Player"};

bool IsDiscoveryReply(ByteView datagram) {
    if (datagram.size() < kShortestReply) return false;
    const PacketHeader header = DecodeHeader(datagram);
    return (header.command & kCommandMask) == kCommandDiscovery &&
           (header.argument == 1 || header.argument == 7) &&
           header.payloadLength >= kShortestPayload;
}

std::uint16_t Word(ByteView bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
}

std::string IdText(ByteView datagram) {
    const std::size_t length = std::min(kIdLength, datagram.size() - kIdOffset);
    std::string_view id = AsText(datagram.subspan(kIdOffset, length));
    id = id.substr(0, id.find_last_not_of('\0') + 1);
    std::string text = DecodeByteByByte(id);
    const PacketHeader header = DecodeHeader(datagram);
    if (header.qualifier == 1)
        text += fmt::sprintf("%02x%02x", header.subCommand >> 8, header.subCommand & 0xFF);
    return text;
}

/// The channel part of the version text; empty for an unknown channel code.
std::string ChannelText(std::uint16_t code) {
    if (code >= 1 && code <= 9) return fmt::sprintf(Localized(kNoInput), code);
    if (code >= 11 && code <= 91 && code % 10 == 1)
        return fmt::sprintf(Localized(kOneInput), code / 10);
    return "";
}

}  // namespace

std::optional<DeviceRecord> ParseDiscoveryReply(ByteView datagram) {
    if (!IsDiscoveryReply(datagram)) return std::nullopt;
    const auto at = [&](std::size_t offset) { return static_cast<int>(datagram[offset]); };
    DeviceRecord device;
    device.ip = fmt::sprintf("%d.%d.%d.%d", at(16), at(17), at(18), at(19));
    device.mac = fmt::sprintf("%02X:%02X:%02X:%02X:%02X:%02X", at(20), at(21), at(22), at(23),
                              at(24), at(25));
    device.tcpPort = Word(datagram, 26);
    device.versionWord = Word(datagram, 28);
    device.fpgaVersion = Word(datagram, 30);
    device.channelCode = Word(datagram, 32);
    device.id = IdText(datagram);
    device.versionText = VersionText(device.versionWord, device.fpgaVersion, device.channelCode);
    return device;
}

std::string VersionText(std::uint16_t versionWord, std::uint16_t fpgaVersion,
                        std::uint16_t channelCode) {
    const std::string channels = ChannelText(channelCode);
    if (channels.empty()) return Localized(kUnknownPlayer);
    const int majorVersion = versionWord >> 12;
    const int minorVersion = versionWord >> 8 & 0xF;
    const int patch = versionWord >> 4 & 0xF;
    if (fpgaVersion != 0)
        return fmt::sprintf(Localized(kWithFpga), majorVersion, minorVersion, patch, fpgaVersion,
                            channels);
    return fmt::sprintf(Localized(kWithoutFpga), majorVersion, minorVersion, patch, channels);
}

}  // namespace sontaro
