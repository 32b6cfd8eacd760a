// The page on which the videos of many players are chosen.
#pragma once

#include "batchsend/video_set_wizard.h"

namespace sontaro {

class CVideoSetParam : public WizardPage {
   public:
    explicit CVideoSetParam(CVideoSetWizard& wizard) : WizardPage(wizard, Window::kSetParam) {}
};

}  // namespace sontaro
