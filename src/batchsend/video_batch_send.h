// The page that sends videos to many players.
#pragma once

#include "batchsend/video_set_wizard.h"

namespace sontaro {

class CVideoBatchSend : public WizardPage {
   public:
    explicit CVideoBatchSend(CVideoSetWizard& wizard) : WizardPage(wizard, Window::kBatchSend) {}
};

}  // namespace sontaro
