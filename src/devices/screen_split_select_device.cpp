#include "devices/screen_split_select_device.h"

#include "link/discovery.h"

namespace sontaro {

namespace {

SelectDeviceDesign Design() {
    ScanDesign scan;
    scan.window = Window::kSelectDevices;
    scan.addressBox = kSplitAddress;
    scan.addressState = kSplitAddressState;
    scan.scanButton = kSplitScan;
    scan.list = kSplitList;
    scan.listState = kSplitListState;
    scan.request = ShortDiscoveryRequest();
    return {scan, kSplitSelectAll, kSplitSelectNone, kSplitRemarks, RefusalOfWall};
}

}  // namespace

CScreenSplitSelectDevice::CScreenSplitSelectDevice(WizardDialog& wizard, const ScanSetup& setup)
    : SelectDevicePage(wizard, setup, Design()) {}

}  // namespace sontaro
