// The page of a wizard on which players are found and ticked.
#pragma once

#include <optional>
#include <vector>

#include "devices/scan_panel.h"
#include "widgets/wizard_dialog.h"

namespace sontaro {

/// What the wizards' pages differ in.
struct SelectDeviceDesign {
    ScanDesign scan;
    int selectAll = 0, selectNone = 0, remarks = 0;  ///< buttons
    /// Why what is ticked cannot be used together; none when it can.
    std::optional<LocalText> (*refusal)(const std::vector<DeviceRecord>& chosen) = nullptr;
};

/// Scans from one of this machine's addresses on a socket that is open during a scan alone. The
/// list is as wide as what it shows; its ticks are hidden during a scan.
class SelectDevicePage : public WizardPage {
   public:
    SelectDevicePage(WizardDialog& wizard, const ScanSetup& setup, SelectDeviceDesign design);

    /// The players that were ticked when Next was last pressed, each as it was heard last, by
    /// numeric address.
    [[nodiscard]] const std::vector<DeviceRecord>& Chosen() const { return chosen_; }

    void Entered() override { panel_->FocusScanButton(); }
    void Left() override { panel_->EndScan(); }
    [[nodiscard]] bool GoOn() override;
    void HandleMessage(WindowMessage& message) override { panel_->Take(message); }

   private:
    void AddButtons();

    Prompts& prompts_;
    const SelectDeviceDesign design_;
    std::vector<DeviceRecord> chosen_;
    ScanPanel* panel_ = nullptr;
};

}  // namespace sontaro
