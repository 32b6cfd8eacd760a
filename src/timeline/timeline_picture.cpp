#include "timeline/timeline_picture.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "timeline/time_text.h"

namespace sontaro {

namespace {

using Node = TimelinePicture::Node;

constexpr double kRoomBehind = 1.05;
constexpr double kShortestTime = 1000;     // that a picture shows at most zoom
constexpr double kShortestWhole = 10'000;  // that is shown of a video without nodes
constexpr double kBlock = 64;              // pieces of time that marks are joined in
constexpr double kLongestTime = 9.2e18;    // there are no later milliseconds

/// Milliseconds between two ticks that people count in.
constexpr std::array<std::int64_t, 26> kSteps = {
    1,       2,       5,         10,        20,        50,         100,        200,       500,
    1'000,   2'000,   5'000,     10'000,    15'000,    30'000,     60'000,     120'000,   300'000,
    600'000, 900'000, 1'800'000, 3'600'000, 7'200'000, 10'800'000, 21'600'000, 43'200'000};

double LongestShown(std::int64_t last) {
    return std::max(static_cast<double>(last) * kRoomBehind, kShortestWhole);
}

/// `window` within the time that there is.
TimeWindow Within(TimeWindow window, std::int64_t last) {
    const double latest = std::max(0.0, LongestShown(last) - window.perPixel * window.width);
    window.begin = std::clamp(window.begin, 0.0, latest);
    return window;
}

std::int64_t StepOfAtLeast(double milliseconds) {
    const auto* step = std::ranges::lower_bound(kSteps, milliseconds);
    if (step != kSteps.end()) return *step;
    std::int64_t doubled = kSteps.back();
    while (static_cast<double>(doubled) < milliseconds && doubled < INT64_MAX / 4) doubled *= 2;
    return doubled;
}

std::int64_t WholeMilliseconds(double time) {
    return static_cast<std::int64_t>(std::llround(std::clamp(time, 0.0, kLongestTime)));
}

/// The first node from `from` on that is not before a moment: in strides that double, since it is
/// mostly near.
std::size_t FirstFrom(const std::vector<Node>& nodes, double moment, std::size_t from = 0) {
    const auto time = static_cast<std::int64_t>(std::ceil(std::min(moment, kLongestTime)));
    std::size_t stride = 1;
    while (from + stride < nodes.size() && nodes[from + stride].time < time) stride *= 2;
    const auto begin = nodes.begin() + static_cast<std::ptrdiff_t>(from + stride / 2);
    const auto end =
        nodes.begin() + static_cast<std::ptrdiff_t>(std::min(from + stride, nodes.size()));
    const auto isBefore = [time](const Node& node) { return node.time < time; };
    return static_cast<std::size_t>(std::partition_point(begin, end, isBefore) - nodes.begin());
}

}  // namespace

TimeWindow WholeTime(std::int64_t last, int width) {
    return {0, LongestShown(last) / std::max(width, 1), width};
}

TimeWindow Zoomed(const TimeWindow& window, double x, double factor, std::int64_t last) {
    const int width = std::max(window.width, 1);
    TimeWindow zoomed = window;
    zoomed.perPixel =
        std::clamp(window.perPixel * factor, kShortestTime / width, LongestShown(last) / width);
    zoomed.begin = window.TimeAt(x) - x * zoomed.perPixel;
    return Within(zoomed, last);
}

TimeWindow Moved(const TimeWindow& window, double pixels, std::int64_t last) {
    TimeWindow moved = window;
    moved.begin -= pixels * window.perPixel;
    return Within(moved, last);
}

TimeWindow Showing(const TimeWindow& window, std::int64_t time, std::int64_t last) {
    constexpr double kMargin = 0.1;
    const double x = window.PixelOf(static_cast<double>(time));
    const double left = window.width * kMargin;
    const double right = window.width - left;
    if (x < left) return Moved(window, left - x, last);
    return x > right ? Moved(window, right - x, last) : Within(window, last);
}

std::vector<AxisTick> AxisTicks(const TimeWindow& window, double distance) {
    const std::int64_t step = StepOfAtLeast(distance * window.perPixel);
    const double end = std::min(window.TimeAt(window.width), kLongestTime);
    std::vector<AxisTick> ticks;
    const auto wide = static_cast<double>(step);
    const double begin = std::ceil(std::max(window.begin, 0.0) / wide) * wide;
    if (begin > end) return ticks;  // behind the last millisecond
    for (auto time = static_cast<std::int64_t>(begin); static_cast<double>(time) <= end;
         time += step) {
        ticks.push_back({time, window.PixelOf(static_cast<double>(time)), AxisText(time)});
        if (time > INT64_MAX - step) break;
    }
    return ticks;
}

TimelinePicture::TimelinePicture(const NodeGroup& group) {
    std::array<std::vector<Node>, kTimelinePorts> ports;
    for (const GroupNode& node : group.nodes) {
        const std::int32_t port = IsTimelinePort(node.port) ? node.port : kPortSerial0;
        ports[static_cast<std::size_t>(port)].push_back({node.time, node.id});
    }
    for (std::int32_t port = 0; std::vector<Node> & nodes : ports) {
        std::ranges::stable_sort(nodes, {}, &Node::time);
        if (!nodes.empty()) lanes_.push_back({port, std::move(nodes)});
        ++port;
    }
}

std::int64_t TimelinePicture::LastTime() const {
    std::int64_t last = 0;
    for (const Lane& lane : lanes_) last = std::max(last, lane.nodes.back().time);
    return last;
}

std::vector<PictureMark> TimelinePicture::Marks(const TimeWindow& window, double distance) const {
    std::vector<PictureMark> marks;
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane)
        AddMarks(lane, window, distance, marks);
    return marks;
}

