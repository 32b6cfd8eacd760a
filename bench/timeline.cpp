#include <fmt/core.h>
#include <json/value.h>

#include <algorithm>
#include <stdexcept>

#include "base/json.h"
#include "bench/figures.h"
#include "bench/stopwatch.h"
#include "bench/timeline_samples.h"
#include "timeline/timeline_picture.h"

namespace sontaro::bench {

namespace {

constexpr int kRepetitions = 15;
constexpr std::size_t kFewNodes = 700;

template <class Action>
double TimeOf(Action action) {
    const Stopwatch stopwatch;
    [[maybe_unused]] const auto result = action();
    return stopwatch.Seconds();
}

Figure Ratio(const char* name, double goal, const Comparison& time, const char* baseline) {
    return {name, time.ratio, Goal::kAtMost, goal,
            fmt::format("ours {:.3f} ms, {} {:.2f} ms", time.ours * 1e3, baseline,
                        time.baseline * 1e3)};
}

/// The tree of the document, as one who knows jsoncpp puts it together.
std::string BuiltByHand(const std::vector<TimeNode>& nodes) {
    Json::Value root;
    Json::Value& groups = root["cmdInfos"];
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const TimeNode& node = nodes[i];
        if (i % kNodesPerVideo == 0) {
            Json::Value group;
            group["playerID"] = node.player;
            group["typeName"] = node.typeName;
            group["videoName"] = node.videoName;
            groups.append(std::move(group));
        }
        Json::Value json;
        json["milliseconds"] = node.time;
        json["expendCmdIndex"] = node.port;
        json["ip"] = node.ip;
        json["port"] = node.peerPort;
        json["cmd"] = node.command;
        groups[groups.size() - 1]["cmdList"].append(std::move(json));
    }
    return WriteJson(root);
}

Comparison AgainstSorting(const std::function<double()>& ours) {
    return CompareInTurn(kRepetitions, ours, [] {
        std::vector<TimeNode> nodes = ShuffledNodes();
        const Stopwatch stopwatch;
        std::ranges::stable_sort(nodes, {}, &TimeNode::time);
        return stopwatch.Seconds();
    });
}

/// A picture of so many nodes in four lanes over half an hour.
TimelinePicture PictureOf(std::size_t nodes) {
    constexpr std::int64_t kTime = 1'800'000;
    NodeGroup group;
    for (std::size_t i = 0; i < nodes; ++i) {
        GroupNode& node = group.nodes.emplace_back();
        node.port = static_cast<std::int32_t>(i % 4);
        node.time = static_cast<std::int64_t>(i) * kTime / static_cast<std::int64_t>(nodes);
    }
    return TimelinePicture(group);
}

/// Many frames of all of the time.
double TimeOfFrames(const TimelinePicture& picture) {
    constexpr int kFrames = 200;
    constexpr int kWidth = 1200;
    constexpr double kMarkDistance = 12;
    constexpr double kTickDistance = 80;
    const std::int64_t last = picture.LastTime();
    std::size_t seen = 0;
    const Stopwatch stopwatch;
    for (int i = 0; i < kFrames; ++i) {
        const TimeWindow window = WholeTime(last, kWidth + i);
        seen += picture.Marks(window, kMarkDistance).size();
        seen += AxisTicks(window, kTickDistance).size();
    }
    const double time = stopwatch.Seconds();
    if (seen == 0) throw std::runtime_error("the picture is empty");
    return time;
}

}  // namespace

std::vector<Figure> Timelines() {
    const std::vector<TimeNode> nodes = ManyNodes();
    TimelineDocument document;
    document.Apply({{}, {}, nodes});
    const std::string text = document.Write();
    if (text != BuiltByHand(nodes) || document.IsTooLong())
        throw std::runtime_error("the timeline is not whole");
    const auto read = [&] {
        TimelineDocument another;
        return TimeOf([&] { return another.Take(text, TimelineSource::kPlayer); });
    };
    // Both let go of jsoncpp's tree, which takes a fifth of its parsing.
    const Comparison reading = CompareInTurn(
        kRepetitions, read, [&] { return TimeOf([&] { return ParseJson(text).ok(); }); });
    const Comparison writing = CompareInTurn(
        kRepetitions, [&] { return TimeOf([&] { return document.Write(); }); },
        [&] { return TimeOf([&] { return BuiltByHand(nodes); }); });
    const Comparison inserting =
        AgainstSorting([&] { return TimeOf([&] { return document.Insert(nodes[1]); }); });
    const NodeIds half = EverySecond(document);
    const Comparison undoing = AgainstSorting([&] {
        document.Apply({half, {}, {}});
        return TimeOf([&] { return document.Undo(); });
    });
    const TimelinePicture full = PictureOf(kManyNodes);
    const TimelinePicture sparse = PictureOf(kFewNodes);
    const Comparison drawing = CompareInTurn(
        kRepetitions, [&] { return TimeOfFrames(full); }, [&] { return TimeOfFrames(sparse); });
    return {Ratio("timeline read", 1.5, reading, "jsoncpp"),
            Ratio("timeline write", 1.2, writing, "by hand"),
            Ratio("timeline insert", 0.25, inserting, "sorting"),
            Ratio("timeline undo", 2.0, undoing, "sorting"),
            Ratio("timeline picture", 3.0, drawing, "700 nodes")};
}

}  // namespace sontaro::bench
