#include "osd/osd_dialog.h"

#include "osd/osd_document.h"

namespace sontaro {

namespace {

// A write has the argument of a read; the player knows it by its payload.
constexpr SettingsDialogDesign kDesign = {
    Window::kOsd, "osd", {kBlockOsd, MessageId::kOsd, 0, false}, true, true};

}  // namespace

COSD::COSD(wxWindow* parent, const UiServices& services, const DeviceRecord& player)
    : SettingsDialog(parent, services, kDesign, player, std::make_unique<OsdSettings>()) {}

}  // namespace sontaro
