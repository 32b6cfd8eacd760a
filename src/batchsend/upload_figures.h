// How far a run is, and how fast.
#pragma once

#include <chrono>
#include <deque>
#include <map>
#include <optional>
#include <span>
#include <string>

#include "batchsend/upload_status.h"

namespace sontaro {

/// Bytes that have been acknowledged, of those that there are.
struct UploadAmount {
    std::uint64_t done = 0, all = 0;

    bool operator==(const UploadAmount&) const = default;
};

/// Follows the events of a run on a clock that only its owner knows.
class UploadFigures {
   public:
    using Time = std::chrono::milliseconds;

    /// What the speed is taken over.
    static constexpr Time kWindow{10'000};

    /// A run begins, maybe with what an earlier one was stopped at.
    void Begin(Time now);
    /// `rows` are those of the run at that moment.
    void Take(const UploadEvent& event, std::span<const UploadRow> rows, Time now);

    [[nodiscard]] const UploadAmount& Video() const { return video_; }
    [[nodiscard]] const UploadAmount& Player() const { return player_; }
    [[nodiscard]] const UploadAmount& Run() const { return run_; }
    /// Bytes a second of late.
    [[nodiscard]] double Speed(Time now) const;
    /// Seconds until the rest of `amount` is done; none while nothing moves.
    [[nodiscard]] std::optional<double> SecondsLeft(const UploadAmount& amount, Time now) const;

   private:
    struct Sample {
        Time time;
        std::uint64_t bytes;
    };

    void CountRun(std::span<const UploadRow> rows);
    void Acknowledge(std::size_t video, std::uint64_t bytes, Time now);
    void TakeBack(std::size_t video);

    UploadAmount video_, player_, run_;
    std::map<std::size_t, std::uint64_t> open_;  // bytes of videos that are not done yet
    std::deque<Sample> samples_;
    Time begun_{0};
};

/// "8.19 MB / 20.00 MB".
[[nodiscard]] std::string AmountText(const UploadAmount& amount);
/// Hours, where there are any, minutes and seconds: "1:02:03", "2:03".
[[nodiscard]] std::string DurationText(double seconds);
/// The speed and the time that is left of the run, in the language of the user. Once a player has
/// said nothing for strangely many seconds, that is told in place of the time. Empty while neither
/// is known.
[[nodiscard]] std::string PaceText(const UploadFigures& figures, int silentSeconds,
                                   UploadFigures::Time now);

}  // namespace sontaro
