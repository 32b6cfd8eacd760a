// The wizard that sends videos to many players.
#pragma once

#include <vector>

#include "batchsend/video_set.h"
#include "devices/video_select_device.h"
#include "widgets/wizard_dialog.h"

namespace sontaro {

/// Its pages are the choice of the players, what they are to get, and the sending.
class CVideoSetWizard : public WizardDialog {
   public:
    CVideoSetWizard(wxWindow* parent, const UiServices& services, const ScanSetup& setup);

    /// The players that were ticked when Next was last pressed, each as it was heard last, by
    /// numeric address: any number of them, each with an address of its own.
    [[nodiscard]] const std::vector<DeviceRecord>& Players() const { return devices_->Chosen(); }

    /// What the parameter page decides. Its players are those of `Players`, in their order, once
    /// that page has been left by Next.
    [[nodiscard]] VideoSet& Set() { return set_; }

    /// The file of the names of categories that players are sent behind their videos.
    [[nodiscard]] std::filesystem::path VideoTypeFile() const;

    /// The folder of the journals of uploads.
    [[nodiscard]] std::filesystem::path Journals() const;

   private:
    VideoSet set_;
    CVideoSelectDevice* devices_ = nullptr;
};

/// Runs the wizard, modally.
void OpenVideoSetWizard(wxWindow* parent, const UiServices& services, const ScanSetup& setup);

}  // namespace sontaro
