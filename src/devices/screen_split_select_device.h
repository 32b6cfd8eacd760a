// The page on which the players of a wall are found and ticked.
#pragma once

#include <vector>

#include "devices/scan_panel.h"
#include "widgets/wizard_dialog.h"

namespace sontaro {

/// Control numbers of the page.
inline constexpr int kSplitList = 2201;
inline constexpr int kSplitAddress = 2202;
inline constexpr int kSplitSelectAll = 2203;
inline constexpr int kSplitScan = 2204;
inline constexpr int kSplitSelectNone = 2205;
inline constexpr int kSplitRemarks = 2206;
inline constexpr int kSplitListState = 2207;
inline constexpr int kSplitAddressState = 2208;

/// Scans from one of this machine's addresses with a request of its own, on a socket that is open
/// during a scan alone. The list is as wide as what it shows; its ticks are hidden during a scan.
class CScreenSplitSelectDevice : public WizardPage {
   public:
    CScreenSplitSelectDevice(WizardDialog& wizard, const ScanSetup& setup);

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
    std::vector<DeviceRecord> chosen_;
    ScanPanel* panel_ = nullptr;
};

}  // namespace sontaro
