// Which one of the documents that stood on a player earlier is to be opened.
#pragma once

#include <wx/window.h>

#include <optional>
#include <string>

#include "venue/document_keeper.h"
#include "widgets/ui_services.h"

namespace sontaro {

/// Control numbers of the dialog, besides OK and Cancel.
inline constexpr int kEarlierGrid = 3601;
inline constexpr int kLaterChangesGrid = 3602;

/// What the user is asked about.
struct EarlierQuestion {
    DeviceRecord player;
    SettingsBlock block{};               ///< the one that is read
    std::optional<std::string> present;  ///< what the player holds, if that is known
};

/// Asks modally. The document's text; none when the user has thought better of it.
[[nodiscard]] std::optional<std::string> ChooseEarlier(wxWindow* parent, const UiServices& services,
                                                       const EarlierQuestion& question);

}  // namespace sontaro
