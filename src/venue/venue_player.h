// A player of a venue with the documents that were read from it.
#pragma once

#include <string>
#include <vector>

#include "devices/device_record.h"
#include "session/settings_blocks.h"

namespace sontaro {

/// What is kept of a player besides its settings. Texts are UTF-8.
struct VenuePlayer {
    std::string id;
    std::string mac;  ///< "02:00:7F:00:00:02"
    std::string ip;
    std::uint16_t port = 0;
    std::uint16_t versionWord = 0;  ///< this and the next two as in `DeviceRecord`
    std::uint16_t fpgaVersion = 0;
    std::uint16_t channelCode = 0;
    std::string remark;  ///< the user's own note

    bool operator==(const VenuePlayer&) const = default;
};

[[nodiscard]] VenuePlayer VenuePlayerOf(const DeviceRecord& device);

/// What has become of reading one block.
struct BlockReading {
    enum class Outcome : std::uint8_t {
        kRead,
        kNotSupported,  ///< the player does not have the block: no failure
        kFailed,
    };
    const SettingsBlockKind* kind = nullptr;  ///< a row of `SettingsBlocks`
    Outcome outcome = Outcome::kRead;
    std::string text = {};  ///< of what was read: exactly as the player has sent it
    std::string why = {};   ///< of a failure: the word for its end (session/session_end.h)
};

struct PlayerDocuments {
    VenuePlayer player;
    std::vector<BlockReading> blocks;  ///< each at most once

    /// What was read of a block; absent: nothing was.
    [[nodiscard]] const BlockReading* Find(const SettingsBlockKind& kind) const;
};

}  // namespace sontaro
