#include <fmt/core.h>
#include <json/value.h>

#include <algorithm>
#include <stdexcept>

#include "base/json.h"
#include "bench/figures.h"
#include "bench/stopwatch.h"
#include "bench/timeline_samples.h"

namespace sontaro::bench {

namespace {

constexpr int kRepetitions = 15;

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
    const Comparison reading =
        CompareInTurn(kRepetitions, read, [&] { return TimeOf([&] { return ParseJson(text); }); });
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
    return {Ratio("timeline read", 1.5, reading, "jsoncpp"),
            Ratio("timeline write", 1.2, writing, "by hand"),
            Ratio("timeline insert", 0.25, inserting, "sorting"),
            Ratio("timeline undo", 2.0, undoing, "sorting")};
}

}  // namespace sontaro::bench
