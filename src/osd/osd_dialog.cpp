#include "osd/osd_dialog.h"

#include "osd/osd_document.h"

namespace sontaro {

namespace {

constexpr SettingsDialogDesign kDesign = {Window::kOsd, "osd", kBlockOsd, true,
                                          FeatureDialog::Addressing::kPlayer};

}  // namespace

COSD::COSD(wxWindow* parent, const UiServices& services, const DeviceRecord& player)
    : SettingsDialog(parent, services, kDesign, player, std::make_unique<OsdSettings>()) {}

}  // namespace sontaro
