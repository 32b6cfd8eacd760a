#include "settings/custom_settings_dialogs.h"

#include "settings/custom_settings_document.h"

namespace sontaro {

namespace {

constexpr SettingsDialogDesign kCaveDesign = {Window::kCave, "cave", kBlockCave};
constexpr SettingsDialogDesign kSerialPortDesign = {Window::kExtendedSerialPort,
                                                    "extendedSerialPort", kBlockExtendedSerialPort};
constexpr SettingsDialogDesign kTouchActionDesign = {Window::kTouchAction, "touchAction",
                                                     kBlockTouchAction};
constexpr SettingsDialogDesign kSubtitlesDesign = {Window::kSubtitles, "subtitles",
                                                   kBlockSubtitles};

}  // namespace

CustomSettingsDialog::CustomSettingsDialog(wxWindow* parent, const UiServices& services,
                                           const SettingsDialogDesign& design,
                                           const DeviceRecord& player)
    : SettingsDialog(parent, services, design, player, std::make_unique<CustomSettings>()) {}

CCave::CCave(wxWindow* parent, const UiServices& services, const DeviceRecord& player)
    : CustomSettingsDialog(parent, services, kCaveDesign, player) {}

CExtendedSerialPort::CExtendedSerialPort(wxWindow* parent, const UiServices& services,
                                         const DeviceRecord& player)
    : CustomSettingsDialog(parent, services, kSerialPortDesign, player) {}

CTouchAction::CTouchAction(wxWindow* parent, const UiServices& services, const DeviceRecord& player)
    : CustomSettingsDialog(parent, services, kTouchActionDesign, player) {}

CVODSubtitles::CVODSubtitles(wxWindow* parent, const UiServices& services,
                             const DeviceRecord& player)
    : CustomSettingsDialog(parent, services, kSubtitlesDesign, player) {}

}  // namespace sontaro
