// Players that have been found before.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/json_file.h"
#include "devices/device_record.h"
#include "link/socket.h"

namespace sontaro::cli {

/// A file in the folder of data that says who was found last at which address. One thread.
class KnownPlayers {
   public:
    explicit KnownPlayers(const std::filesystem::path& dataFolder);

    /// Who was there last; none: nobody has been found there yet.
    [[nodiscard]] std::optional<DeviceRecord> At(const Ipv4Address& address) const;
    /// The players that have been found with that ID, wherever; an ID may stand on several.
    [[nodiscard]] std::set<std::string> MacsWithId(const std::string& id) const;
    /// Remembers who has been found now. That it cannot be written harms nobody now.
    void Take(const std::vector<DeviceRecord>& found);

   private:
    JsonFile file_;
};

}  // namespace sontaro::cli
