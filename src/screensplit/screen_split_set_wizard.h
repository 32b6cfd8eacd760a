// The wizard that makes one wall of the screens of several players.
#pragma once

#include <functional>
#include <vector>

#include "devices/screen_split_select_device.h"
#include "widgets/wizard_dialog.h"

namespace sontaro {

/// Begins with the choice of the players; the page behind it has them.
class CScreenSplitSetWizard : public WizardDialog {
   public:
    /// Makes the second page, whose caption is `Window::kSetParam`.
    using SecondPage = std::function<WizardPage*(CScreenSplitSetWizard&)>;

    CScreenSplitSetWizard(wxWindow* parent, const UiServices& services, const ScanSetup& setup,
                          const SecondPage& makeSecondPage);

    /// The players that were ticked when Next was last pressed, each as it was heard last, by
    /// numeric address: 1 to `kMostDevices`.
    [[nodiscard]] const std::vector<DeviceRecord>& Players() const { return devices_->Chosen(); }

   private:
    CScreenSplitSelectDevice* devices_ = nullptr;
};

}  // namespace sontaro
