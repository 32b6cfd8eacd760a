#include "batchsend/video_set_wizard.h"

#include "batchsend/video_batch_send.h"
#include "batchsend/video_set_param.h"

namespace sontaro {

namespace {

constexpr const char* kWindowName = "videoSet";
enum Page : std::size_t { kDevices, kParameters, kSending };

/// The pages behind the first one hear players only while they speak to them.
constexpr PageRoute kRoutes[] = {
    {MessageId::kUdpEvent, kDevices},
    {MessageId::kPlayerState, kParameters, true},
    {MessageId::kDeviceModes, kParameters, true},
    {MessageId::kSerialData, kParameters, true},
    {MessageId::kControlProtocol, kParameters, true},
    {MessageId::kLinkEnded, kParameters, true},
    {MessageId::kPlayerState, kSending, true},
    {MessageId::kControlProtocol, kSending, true},
    {MessageId::kUploadAcknowledged, kSending, true},
    {MessageId::kLinkEnded, kSending, true},
};

}  // namespace

CVideoSetWizard::CVideoSetWizard(wxWindow* parent, const UiServices& services,
                                 const ScanSetup& setup)
    : WizardDialog(parent, Window::kSelectDevices, services, kRoutes) {
    devices_ = new CVideoSelectDevice(*this, setup);
    AddPage(devices_);
    AddPage(new CVideoSetParam(*this));
    AddPage(new CVideoBatchSend(*this));
    Begin(kWindowName);
}

std::filesystem::path CVideoSetWizard::VideoTypeFile() const {
    return Services().programFolder / "Videos" / "VideoTypeProtocol.Json";
}

std::filesystem::path CVideoSetWizard::Journals() const {
    return Services().programFolder / "Uploads";
}

void OpenVideoSetWizard(wxWindow* parent, const UiServices& services, const ScanSetup& setup) {
    CVideoSetWizard(parent, services, setup).ShowModal();
}

}  // namespace sontaro
