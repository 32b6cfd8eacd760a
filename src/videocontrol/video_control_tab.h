// The remote control of one player.
#pragma once

#include <optional>

#include "videocontrol/video_control_dialog.h"
#include "widgets/feature_dialog.h"
#include "widgets/fitted_size.h"

namespace sontaro {

/// The dialog that hosts the remote control on a tab.
class CVideoControlTab : public FeatureDialog {
   public:
    CVideoControlTab(wxWindow* parent, const UiServices& services, const DeviceRecord& player);
    ~CVideoControlTab() override;

   private:
    void HandleMessage(WindowMessage& message) override { control_->HandleMessage(message); }
    void ReadAgain() override { control_->ReadAgain(); }

    CVideoControl* control_ = nullptr;
    std::optional<FittedSize> size_;
};

}  // namespace sontaro
