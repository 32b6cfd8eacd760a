// What a run would do, and whether it has done it: players against videos.
#pragma once

#include <optional>
#include <span>

#include "batchsend/player_facts.h"
#include "batchsend/upload_status.h"
#include "batchsend/video_set.h"

namespace sontaro {

/// What is to happen to a video that is meant for a player.
enum class PlannedFate : std::uint8_t {
    kNotMeant,  ///< it does not go to this player
    kToSend,
    kSendAnyway,   ///< the player has it, but what is there is not skipped
    kNotAsked,     ///< it is sent, but the player has not been asked yet what it has
    kSkipped,      ///< the player has it
    kDoesNotFit,   ///< the player's disk is too small for what it is to get, so it gets nothing
    kUnreachable,  ///< the player does not answer
    kUnreadable,   ///< the file cannot be sent
};

struct PlanTotals {
    std::size_t videos = 0, players = 0;  ///< that are sent, and that get some
    std::uint64_t bytes = 0;
};

/// A video of the page as a run sends it.
[[nodiscard]] UploadVideo AsSent(const SetVideo& video);

/// The plan of a run. A video that a player has already has the name and size of one in its list,
/// in whatever category.
class BatchPlan {
   public:
    /// `facts` has an element for each player. What players have is skipped as `set` says.
    BatchPlan(const VideoSet& set, std::span<const PlayerFacts> facts);

    /// A row for each player; its columns are the videos that it gets, in their order.
    [[nodiscard]] const std::vector<std::vector<PlannedFate>>& Fates() const { return fates_; }
    [[nodiscard]] const PlanTotals& Totals() const { return totals_; }
    /// Seconds at so many bytes a second; none where the speed is not known.
    [[nodiscard]] std::optional<double> Estimate(double speed) const;
    /// What the run is to send: players that get nothing but the categories are among them, those
    /// that cannot be reached and files that cannot be read as well. The run tells what fails.
    [[nodiscard]] const std::vector<UploadPlayer>& Players() const { return players_; }

   private:
    std::vector<std::vector<PlannedFate>> fates_;
    std::vector<UploadPlayer> players_;
    PlanTotals totals_;
};

/// What a player's list says of a video that has been sent.
enum class ProofKind : std::uint8_t {
    kConfirmed,
    kMissing,        ///< there is no video of that name
    kOtherSize,      ///< there is, but it has another size
    kOtherCategory,  ///< it is in another category
    kCannotTell,     ///< the player has sent no list, or the category has no name that is known
};

/// Looks a video up in a player's list. `category` is the name of its slot; empty: not known.
[[nodiscard]] ProofKind ProofOf(const std::optional<VideoList>& list, const std::string& name,
                                std::uint64_t size, const std::string& category);

/// For the user.
[[nodiscard]] std::string TextOf(PlannedFate fate);
[[nodiscard]] std::string TextOf(ProofKind proof);

}  // namespace sontaro
