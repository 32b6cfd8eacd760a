// The tour's station in the wizard that sends videos.
#pragma once

#include "tour/tour_steps.h"

namespace sontaro {

/// Sends a dozen videos to three players, of which one is too full and one is lost in a video and
/// found again, looks at what has arrived, and sends again what has failed.
class TourVideoSet : public TourSteps {
   public:
    /// `films` is a folder that the tour may fill.
    TourVideoSet(Tour& tour, simulator::PlayerGroup& players, std::filesystem::path films);

    void Write();

   private:
    void ChoosePlayers();
    void ChooseVideos();
    void Plan();
    void Send();
    void SendAgain();

    /// Whether so many of the dozen videos are on a player.
    [[nodiscard]] bool Holds(std::size_t player, std::size_t videos);

    const std::filesystem::path films_;
};

}  // namespace sontaro
