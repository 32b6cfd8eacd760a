#include "venue/venue_player.h"

#include <algorithm>

namespace sontaro {

VenuePlayer VenuePlayerOf(const DeviceRecord& device) {
    return {device.id,          device.mac,         device.ip,          device.tcpPort,
            device.versionWord, device.fpgaVersion, device.channelCode, device.remarks};
}

const BlockReading* PlayerDocuments::Find(const SettingsBlockKind& kind) const {
    const auto reading = std::ranges::find(blocks, &kind, &BlockReading::kind);
    return reading == blocks.end() ? nullptr : &*reading;
}

}  // namespace sontaro
