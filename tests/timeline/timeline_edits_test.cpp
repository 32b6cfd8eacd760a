#include "timeline/timeline_edits.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace sontaro::test {
namespace {

const VideoKey kShow = {0, "t", "show"};

/// Three nodes of one video at 1, 2 and 3 seconds.
struct ManyNodesAtOnce : testing::Test {
    ManyNodesAtOnce() {
        for (const std::int64_t time : {1000, 2000, 3000})
            ids.push_back(document.Insert({0, "t", "show", time, 0, "", 0, "A5"}));
        before = document.Write();
    }
    std::string Told() const {
        std::string text;
        for (std::size_t row = 0; row < document.NodeCount(); ++row) {
            const TimeNode node = document.NodeAt(row);
            text += fmt::format("{}{}/{}@{} ", node.player, node.typeName, node.videoName,
                                node.time / 1000);
        }
        return text;
    }
    void ExpectOneStep() {
        EXPECT_TRUE(document.Undo());
        EXPECT_EQ(document.Write(), before);
    }
    TimelineDocument document;
    NodeIds ids;
    std::string before;
};

TEST_F(ManyNodesAtOnce, AreDuplicatedAndCopiedFromVideoToVideo) {
    EXPECT_EQ(DuplicateNodes(document, std::array{ids[2], ids[0], NodeId{99}}).size(), 2U);
    EXPECT_EQ(Told(), "0t/show@1 0t/show@2 0t/show@3 0t/show@1 0t/show@3 ");
    ExpectOneStep();
    CopyVideo(document, kShow, {1, "舞", "b"});
    EXPECT_EQ(Told(), "0t/show@1 0t/show@2 0t/show@3 1舞/b@1 1舞/b@2 1舞/b@3 ");
    ExpectOneStep();
}

TEST_F(ManyNodesAtOnce, AreShiftedAllOrNone) {
    for (const std::int64_t tooFar : {std::int64_t{-1001}, INT64_MAX, INT64_MIN})
        EXPECT_FALSE(ShiftNodes(document, ids, tooFar));
    EXPECT_EQ(document.Write(), before);
    EXPECT_TRUE(ShiftNodes(document, ids, -1000));
    EXPECT_EQ(Told(), "0t/show@0 0t/show@1 0t/show@2 ");
    ExpectOneStep();
}

TEST_F(ManyNodesAtOnce, AreGivenCommonValues) {
    const auto isRefused = [&](const CommonValues& values) {
        return RefusalOf(values, document, ids).has_value();
    };
    EXPECT_TRUE(isRefused({.ip = "1.2.3"}) && isRefused({.command = ""}) &&
                isRefused({.command = "5"}) && isRefused({.port = kPortUdp}));
    EXPECT_FALSE(isRefused({.ip = ""}) || isRefused({}) ||
                 isRefused({.port = kPortUdp, .ip = "1.2.3.4"}));
    ChangeNodes(document, ids, {.peerPort = 9});  // serial ports have no peers
    EXPECT_EQ(document.Write(), before);
    ChangeNodes(document, std::array{ids[0], ids[2]},
                {.videoName = "new", .port = kPortTcp, .ip = "10.0.0.9", .command = "5a 0b"});
    EXPECT_EQ(Told(), "0t/new@1 0t/new@3 0t/show@2 ");
    EXPECT_EQ(document.Find(ids[2]),
              (TimeNode{0, "t", "new", 3000, kPortTcp, "10.0.0.9", 0, "5A0B"}));
    ChangeNodes(document, ids, {.port = kPortSerial0});
    EXPECT_TRUE(document.Undo());
    ExpectOneStep();
}

TEST_F(ManyNodesAtOnce, KeepWhatNobodyKnowsInTheirCopies) {
    const std::string text =
        R"({"cmdInfos":[{"typeName":"t","videoName":"show","cmdList":[{"port":5,"zone":7}]}]})";
    TimelineDocument other;
    ASSERT_TRUE(other.Take(text, TimelineSource::kFile).ok());
    const auto zones = [&] { return std::ranges::count(other.Write(), 'z'); };
    DuplicateNodes(other, std::array{other.IdAt(0)});
    CopyVideo(other, kShow, {1, "t", "show"});
    EXPECT_EQ(zones(), 4);
    const auto merged = other.Read(text, TimelineSource::kFile);
    MergeGroups(other, {{merged->order[0], {2, "b", "y"}}});
    EXPECT_EQ(zones(), 5);
    EXPECT_EQ(other.TextBytes(), other.Write().size());
}

TEST_F(ManyNodesAtOnce, AreMergedFromChosenGroupsOfAnotherTimeline) {
    NameTable names;
    const auto other = ReadTimeline(
        R"({"cmdInfos":[{"typeName":"a","videoName":"x","cmdList":[{"milliseconds":7000}]},
            {"typeName":"b","videoName":"y","cmdList":[{"milliseconds":8000},{}]}]})",
        TimelineSource::kFile, names);
    MergeGroups(document, {{other->order[1], kShow}, {other->order[0], {3, "a", "x"}}});
    EXPECT_EQ(Told(), "0t/show@1 0t/show@2 0t/show@3 0t/show@8 0t/show@0 3a/x@7 ");
    ExpectOneStep();
}

}  // namespace
}  // namespace sontaro::test
