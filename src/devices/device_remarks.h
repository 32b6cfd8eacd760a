// The user's notes about players, kept per MAC address.
#pragma once

#include "base/json_file.h"
#include "devices/device_record.h"

namespace sontaro {

/// A JSON file {MAC address: {"Remarks", "authInputNum", "authOutputNum"}}, which all of the user's
/// installations share.
class DeviceRemarks {
   public:
    explicit DeviceRemarks(std::filesystem::path path) : file_(std::move(path)) {}

    /// Fills in what is known of the device; a key that is absent or of another type leaves its
    /// field as it is.
    void ApplyTo(DeviceRecord& device) const;

    /// Takes in what other processes have written meanwhile.
    void Reload() { file_.Reload(); }

    /// Keeps `remarks` for the device's MAC address and writes the file. When that fails, nothing
    /// has changed.
    [[nodiscard]] Status SetRemarks(const std::string& mac, const std::string& remarks);

   private:
    JsonFile file_;
};

}  // namespace sontaro
