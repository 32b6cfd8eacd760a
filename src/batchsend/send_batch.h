// What has become of each video on its way to each player: the matrix of the last page.
#pragma once

#include <map>

#include "batchsend/batch_plan.h"

namespace sontaro {

/// How far a video has come in the runs of the page.
enum class SendOutcome : std::uint8_t {
    kNone,
    kUnderWay,
    kDone,
    kFailed,
    kLeftOut,  ///< it could not be read at the start
    kNotSent,  ///< the player's turn, or the run, has ended before it
};

struct SendPair {
    PlannedFate fate = PlannedFate::kNotMeant;
    SendOutcome outcome = SendOutcome::kNone;
    std::string note = {};  ///< why it has failed, in the language of the user then
    std::optional<ProofKind> proof = {};

    /// Whether the player should have the video by now.
    [[nodiscard]] bool IsThere() const {
        return outcome == SendOutcome::kDone ||
               (outcome == SendOutcome::kNone && fate == PlannedFate::kSkipped);
    }
    /// Whether something is to be done about it.
    [[nodiscard]] bool IsTrouble() const;
    /// What is known last; empty where nothing is to be told.
    [[nodiscard]] std::string Text() const;

    bool operator==(const SendPair&) const = default;
};

struct BatchVideo {
    UploadVideo video;
    std::uint64_t size = 0;  ///< bytes, as they were planned or announced last
};

/// What a player's list and settings say after a run.
struct PlayerProof {
    std::size_t confirmed = 0;
    std::vector<std::string> odd;  ///< "name: what", of those that are not confirmed
    /// Settings that differ from those before the run, besides the names of categories; none: they
    /// cannot be compared.
    std::optional<std::vector<std::string>> changedSettings;
    bool knowsSettingsBefore = false;  ///< those before the run
    bool isAnswered = false;           ///< otherwise the player has said nothing

    /// For the user, on one line.
    [[nodiscard]] std::string Text() const;
};

/// Players against videos; a video that several get stands there once.
class SendBatch {
   public:
    SendBatch() = default;
    SendBatch(const VideoSet& set, const BatchPlan& plan);
    /// What is sent again of an earlier run.
    explicit SendBatch(const std::vector<UploadPlayer>& players);

    [[nodiscard]] const std::vector<Target>& Players() const { return players_; }
    [[nodiscard]] const std::vector<BatchVideo>& Videos() const { return videos_; }
    [[nodiscard]] const SendPair& PairAt(std::size_t player, std::size_t video) const {
        return pairs_[player][video];
    }
    /// Whether all these videos are meant for these players.
    [[nodiscard]] bool Has(const std::vector<UploadPlayer>& run) const;

    /// A run of these begins, which this batch has; of what it sends, nothing is known any more.
    void Begin(const std::vector<UploadPlayer>& run);
    /// The run goes on after a stop: what these have not got is to come after all.
    void Resume(std::span<const UploadRow> rows);
    /// What has not been planned yet, as its player had not been asked, is as planned by now.
    void Learn(const VideoSet& set, const BatchPlan& plan);
    /// Follows the run. The places of the videos of which something else is to be told now.
    std::vector<std::size_t> Take(const UploadEvent& event);
    /// Compares what a player should have with what it says. `before`: its control protocol before
    /// the run, as far as it was asked.
    [[nodiscard]] PlayerProof Prove(std::size_t player, const PlayerFacts& facts,
                                    const std::optional<std::string>& before);

   private:
    /// A place of the run in this batch.
    struct RunPlayer {
        std::size_t player = 0;
        std::vector<std::size_t> videos;
    };

    [[nodiscard]] std::size_t TakeVideo(const UploadEvent& event);
    std::vector<std::size_t> Turn(std::size_t first, std::size_t end, SendOutcome before,
                                  SendOutcome after);
    [[nodiscard]] std::optional<std::size_t> PlayerOf(const Target& target) const;
    [[nodiscard]] std::optional<std::size_t> PlaceOf(const UploadVideo& video) const;
    std::size_t Add(BatchVideo video);

    std::vector<Target> players_;
    std::vector<BatchVideo> videos_;
    std::map<std::tuple<std::filesystem::path, std::string, std::uint16_t>, std::size_t> places_;
    std::vector<std::vector<SendPair>> pairs_;  // by player and video
    std::vector<RunPlayer> run_;
};

}  // namespace sontaro
