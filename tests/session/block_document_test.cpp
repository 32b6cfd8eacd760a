#include "session/block_document.h"

#include <gmock/gmock.h>

#include "base/json.h"
#include "simulator/player_state.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

BlockDocument Of(const char* kind, std::string text) {
    return {*FindSettingsBlock(kind), std::move(text), BlockDocument::Source::kPlayer};
}

std::string ValueAt(const BlockDocument& document, const std::string& path) {
    const auto rows = document.RowsByPath();
    const auto row = rows.find(path);
    return row == rows.end() ? "no such row" : row->second.row.value;
}

/// Why a value is not taken; "=" and what the row shows where it is.
std::string Set(BlockDocument& document, const std::string& path, const std::string& value) {
    const Status set = document.SetValue(path, value);
    return set ? "=" + ValueAt(document, path) : set.reason();
}

TEST(BlockDocument, KeepsTheTextOfThePlayerUntilAValueIsAnotherOne) {
    const std::string text = R"({ "data":[{"osdEnable":true, "texts":["a"]}] })";
    BlockDocument osd = Of("osd", text);
    EXPECT_EQ(Set(osd, "data/0/osdEnable", "1"), "=1");
    EXPECT_EQ(osd.Text(), text);
    EXPECT_EQ(Set(osd, "data/0/osdEnable", "0"), "=0");
    EXPECT_EQ((*ParseJson(osd.Text()))["data"][0]["texts"][0], "a");
}

TEST(BlockDocument, ObeysTheRulesOfItsRows) {
    BlockDocument osd = Of("osd", simulator::FactoryState().osd);
    const std::string text = osd.Text();
    EXPECT_EQ(Set(osd, "data/0/transparent", "101"), "Transparent input error!");
    EXPECT_EQ(Set(osd, "data/0/colour", "1"), "There is no such setting.");
    BlockDocument wall = Of("screen-split", simulator::FactoryState().wall);
    EXPECT_EQ(Set(wall, "VScreenSize/1/width", "1"), "This cannot be changed.");
    EXPECT_EQ(Set(wall, "varParam/refreshRate", "61"), "Input out of range");
    EXPECT_EQ(Set(wall, "varParam/refreshRate", "50"), "=50");
    BlockDocument cave = Of("cave", simulator::FactoryState().cave);
    EXPECT_THAT(Set(cave, "screenGroup/screenCount", "3"), HasSubstr("one of: 1, 2, 4"));
    BlockDocument timeline = Of("timeline", simulator::FactoryState().timeline);
    EXPECT_EQ(Set(timeline, "0/舞曲/霓虹之夜.mp4/2500 232:0", "A5 0"), "Cmd input error!");
    EXPECT_EQ(osd.Text(), text);
    EXPECT_FALSE(Of("osd", "[").SetValue("data/0/osdEnable", "0"));
}

TEST(BlockDocument, ACommandOfATimelineIsKnownByItsVideoItsTimeAndItsPort) {
    const std::string text = simulator::FactoryState().timeline;
    BlockDocument timeline = Of("timeline", text);
    const std::string path = "1/Ambient/雨后花园.mp4/1000 232:3";
    EXPECT_EQ(Set(timeline, path, "a5 03"), "=A503");
    const auto differences = DifferencesBetween(Of("timeline", text), timeline);
    ASSERT_EQ(differences.size(), 1U);
    EXPECT_EQ(
        differences[0],
        (RowDifference{path, "Player2 / Ambient / 雨后花园.mp4 / 0:00:01 232:3", "A502", "A503"}));
    EXPECT_THAT(Of("timeline", "").PathRows(), IsEmpty());
    EXPECT_EQ(DifferencesBetween(Of("timeline", ""), timeline).size(), 12U);
}

/// The path of the last row with that key behind its group's.
std::string PathOf(const BlockDocument& document, const std::string& key) {
    std::string path;
    for (const PathRow& row : document.PathRows())
        if (row.row.key.ends_with('/' + key)) path = row.row.key;
    return path;
}

constexpr const char* kOwn = R"({"Version":"1","CustomSettings":[
  [{"keyVal":"g","inputType":"GroupName","select":"Mine"},
   {"keyVal":"level","inputType":"IntRange","valueRange":[9,0],"select":5,"odd":true},
   {"keyVal":"name","inputType":"String","valueRange":["x"],"select":"old"},
   {"keyVal":"turn","inputType":"Angle","valueRange":[0,90],"select":0},
   {"keyVal":"alone","inputType":"Int","valueRange":[],"select":1}],
  [{"keyVal":"below","inputType":"IntRange","valueRange":[-9,9],"select":1},
   {"keyVal":"level","inputType":"IntRange","valueRange":[0,9],"select":6}]]})";

