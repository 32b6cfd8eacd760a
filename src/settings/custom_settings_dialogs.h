// The settings that a player describes itself: four dialogs of one design.
#pragma once

#include "widgets/settings_dialog.h"

namespace sontaro {

/// Shows one of a player's blocks of custom settings; the dialogs differ in the block alone.
class CustomSettingsDialog : public SettingsDialog {
   public:
    CustomSettingsDialog(wxWindow* parent, const UiServices& services,
                         const SettingsDialogDesign& design, const DeviceRecord& player);
};

class CCave : public CustomSettingsDialog {
   public:
    CCave(wxWindow* parent, const UiServices& services, const DeviceRecord& player);
};

class CExtendedSerialPort : public CustomSettingsDialog {
   public:
    CExtendedSerialPort(wxWindow* parent, const UiServices& services, const DeviceRecord& player);
};

class CTouchAction : public CustomSettingsDialog {
   public:
    CTouchAction(wxWindow* parent, const UiServices& services, const DeviceRecord& player);
};

class CVODSubtitles : public CustomSettingsDialog {
   public:
    CVODSubtitles(wxWindow* parent, const UiServices& services, const DeviceRecord& player);
};

}  // namespace sontaro
