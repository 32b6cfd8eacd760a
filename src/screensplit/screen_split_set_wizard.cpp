#include "screensplit/screen_split_set_wizard.h"

namespace sontaro {

namespace {

constexpr const char* kWindowName = "screenSplit";
constexpr std::size_t kDevices = 0;
constexpr std::size_t kParameters = 1;

constexpr PageRoute kRoutes[] = {
    {MessageId::kUdpEvent, kDevices},           {MessageId::kDeviceModes, kParameters},
    {MessageId::kParameterBlock, kParameters},  {MessageId::kScreenSplit, kParameters},
    {MessageId::kLinkEnded, kParameters, true},
};

}  // namespace

CScreenSplitSetWizard::CScreenSplitSetWizard(wxWindow* parent, const UiServices& services,
                                             const ScanSetup& setup,
                                             const SecondPage& makeSecondPage)
    : WizardDialog(parent, Window::kSelectDevices, services, kRoutes) {
    devices_ = new CScreenSplitSelectDevice(*this, setup);
    AddPage(devices_);
    AddPage(makeSecondPage(*this));
    Begin(kWindowName);
}

}  // namespace sontaro
