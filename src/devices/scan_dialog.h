// The dialog in which the user finds and chooses players.
#pragma once

#include <vector>

#include "devices/scan_panel.h"
#include "widgets/feature_dialog.h"

namespace sontaro {

/// Control numbers of the scan dialog.
inline constexpr int kScanButton = 2301;
inline constexpr int kScanAddress = 2302;
inline constexpr int kScanList = 2303;
inline constexpr int kScanState = 2304;
inline constexpr int kScanAddressState = 2305;

/// Broadcasts the discovery request from one of this machine's addresses, lists the players that
/// answer and hands on those that the user has chosen.
class CScanForDevices : public FeatureDialog {
   public:
    CScanForDevices(wxWindow* parent, const UiServices& services, const ScanSetup& setup,
                    ChoiceMode mode);

    /// The chosen players by numeric address, once the dialog has closed with wxID_OK.
    [[nodiscard]] const std::vector<DeviceRecord>& Chosen() const { return chosen_; }

   private:
    void HandleMessage(WindowMessage& message) override { panel_->Take(message); }
    [[nodiscard]] bool MayClose() override { return true; }

    void Confirm();

    ChoiceMode mode_;
    std::vector<DeviceRecord> chosen_;
    ScanPanel* panel_ = nullptr;
};

}  // namespace sontaro
