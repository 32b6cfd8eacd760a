// The tour's stations in the settings dialogs.
#pragma once

#include "tour/tour_steps.h"

namespace sontaro {

struct SettingsStation;

/// Opens each settings dialog for the first player, changes a value, sends it, and looks at what
/// the player holds then. In the first one it opens what the player has held before.
class TourSettings : public TourSteps {
   public:
    using TourSteps::TourSteps;

    void Write();

   private:
    void Read(const SettingsStation& station);
    void Undo(const SettingsStation& station);
    void Change(const SettingsStation& station);
    void LookBack(const SettingsStation& station);
};

}  // namespace sontaro
