// A player as it announces itself.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/bytes.h"

namespace sontaro {

/// One discovered player. Texts are UTF-8.
struct DeviceRecord {
    std::string ip;             ///< dotted IPv4 address
    std::string mac;            ///< "02:00:7F:00:00:02"
    std::uint16_t tcpPort = 0;  ///< where its TCP link listens
    std::string id;
    std::string versionText;        ///< versions and channels in the language of the process
    std::uint16_t fpgaVersion = 0;  ///< 0: none
    std::uint16_t channelCode = 0;
    std::uint16_t versionWord = 0;  ///< major, minor and patch in bits 15..12, 11..8 and 7..4
    std::string remarks;            ///< the user's own note
    int authorisedInputs = 0;
    int authorisedOutputs = 0;
    bool ticked = false;
    bool sharesAddress = false;  ///< another player answers at the same IP address
    bool silent = false;         ///< is as it was heard last: it has not answered of late

    /// Whether both are the same player at the same address.
    [[nodiscard]] bool IsSameDevice(const DeviceRecord& other) const {
        return mac == other.mac && ip == other.ip;
    }
    bool operator==(const DeviceRecord&) const = default;
};

/// The player that a discovery reply announces; none when the datagram is no such reply. Replies
/// of 40 bytes and more count, the ID (octets 34 to 45) then holds what is there.
[[nodiscard]] std::optional<DeviceRecord> ParseDiscoveryReply(ByteView datagram);

/// The version and channel text of a player, as `DeviceRecord::versionText`.
[[nodiscard]] std::string VersionText(std::uint16_t versionWord, std::uint16_t fpgaVersion,
                                      std::uint16_t channelCode);

}  // namespace sontaro
