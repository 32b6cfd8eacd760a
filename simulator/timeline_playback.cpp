#include "simulator/timeline_playback.h"

#include <algorithm>

#include "simulator/playback.h"
#include "timeline/timeline_edits.h"

namespace sontaro::simulator {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

microseconds MomentOf(const TimeNode& node) {
    constexpr std::int64_t kLatest = std::int64_t{1} << 50;
    return milliseconds(std::clamp<std::int64_t>(node.time, 0, kLatest));
}

}  // namespace

void TimelinePlayback::Advance(PlayerState& state, microseconds elapsed) {
    Follow(state);
    TellDue(state);
    while (state.playing && elapsed.count() > 0) {
        const microseconds step = Step(state, elapsed);
        simulator::Advance(state, step);
        elapsed -= step;
        Follow(state);
        TellDue(state);
    }
}

std::optional<microseconds> TimelinePlayback::UntilNext(const PlayerState& state) {
    Follow(state);
    const microseconds step = Step(state, microseconds::max());
    if (!state.playing || step == microseconds::max()) return std::nullopt;
    return step;
}

/// Up to the next command, or to the end of the video, where another one may begin.
microseconds TimelinePlayback::Step(const PlayerState& state, microseconds most) const {
    constexpr microseconds kLeast{1};
    const Video* video = CurrentVideo(state);
    if (video != nullptr && video->seconds > 0)
        most = std::min<microseconds>(most, std::chrono::seconds(video->seconds) - state.position);
    if (next_ < nodes_.size()) most = std::min(most, MomentOf(nodes_[next_]) - state.position);
    return std::max(most, kLeast);
}

/// Begins anew where the state has jumped to.
void TimelinePlayback::Follow(const PlayerState& state) {
    const VideoFolder* folder = CurrentFolder(state);
    const Video* video = CurrentVideo(state);
    const std::string folderName = folder != nullptr ? folder->name : "";
    const std::string videoName = video != nullptr ? video->name : "";
    const bool isOther = folderName != folder_ || videoName != video_;
    const bool hasJumped = state.position < position_;
    position_ = state.position;
    if (!isOther && !hasJumped && state.timeline == timeline_) return;
    folder_ = folderName;
    video_ = videoName;
    ReadNodes(state);
}

void TimelinePlayback::ReadNodes(const PlayerState& state) {
    nodes_.clear();
    timeline_ = state.timeline;
    TimelineDocument document;
    const Status taken = document.Take(timeline_, TimelineSource::kPlayer);
    const NodeGroup* group =
        taken ? FindGroup(document.Order(), {player_, folder_, video_}) : nullptr;
    if (group != nullptr)
        for (const GroupNode& node : group->nodes) nodes_.push_back(NodeOf(*group, node));
    std::ranges::stable_sort(nodes_, {}, MomentOf);
    const auto next = std::ranges::lower_bound(nodes_, state.position, {}, MomentOf);
    next_ = static_cast<std::size_t>(next - nodes_.begin());
}

void TimelinePlayback::TellDue(const PlayerState& state) {
    if (!state.playing) return;
    for (; next_ < nodes_.size() && MomentOf(nodes_[next_]) <= state.position; ++next_)
        due_(nodes_[next_]);
}

}  // namespace sontaro::simulator
