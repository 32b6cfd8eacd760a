// What backing up players takes without any of ours between their answers and the files.
#pragma once

#include <filesystem>
#include <vector>

#include "link/socket.h"

namespace sontaro::bench {

/// Seconds in which bare loops of send and recv, so many at a time and over a connection for each
/// player, read every block of settings and write it into a file in `folder`. Everything is on the
/// disk then.
[[nodiscard]] double SecondsOfBareBackup(const std::vector<Endpoint>& players,
                                         const std::filesystem::path& folder, std::size_t parallel);

}  // namespace sontaro::bench
