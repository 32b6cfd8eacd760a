#include "devices/video_select_device.h"

#include "link/discovery.h"

namespace sontaro {

namespace {

SelectDeviceDesign Design() {
    ScanDesign scan;
    scan.window = Window::kSelectDevices;
    scan.addressBox = kVideoSetAddress;
    scan.addressState = kVideoSetAddressState;
    scan.scanButton = kVideoSetScan;
    scan.list = kVideoSetList;
    scan.listState = kVideoSetListState;
    scan.request = DiscoveryRequest(kBroadcastAddress);
    return {scan, kVideoSetSelectAll, kVideoSetSelectNone, kVideoSetRemarks, RefusalOfUpload};
}

}  // namespace

CVideoSelectDevice::CVideoSelectDevice(WizardDialog& wizard, const ScanSetup& setup)
    : SelectDevicePage(wizard, setup, Design()) {}

}  // namespace sontaro