TEST(BlockDocument, TakesNothingThatAGridWouldTakeAndWarnOf) {
    BlockDocument players = Of("player-control", simulator::FactoryState().playerControl);
    const std::string text = players.Text();
    EXPECT_THAT(Set(players, "Players/0/AspectRatio", "99"), HasSubstr("one of: UnLock, Lock"));
    BlockDocument protocol = Of("control-protocol", simulator::FactoryState().controlProtocol);
    EXPECT_THAT(Set(protocol, "Serial/BaudRate", "99"), HasSubstr("one of: "));
    BlockDocument own = Of("touch", kOwn);
    EXPECT_EQ(Set(own, PathOf(own, "level"), "10"), "The value is outside the range 0 to 9.");
    EXPECT_EQ(Set(own, PathOf(own, "alone"), "9999999999"), "This value does not fit.");
    EXPECT_EQ(Set(own, PathOf(own, "alone"), "007"), "=7");
    EXPECT_EQ(players.Text(), text);
    EXPECT_EQ(ValueAt(players, "Players/0/AspectRatio"), "UnLock");
}

TEST(BlockDocument, IsNotSentWithAnotherChoiceThanThePlayerHolds) {
    Json::Value held = *ParseJson(simulator::FactoryState().controlProtocol);
    held["Serial"]["PlayMode"] = 9;
    BlockDocument protocol = Of("control-protocol", WriteJson(held));
    EXPECT_EQ(ValueAt(protocol, "Serial/PlayMode"), "Single Play");  // the last one
    EXPECT_EQ(protocol.RefusalToSend(), std::nullopt);
    EXPECT_EQ(Set(protocol, "Serial/Play", "A5"), "=A5");
    EXPECT_THAT(protocol.RefusalToSend().value_or(""),
                HasSubstr("Serial/PlayMode: This value does not fit. It is one of: "));
    EXPECT_EQ(Set(protocol, "Serial/PlayMode", "Single Play"), "=Single Play");
    EXPECT_EQ(protocol.RefusalToSend(), std::nullopt);
    EXPECT_EQ((*ParseJson(protocol.Text()))["Serial"]["PlayMode"], 4);
}

TEST(BlockDocument, OfSettingsThatDescribeThemselvesOnlyTheValuesAreTaken) {
    BlockDocument own = Of("touch", kOwn);
    const TakenValues taken = own.TakeValues(Of("touch", R"({"Version":"2","CustomSettings":[
      [{"keyVal":"g","inputType":"GroupName","select":"Another"},
       {"keyVal":"below","inputType":"IntRange","valueRange":[-3,3],"select":-2},
       {"keyVal":"level","inputType":"IntRange","valueRange":[0,100],"select":80},
       {"keyVal":"level","inputType":"IntRange","valueRange":[0,100],"select":7},
       {"keyVal":"name","inputType":"String","valueRange":["y"],"select":"new"},
       {"keyVal":"turn","inputType":"Angle","select":90},
       {"keyVal":"more","inputType":"Int","select":1}]]})"));
    EXPECT_THAT(taken.changed, ElementsAre("name", "below", "level"));
    EXPECT_THAT(taken.missing, ElementsAre("alone"));
    EXPECT_THAT(taken.unknown, ElementsAre("more"));
    const std::string why = "The player's setting does not allow this value.";
    EXPECT_THAT(taken.refused, ElementsAre(Pair("level", why), Pair("turn", why)));
    Json::Value expected = *ParseJson(kOwn);
    expected["CustomSettings"][0][2]["select"] = "new";
    expected["CustomSettings"][1][0]["select"] = -2;
    expected["CustomSettings"][1][1]["select"] = 7;
    EXPECT_EQ(*ParseJson(own.Text()), expected);
    EXPECT_EQ(ValueAt(own, PathOf(own, "below")), "-2");
}

TEST(BlockDocument, ASingleValueOfThemChangesNothingElse) {
    BlockDocument own = Of("touch", kOwn);
    EXPECT_EQ(Set(own, PathOf(own, "level"), "8"), "=8");
    Json::Value expected = *ParseJson(kOwn);
    expected["CustomSettings"][1][1]["select"] = 8;
    EXPECT_EQ(*ParseJson(own.Text()), expected);
}

TEST(BlockDocument, TakesWhatIsOtherInAnotherDocumentOfItsBlock) {
    const std::string text = simulator::FactoryState().osd;
    BlockDocument first = Of("osd", text);
    BlockDocument second = Of("osd", text);
    Set(second, "data/0/showTime", "77");
    EXPECT_THAT(first.TakeValues(second).changed, ElementsAre("data/0/showTime"));
    EXPECT_EQ(first.Text(), second.Text());
    EXPECT_TRUE(first.TakeValues(second).changed.empty());
    EXPECT_FALSE(first.TakeValues(Of("osd", "{")).IsWhole());
}

}  // namespace
}  // namespace sontaro::test
