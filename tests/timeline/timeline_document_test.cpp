#include "timeline/timeline_document.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <random>

#include "base/json.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

/// A timeline that is told as "player type video: time time; ...".
struct Timeline : testing::Test {
    void Read(std::string_view json) {
        EXPECT_TRUE(document.Take(json, TimelineSource::kPlayer).ok()) << json;
    }
    static TimeNode Node(std::string type, std::string video = "v", std::int64_t time = 0,
                         std::int64_t player = 0) {
        return {player, std::move(type), std::move(video), time, 0, "", 0, "A501"};
    }
    NodeId Insert(std::string type, std::string video = "v", std::int64_t time = 0,
                  std::int64_t player = 0) {
        return document.Insert(Node(std::move(type), std::move(video), time, player));
    }
    void Replace(NodeId id, const TimeNode& node) { document.Apply({{}, {{id, node}}, {}}); }
    std::string Told() const {
        std::string text;
        for (const SharedGroup& group : document.Order()) {
            text += fmt::format("{} {} {}:", group->player, group->type->text, group->video->text);
            for (const GroupNode& node : group->nodes) text += fmt::format(" {}", node.time);
            text += "; ";
        }
        return text;
    }
    void ExpectExactSize() const { EXPECT_EQ(document.TextBytes(), document.Write().size()); }

    TimelineDocument document;
};

TEST_F(Timeline, IsWrittenAsItWasReadWithAllThatNobodyKnows) {
    const std::string text = WriteJson(*ParseJson(R"({"by":{"x":[1]},"cmdInfos":[
        {"playerID":70000,"typeName":"舞曲\"","videoName":"a\\b","note":"é","cmdList":[
            {"milliseconds":-5,"expendCmdIndex":9,"ip":"1.2","port":70000,"cmd":"5g","z":[]},
            {"milliseconds":9223372036854775808,"expendCmdIndex":7,"ip":"","port":4294967296,
             "cmd":""}]},
        {"playerID":-1,"typeName":"","videoName":"","cmdList":[
            {"milliseconds":1,"expendCmdIndex":0,"ip":"","port":0,"cmd":"A5"}]}]})"));
    Read(text);
    EXPECT_EQ(document.Write(), text);
    EXPECT_EQ(document.NodeAt(0), (TimeNode{70000, "舞曲\"", "a\\b", -5, 9, "1.2", 70000, "5g"}));
    ExpectExactSize();
    TimeNode node = document.NodeAt(1);
    node.time = 3;
    Replace(document.IdAt(1), node);
    const auto written = (*ParseJson(document.Write()))["cmdInfos"][0]["cmdList"][1];
    EXPECT_EQ(written["milliseconds"], 3);
    EXPECT_EQ(written["port"].asUInt64(), 4294967296U);
    ExpectExactSize();
}

TEST_F(Timeline, TakesWhatFitsOfAPartialDocument) {
    Read(R"({"cmdInfos":[7,{"cmdList":[{"cmd":"a5 0b","port":"80"},3,{"milliseconds":1.5}]},
        {"typeName":5,"videoName":"v","playerID":true,"cmdList":{}},
        {"playerID":2.0,"typeName":"t","cmdList":[{"expendCmdIndex":true,"ip":null}]}]})");
    ASSERT_EQ(document.NodeCount(), 3U);
    EXPECT_EQ(document.NodeAt(0), (TimeNode{0, "", "", 0, 0, "", 0, "A50B"}));
    EXPECT_EQ(document.NodeAt(1), TimeNode());
    EXPECT_EQ(document.NodeAt(2), (TimeNode{2, "t", "", 0, 0, "", 0, ""}));
    ExpectExactSize();
}

TEST_F(Timeline, StaysAsItIsWhenADocumentIsOfNoUse) {
    Insert("t");
    for (const char* text : {"", "[]", "{\"cmdInfos\":[", "7"})
        EXPECT_FALSE(document.Take(text, TimelineSource::kPlayer).ok()) << text;
    EXPECT_FALSE(document.Take(R"({"cmdInfos":{}})", TimelineSource::kFile).ok());
    EXPECT_EQ(Told(), "0 t v: 0; ");
    Read("{}");
    EXPECT_EQ(document.NodeCount(), 0U);
    ExpectExactSize();
    EXPECT_TRUE(document.Undo());
    EXPECT_EQ(Told(), "0 t v: 0; ");
}

TEST_F(Timeline, ThatHasBeenReadKeepsItsOrderUntilANodeIsInserted) {
    Read(R"({"cmdInfos":[{"typeName":"ab","videoName":"v","cmdList":[{"milliseconds":1}]},
        {"typeName":"c","videoName":"v","cmdList":[{"milliseconds":2}]},
        {"typeName":"ab","videoName":"v","cmdList":[{"milliseconds":3}]}]})");
    EXPECT_EQ(Told(), "0 ab v: 1 3; 0 c v: 2; ");
    Insert("ab", "v", 0);
    EXPECT_EQ(Told(), "0 c v: 2; 0 ab v: 1 3 0; ");
}

