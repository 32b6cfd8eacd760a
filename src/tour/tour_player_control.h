// The tour's station in the player control protocol.
#pragma once

#include "tour/tour_steps.h"

namespace sontaro {

/// Reads the player control protocol of the first player, makes a type of one of its categories,
/// adds and deletes a player, keeps the document in a file, and uploads it.
class TourPlayerControl : public TourSteps {
   public:
    using TourSteps::TourSteps;

    void Write();

   private:
    void Read();
    void AddType();
    void AddAndDeletePlayer();
    void KeepInFile();
    void Upload();
};

}  // namespace sontaro
