#include "settings/custom_settings_dialogs.h"

#include "settings/custom_settings_document.h"

namespace sontaro {

namespace {

constexpr SettingsDialogDesign Design(Window window, const char* name, SettingsBlock block,
                                      MessageId reply) {
    return {window, name, {block, reply, 1, true}, false, false};
}

constexpr auto kCaveDesign = Design(Window::kCave, "cave", kBlockCave, MessageId::kCave);
constexpr auto kSerialPortDesign = Design(Window::kExtendedSerialPort, "extendedSerialPort",
                                          kBlockExtendedSerialPort, MessageId::kExtendedSerialPort);
constexpr auto kTouchActionDesign =
    Design(Window::kTouchAction, "touchAction", kBlockTouchAction, MessageId::kTouchAction);
constexpr auto kSubtitlesDesign =
    Design(Window::kSubtitles, "subtitles", kBlockSubtitles, MessageId::kSubtitles);

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
