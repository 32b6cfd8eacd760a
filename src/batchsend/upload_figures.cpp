#include "batchsend/upload_figures.h"

#include <fmt/printf.h>

#include <algorithm>
#include <cmath>

#include "base/local_text.h"
#include "batchsend/set_problems.h"

namespace sontaro {

namespace {

using Kind = UploadEvent::Kind;

constexpr LocalText kLeft = {"%s/秒，剩余 %s", "%s/s, %s left"};
constexpr LocalText kSilence = {"播放器已有 %d 秒没有应答", "No acknowledgement for %d s"};
constexpr LocalText kSpeedAndSilence = {"%s/秒，播放器已有 %d 秒没有应答",
                                        "%s/s, no acknowledgement for %d s"};
constexpr int kLongSilence = 3;  // seconds

}  // namespace

void UploadFigures::Begin(Time now) {
    *this = {};
    begun_ = now;
}

void UploadFigures::Take(const UploadEvent& event, std::span<const UploadRow> rows, Time now) {
    switch (event.kind) {
        case Kind::kPlayerBegun:
            player_ = {0, event.bytes};
            video_ = {};
            open_.clear();
            return CountRun(rows);
        case Kind::kVideoBegun:
            TakeBack(event.video);
            video_ = {0, event.bytes};
            return;
        case Kind::kAcknowledged: return Acknowledge(event.video, event.bytes, now);
        case Kind::kVideoDone: open_.erase(event.video); return;
        case Kind::kVideoFailed: return TakeBack(event.video);
        case Kind::kPlayerEnded: return CountRun(rows);
        case Kind::kLeftOut:
        case Kind::kRunEnded: return;
    }
}

/// What a player that has failed does not get any more is not to be done.
void UploadFigures::CountRun(std::span<const UploadRow> rows) {
    run_.all = run_.done;
    for (const UploadRow& row : rows)
        if (!IsFinal(row.status)) run_.all += row.BytesLeft();
}

/// More than was planned, where a file has grown since.
void UploadFigures::Acknowledge(std::size_t video, std::uint64_t bytes, Time now) {
    if (bytes <= video_.done) return;
    const std::uint64_t more = bytes - video_.done;
    video_.done = open_[video] = bytes;
    for (UploadAmount* amount : {&player_, &run_}) {
        amount->done += more;
        amount->all = std::max(amount->all, amount->done);
    }
    samples_.push_back({now, more});
    while (samples_.front().time <= now - kWindow) samples_.pop_front();
}

/// A video that is sent once more, or not to its end, has not been sent.
void UploadFigures::TakeBack(std::size_t video) {
    const auto open = open_.find(video);
    if (open == open_.end()) return;
    player_.done -= open->second;
    run_.done -= open->second;
    open_.erase(open);
}

double UploadFigures::Speed(Time now) const {
    std::uint64_t bytes = 0;
    for (const Sample& sample : samples_)
        if (sample.time > now - kWindow) bytes += sample.bytes;
    const Time window = std::clamp(now - begun_, Time{1}, kWindow);
    return 1000 * static_cast<double>(bytes) / static_cast<double>(window.count());
}

std::optional<double> UploadFigures::SecondsLeft(const UploadAmount& amount, Time now) const {
    const double speed = Speed(now);
    if (speed <= 0) return std::nullopt;
    return static_cast<double>(amount.all - amount.done) / speed;
}

std::string AmountText(const UploadAmount& amount) {
    return BytesText(amount.done) + " / " + BytesText(amount.all);
}

std::string DurationText(double seconds) {
    constexpr double kLongest = 359'999;  // what three figures of hours can tell is no estimate
    const auto whole = static_cast<int>(std::ceil(std::clamp(seconds, 0.0, kLongest)));
    const int minutes = whole / 60 % 60;
    if (whole < 3600) return fmt::sprintf("%d:%02d", minutes, whole % 60);
    return fmt::sprintf("%d:%02d:%02d", whole / 3600, minutes, whole % 60);
}

std::string PaceText(const UploadFigures& figures, int silentSeconds, UploadFigures::Time now) {
    const bool isSilent = silentSeconds >= kLongSilence;
    const auto left = figures.SecondsLeft(figures.Run(), now);
    if (!left) return isSilent ? fmt::sprintf(Localized(kSilence), silentSeconds) : "";
    const std::string speed = BytesText(static_cast<std::uint64_t>(figures.Speed(now)));
    return isSilent ? fmt::sprintf(Localized(kSpeedAndSilence), speed, silentSeconds)
                    : fmt::sprintf(Localized(kLeft), speed, DurationText(*left));
}

}  // namespace sontaro
