// The user's note about one player.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "devices/device_record.h"

class wxWindow;

namespace sontaro {

/// Control number of the text that is edited.
inline constexpr int kRemarksText = 2310;

/// Lets the user edit the remarks of `device`, modally; the new text, or none when the user
/// leaves without OK. When the program is ended meanwhile, `keep` gets the text as it is then.
[[nodiscard]] std::optional<std::string> AskForRemarks(
    wxWindow* parent, const DeviceRecord& device,
    const std::function<void(const std::string&)>& keep);

}  // namespace sontaro
