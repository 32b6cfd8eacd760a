// What uploads take without any of ours between the files and the socket.
#pragma once

#include <filesystem>
#include <vector>

#include "link/socket.h"

namespace sontaro::bench {

/// Whether the next chunk is read while one is on its way, or after it has been acknowledged.
enum class Reading { kAhead, kInTurn };

/// Seconds from the first announcement to the last acknowledgement, in a bare loop over a socket to
/// a player.
[[nodiscard]] double SecondsOfBareUpload(const Endpoint& player,
                                         const std::vector<std::filesystem::path>& videos,
                                         Reading reading);

}  // namespace sontaro::bench
