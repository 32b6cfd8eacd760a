// The picture of one video's time: its ports as lanes, its nodes as marks. Without a window.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "timeline/node_groups.h"

namespace sontaro {

/// The part of time that a picture shows. Pixels are counted from its left edge.
struct TimeWindow {
    double begin = 0;     ///< milliseconds at the left edge
    double perPixel = 1;  ///< milliseconds, above 0
    int width = 0;        ///< pixels

    [[nodiscard]] double TimeAt(double x) const { return begin + x * perPixel; }
    [[nodiscard]] double PixelOf(double time) const { return (time - begin) / perPixel; }
};

/// All of the time from 0 to `last`, with some room behind it.
[[nodiscard]] TimeWindow WholeTime(std::int64_t last, int width);
/// `window` with `factor` times as many milliseconds to a pixel, within reason; the moment at pixel
/// `x` stays where it is. Never shows what is before 0.
[[nodiscard]] TimeWindow Zoomed(const TimeWindow& window, double x, double factor,
                                std::int64_t last);
/// `window` after its picture was dragged by so many pixels.
[[nodiscard]] TimeWindow Moved(const TimeWindow& window, double pixels, std::int64_t last);
/// `window`, moved no farther than it takes to show `time`.
[[nodiscard]] TimeWindow Showing(const TimeWindow& window, std::int64_t time, std::int64_t last);

struct AxisTick {
    std::int64_t time = 0;
    double x = 0;
    std::string text = {};  ///< hours, minutes and seconds

    bool operator==(const AxisTick&) const = default;
};

/// Round moments at least `distance` pixels apart.
[[nodiscard]] std::vector<AxisTick> AxisTicks(const TimeWindow& window, double distance);

/// Nodes that stand where one mark is drawn.
struct PictureMark {
    std::size_t lane = 0;
    double x = 0;
    std::size_t first = 0;  ///< in the lane's nodes
    std::size_t count = 1;

    bool operator==(const PictureMark&) const = default;
};

/// The nodes of one video by time, in a lane for each port that is used. What a frame costs depends
/// on what is seen, not on how much there is.
class TimelinePicture {
   public:
    struct Node {
        std::int64_t time = 0;
        NodeId id = 0;
    };
    struct Lane {
        std::int32_t port = 0;
        std::vector<Node> nodes;  ///< in the order of time
    };

    TimelinePicture() = default;
    explicit TimelinePicture(const NodeGroup& group);

    [[nodiscard]] const std::vector<Lane>& Lanes() const { return lanes_; }
    /// The time of the last node; 0 without one.
    [[nodiscard]] std::int64_t LastTime() const;

    /// What is to be drawn, lane by lane from left to right; marks less than `distance` pixels
    /// apart are one. Nodes that are just outside are among them, since their marks have a width.
    [[nodiscard]] std::vector<PictureMark> Marks(const TimeWindow& window, double distance) const;
    /// The nodes of a mark.
    [[nodiscard]] std::span<const Node> NodesOf(const PictureMark& mark) const;
    /// Where a node is; none when it is not in the picture. Looks at every node.
    struct Place {
        std::size_t lane = 0;
        std::size_t node = 0;
    };
    [[nodiscard]] std::optional<Place> Find(NodeId id) const;

   private:
    void AddMarks(std::size_t lane, const TimeWindow& window, double distance,
                  std::vector<PictureMark>& marks) const;

    std::vector<Lane> lanes_;
};

/// The mark of a lane that is nearest to pixel `x`, at most `reach` pixels away; absent when there
/// is none.
[[nodiscard]] const PictureMark* MarkAt(std::span<const PictureMark> marks, std::size_t lane,
                                        double x, double reach);

/// Which of the marks stands for that node; absent when none of them does.
[[nodiscard]] const PictureMark* MarkOf(std::span<const PictureMark> marks,
                                        const TimelinePicture::Place& place);

/// A mark that is dragged by its handle.
class MarkDrag {
   public:
    /// Pressed at pixel `x` on a node of that time. It moves once the pointer has gone `threshold`
    /// pixels.
    MarkDrag(std::int64_t time, double x, double threshold)
        : time_(time), x_(x), threshold_(threshold) {}

    /// The time that the node is dragged to, never before 0; none while the pointer has not gone
    /// far enough.
    [[nodiscard]] std::optional<std::int64_t> MovedTo(double x, const TimeWindow& window);

   private:
    const std::int64_t time_;
    const double x_;
    const double threshold_;
    bool moves_ = false;
};

}  // namespace sontaro
