// The page on which players are found and ticked that get videos.
#pragma once

#include "devices/select_device_page.h"
#include "widgets/wizard_dialog.h"

namespace sontaro {

/// Control numbers of the page.
inline constexpr int kVideoSetList = 2501;
inline constexpr int kVideoSetAddress = 2502;
inline constexpr int kVideoSetSelectAll = 2503;
inline constexpr int kVideoSetScan = 2504;
inline constexpr int kVideoSetSelectNone = 2505;
inline constexpr int kVideoSetRemarks = 2506;
inline constexpr int kVideoSetListState = 2507;
inline constexpr int kVideoSetAddressState = 2508;

/// Takes any number of players, as they are served one after another.
class CVideoSelectDevice : public SelectDevicePage {
   public:
    CVideoSelectDevice(WizardDialog& wizard, const ScanSetup& setup);
};

}  // namespace sontaro