TEST_F(Timeline, SortsByPlayerThenLengthThenLetterOfCategoryAndVideoThenFirstAppearance) {
    for (const char* type : {"ab", "cx", "c", "次", "播", "ca", "鑫", "Z"}) Insert(type);
    for (const char* video : {"bb", "a"}) Insert("播", video, 0, 1);
    for (const char* type : {"ca", "cx"}) Insert(type, "v", 0, 1);
    Insert("次", "次", 0, -1);
    EXPECT_EQ(Told(),
              "-1 次 次: 0; 0 Z v: 0; 0 播 v: 0; 0 c v: 0; 0 次 v: 0; 0 鑫 v: 0; 0 ab v: 0; "
              "0 cx v: 0; 0 ca v: 0; 1 播 a: 0; 1 播 bb: 0; 1 cx v: 0; 1 ca v: 0; ");
}

TEST_F(Timeline, IsEditedAndDeletedInOneGroupAtOnceAndDropsGroupsThatAreLeftEmpty) {
    const NodeId only = Insert("a", "v", 0);
    const NodeId first = Insert("c", "v", 1);
    const NodeId edited = Insert("c", "v", 2);
    const NodeId moved = Insert("c", "v", 3);
    Insert("c", "v", 4);
    document.Apply({{only, first},
                    {{moved, Node("b", "v", 3)}, {edited, Node("c", "v", 9)}},
                    {Node("c", "v", 5)}});
    EXPECT_EQ(Told(), "0 b v: 3; 0 c v: 9 4 5; ");
    EXPECT_FALSE(document.Find(only));
    EXPECT_EQ(document.RowOf(moved), 0U);
    ExpectExactSize();
    document.Undo();
    EXPECT_EQ(Told(), "0 a v: 0; 0 c v: 1 2 3 4; ");
    document.Redo();
    EXPECT_EQ(Told(), "0 b v: 3; 0 c v: 9 4 5; ");
}

TEST_F(Timeline, ASeriesOfNudgesIsOneStep) {
    const NodeId id = Insert("c");
    const auto before = document.CurrentState();
    const auto series = document.NewSeries();
    for (int time : {1, 2, 3}) document.Apply({{}, {{id, Node("c", "v", time)}}, {}}, series);
    document.Apply({{}, {{id, Node("c", "v", 4)}}, {}}, document.NewSeries());
    document.Undo();
    EXPECT_EQ(Told(), "0 c v: 3; ");
    document.Undo();
    EXPECT_EQ(Told(), "0 c v: 0; ");
    EXPECT_EQ(document.CurrentState(), before);
}

/// One change after another of a few nodes of a few videos, some of which undo.
struct RandomWalk : Timeline {
    int Draw(int count) { return std::uniform_int_distribution(0, count - 1)(random); }
    TimeNode AnyNode() {
        constexpr const char* kNames[] = {"a", "bb", "舞", "c", "鑫", ""};
        return Node(kNames[Draw(6)], kNames[Draw(6)], Draw(100), Draw(2));
    }
    NodeId AnyId() {
        return document.IdAt(static_cast<std::size_t>(Draw(int(document.NodeCount()))));
    }
    void Step() {
        if (document.NodeCount() == 0 || Draw(5) == 0) {
            document.Apply({{}, {}, {AnyNode(), AnyNode()}});
            return;
        }
        const NodeId id = AnyId();
        TimeNode later = *document.Find(id);
        ++later.time;
        switch (Draw(4)) {
            case 0: document.Apply({{id}, {}, {}}); break;
            case 1: document.Apply({{}, {{id, AnyNode()}}, {}}); break;
            case 2: document.Apply({{}, {{id, later}}, {}}, 1); break;
            default: {
                const NodeId other = AnyId();
                const NodeIds removed = other == id ? NodeIds() : NodeIds{other};
                document.Apply({removed, {{id, AnyNode()}}, {AnyNode()}});
            }
        }
    }
    std::mt19937 random{7};
};

TEST_F(RandomWalk, IsUndoneToTheStartAndDoneAgainToTheEnd) {
    Read(R"({"cmdInfos":[{"typeName":"c","z":1,"cmdList":[{"milliseconds":1},{"q":2}]}]})");
    const std::string start = document.Write();
    for (int i = 0; i < 1000; ++i) {
        if (Draw(10) == 0)
            document.Undo();
        else
            Step();
        if (i % 50 == 0) ExpectExactSize();
    }
    const std::string end = document.Write();
    while (document.Undo()) {
    }
    EXPECT_EQ(document.Write(), start);
    ExpectExactSize();
    while (document.Redo()) {
    }
    EXPECT_EQ(document.Write(), end);
    ExpectExactSize();
}

TEST(SortLetter, IsTheFirstLetterOfTheReadingInTheFirstLevelAlone) {
    for (const std::string_view letterAndBounds :
         {"a啊澳", "b芭怖", "c擦错", "d搭堕", "e蛾贰", "f发咐", "g噶过", "h哈祸",
          "j击骏", "k喀阔", "l垃络", "m妈穆", "n拿诺", "o哦沤", "p啪瀑", "q期群",
          "r然弱", "s撒所", "t塌唾", "w挖误", "x昔迅", "y压孕", "z匝座"})
        for (const std::size_t bound : {1U, 4U})
            EXPECT_EQ(SortLetter(letterAndBounds.substr(bound, 3)), letterAndBounds[0])
                << letterAndBounds;
    for (const char* none : {"亍", "鑫", "體", "，", "é", "한", "😀"})
        EXPECT_EQ(SortLetter(none), kNoSortLetter) << none;
    EXPECT_EQ(SortLetter(""), 0);
    EXPECT_EQ(SortLetter("Z鑫"), 'Z');
    EXPECT_EQ(Utf16Length("a舞😀"), 4U);
}

}  // namespace
}  // namespace sontaro::test
