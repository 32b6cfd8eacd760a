// The on-screen display of one player.
#pragma once

#include "widgets/settings_dialog.h"

namespace sontaro {

/// Edits the text that a player draws over its video.
class COSD : public SettingsDialog {
   public:
    COSD(wxWindow* parent, const UiServices& services, const DeviceRecord& player);
};

}  // namespace sontaro
