// The page on which the players of a wall are found and ticked.
#pragma once

#include "devices/select_device_page.h"
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

/// Scans with a request of its own, that has a header alone.
class CScreenSplitSelectDevice : public SelectDevicePage {
   public:
    CScreenSplitSelectDevice(WizardDialog& wizard, const ScanSetup& setup);
};

}  // namespace sontaro
