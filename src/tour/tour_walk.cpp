#include "tour/tour_walk.h"

#include "tour/tour_prompts.h"
#include "tour/tour_script.h"

namespace sontaro {

namespace {

class TourWalk : public Walk {
   public:
    explicit TourWalk(const std::filesystem::path& folder) : folder_(folder), tour_(folder) {}

    std::unique_ptr<Prompts> MakePrompts() override {
        return std::make_unique<TourPrompts>(folder_);
    }
    void Start(simulator::PlayerGroup& players) override {
        WriteTourScript(tour_, players, TourPrompts::FilmFolder(folder_));
        tour_.Start();
    }
    [[nodiscard]] bool Succeeded() const override { return tour_.Succeeded(); }

   private:
    const std::filesystem::path folder_;
    Tour tour_;
};

}  // namespace

std::unique_ptr<Walk> MakeTourWalk(const std::filesystem::path& folder) {
    return std::make_unique<TourWalk>(folder);
}

}  // namespace sontaro
