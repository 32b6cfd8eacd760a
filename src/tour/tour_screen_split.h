// The tour's station in the screen split wizard.
#pragma once

#include "tour/tour_steps.h"

namespace sontaro {

/// Makes a wall of the three screens of the first two players: beside and below each other, with
/// every refusal, and looks at what both players hold when it has been sent.
class TourScreenSplit : public TourSteps {
   public:
    using TourSteps::TourSteps;

    void Write();

   private:
    void ChoosePlayers();
    void Fetch();
    void Arrange();
    void DragInPicture();
    void RefuseOrders();
    void TakeOver();
    void Edit();
    void Send();

    void Dismiss(const std::string& line = "dismissed the message");
    [[nodiscard]] bool BothHold(const std::string& text);
};

}  // namespace sontaro