/// Time is cut into pieces of `distance` pixels that stay where they are when the window moves, and
/// joined from the beginning of a block of them on, so that marks hardly regroup then. From piece
/// to piece by binary search.
void TimelinePicture::AddMarks(std::size_t lane, const TimeWindow& window, double distance,
                               std::vector<PictureMark>& marks) const {
    const std::vector<Node>& nodes = lanes_[lane].nodes;
    const double piece = distance * window.perPixel;
    const double end = window.TimeAt(window.width + distance);
    const double begin = (std::floor(window.begin / piece / kBlock) * kBlock - 1) * piece;
    const std::size_t firstMark = marks.size();
    std::size_t hidden = 0;  // up to there, left of the window
    for (std::size_t at = FirstFrom(nodes, begin); at < nodes.size();) {
        const auto time = static_cast<double>(nodes[at].time);
        if (time > end) break;
        const std::size_t next = FirstFrom(nodes, (std::floor(time / piece) + 1) * piece, at);
        const std::size_t count = std::max(next, at + 1) - at;
        const double x = window.PixelOf(time);
        if (marks.size() > firstMark && x - marks.back().x < distance)
            marks.back().count += count;
        else
            marks.push_back({lane, x, at, count});
        at += count;
        if (marks.back().x < -distance) hidden = marks.size();
    }
    marks.erase(marks.begin() + static_cast<std::ptrdiff_t>(firstMark),
                marks.begin() + static_cast<std::ptrdiff_t>(std::max(firstMark, hidden)));
}

std::span<const Node> TimelinePicture::NodesOf(const PictureMark& mark) const {
    return std::span(lanes_[mark.lane].nodes).subspan(mark.first, mark.count);
}

std::optional<TimelinePicture::Place> TimelinePicture::Find(NodeId id) const {
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        const std::vector<Node>& nodes = lanes_[lane].nodes;
        const auto found = std::ranges::find(nodes, id, &Node::id);
        if (found != nodes.end())
            return Place{lane, static_cast<std::size_t>(found - nodes.begin())};
    }
    return std::nullopt;
}

const PictureMark* MarkAt(std::span<const PictureMark> marks, std::size_t lane, double x,
                          double reach) {
    const PictureMark* nearest = nullptr;
    for (const PictureMark& mark : marks) {
        const double distance = std::abs(mark.x - x);
        if (mark.lane != lane || distance > reach) continue;
        if (nearest == nullptr || distance < std::abs(nearest->x - x)) nearest = &mark;
    }
    return nearest;
}

const PictureMark* MarkOf(std::span<const PictureMark> marks, const TimelinePicture::Place& place) {
    const auto found = std::ranges::find_if(marks, [&](const PictureMark& mark) {
        return mark.lane == place.lane && place.node >= mark.first &&
               place.node < mark.first + mark.count;
    });
    return found == marks.end() ? nullptr : &*found;
}

std::optional<std::int64_t> MarkDrag::MovedTo(double x, const TimeWindow& window) {
    moves_ = moves_ || std::abs(x - x_) >= threshold_;
    if (!moves_) return std::nullopt;
    return WholeMilliseconds(static_cast<double>(time_) + (x - x_) * window.perPixel);
}

}  // namespace sontaro
