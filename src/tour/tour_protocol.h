// The tour's station in the control protocol.
#pragma once

#include "tour/tour_steps.h"

namespace sontaro {

struct ProtocolEdit;

/// Reads the control protocol of the first player, edits a row of every kind, learns a command,
/// keeps the document in a file, and uploads it without and with a restart.
class TourProtocol : public TourSteps {
   public:
    using TourSteps::TourSteps;

    void Write();

   private:
    void Read();
    void Edit(const ProtocolEdit& edit);
    void Narrow();
    void Learn();
    void KeepInFile();
    void Upload();
    void Restart();

    [[nodiscard]] bool PlayerHolds(const ProtocolEdit& edit);
};

}  // namespace sontaro
