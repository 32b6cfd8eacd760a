#include "venue/restore_plan.h"

#include <gmock/gmock.h>

#include "venue/compare.h"
#include "venue/venue_samples.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

BlockPlan Plan(const char* block, const std::string& wanted, const std::string& present,
               const PlanOptions& options = {}) {
    return PlanBlock(Kind(block), wanted, present, options);
}

bool AreSame(const char* block, const std::string& first, const std::string& second) {
    return CompareTexts(Kind(block), first, second).differences.empty();
}

TEST(RestorePlan, MakesEveryBlockAsItWasAndThenHasNothingToDo) {
    const std::pair<const char*, std::pair<const char*, Json::Value>> changes[] = {
        {"osd", {"data/0/speed", 9}},
        {"control-protocol", {"VideoType/3/SendCmd", "A5"}},
        {"player-control", {"Players/0/VideoType/0/SendCmd", "A5"}},
        {"timeline", {"cmdInfos/0/cmdList/0/milliseconds", 1}},
        {"screen-split", {"configData/VScreenSize/0/width", 640}}};
    for (const auto& [block, change] : changes) {
        const std::string wanted = FactoryText(block);
        const std::string present = With(wanted, change.first, change.second);
        ASSERT_FALSE(AreSame(block, wanted, present)) << block;
        const BlockPlan plan = Plan(block, wanted, present);
        EXPECT_FALSE(plan.IsRefused()) << block << plan.trouble;
        EXPECT_THAT(plan.rows, testing::Not(IsEmpty())) << block;
        EXPECT_TRUE(AreSame(block, wanted, plan.text)) << block;
        EXPECT_TRUE(Plan(block, wanted, wanted + " ").text.empty()) << block;
    }
}

TEST(RestorePlan, RefusesUnknownAndMissingKeysUnlessForced) {
    const std::string present = R"({"data":[{"osdEnable":1,"speed":1,"own":{"a":1}}],"top":1})";
    const std::string wanted = R"({"data":[{"osdEnable":0,"speed":1,"odd":2}],"top":1})";
    BlockPlan plan = Plan("osd", wanted, present);
    EXPECT_TRUE(plan.IsRefused() && plan.text.empty());
    EXPECT_THAT(plan.unknown, ElementsAre("data/*/odd"));
    EXPECT_THAT(plan.missing, ElementsAre("data/*/own"));
    plan = Plan("osd", wanted, present, {true, ""});
    EXPECT_FALSE(plan.IsRefused());
    EXPECT_EQ(*ParseJson(plan.text),
              *ParseJson(R"({"data":[{"osdEnable":0,"speed":1,"odd":2,"own":{"a":1}}],"top":1})"));
}

TEST(RestorePlan, NeverSendsAValueOfAnotherTypeOrAnUselessDocument) {
    const std::string present = R"({"data":[{"osdEnable":1,"texts":["a"]}]})";
    const BlockPlan plan =
        Plan("osd", R"({"data":[{"osdEnable":"on","texts":["a"]}]})", present, {true, ""});
    EXPECT_TRUE(plan.IsRefused());
    EXPECT_THAT(plan.refused, ElementsAre(Pair("data/*/osdEnable", HasSubstr("another type"))));
    for (const char* useless : {"", "{", "[]", R"({"data":7})"}) {
        EXPECT_TRUE(Plan("osd", useless, present, {true, ""}).IsRefused()) << useless;
        EXPECT_TRUE(Plan("cave", useless, FactoryText("cave"), {true, ""}).IsRefused()) << useless;
    }
    const std::string tooLong =
        R"({"data":[{"osdEnable":1,"texts":[")" + std::string(141, 'x') + R"("]}]})";
    EXPECT_THAT(Plan("osd", tooLong, present).trouble, HasSubstr("140 characters"));
}

TEST(RestorePlan, ElementsThatComeAndGoAreNoKeys) {
    Json::Value fewer = *ParseJson(FactoryText("player-control"));
    fewer["Players"][0]["VideoType"].resize(1);
    for (const auto& [wanted, present] :
         {std::pair(WriteJson(fewer), FactoryText("player-control")),
          std::pair(FactoryText("player-control"), WriteJson(fewer))}) {
        const BlockPlan plan = Plan("player-control", wanted, present);
        EXPECT_FALSE(plan.HasDoubts());
        EXPECT_TRUE(AreSame("player-control", wanted, plan.text));
    }
    const BlockPlan none = Plan("timeline", "", FactoryText("timeline"));
    EXPECT_EQ((*ParseJson(none.text))["cmdInfos"].size(), 0U);
    EXPECT_FALSE(Plan("timeline", FactoryText("timeline"), "").IsRefused());
}

constexpr const char* kOwn = R"({"CustomSettings":[[
  {"keyVal":"g","inputType":"GroupName","select":"Mine","valueRange":[]},
  {"keyVal":"level","inputType":"IntRange","select":5,"valueRange":[0,9]},
  {"keyVal":"many","inputType":"IntMultiple","select":[1],"valueRange":[1,2,3]}]]})";
const std::string kLevel = "CustomSettings/0/1/";

TEST(RestorePlan, OfSettingsThatDescribeThemselvesSendsValuesWithinThePlayersLimits) {
    const std::string wanted = With(With(kOwn, kLevel + "select", 7), kLevel + "valueRange/1", 100);
    const BlockPlan plan = Plan("cave", wanted, kOwn);
    EXPECT_EQ(*ParseJson(plan.text), *ParseJson(With(kOwn, kLevel + "select", 7)));
    ASSERT_THAT(plan.rows, SizeIs(1));
    EXPECT_EQ(plan.rows[0].path, "g/level");
    const std::string beyond =
        With(With(wanted, kLevel + "select", 80), "CustomSettings/0/2/select/0", 3);
    EXPECT_TRUE(Plan("cave", beyond, kOwn).IsRefused());
    const BlockPlan forced = Plan("cave", beyond, kOwn, {true, ""});
    EXPECT_THAT(forced.refused, ElementsAre(Pair("level", testing::_)));
    EXPECT_EQ(*ParseJson(forced.text), *ParseJson(With(kOwn, "CustomSettings/0/2/select/0", 3)));
}

TEST(RestorePlan, OfAPartLeavesTheRestAlone) {
    const std::string osd = FactoryText("osd");
    const std::string wanted = With(With(osd, "data/0/speed", 9), "data/0/texts/0", "new");
    EXPECT_EQ(*ParseJson(Plan("osd", wanted, osd, {false, "data/0/texts"}).text),
              *ParseJson(With(osd, "data/0/texts/0", "new")));
    const std::string own =
        With(With(kOwn, kLevel + "select", 7), "CustomSettings/0/2/select/0", 3);
    EXPECT_EQ(*ParseJson(Plan("cave", own, kOwn, {false, "g/level"}).text),
              *ParseJson(With(kOwn, kLevel + "select", 7)));
    EXPECT_EQ(Plan("cave", own, kOwn, {false, "g"}).rows.size(), 3U);
    EXPECT_EQ(Plan("cave", own, kOwn, {false, "g/many/3"}).rows.size(), 1U);
    EXPECT_THAT(Plan("osd", wanted, osd, {false, "data/0/colour"}).trouble,
                HasSubstr("data/0/colour"));
    EXPECT_THAT(Plan("osd", osd, osd, {false, "data/0/colour"}).trouble,
                HasSubstr("data/0/colour"));
    EXPECT_FALSE(Plan("osd", osd, osd, {false, "data/0/texts"}).IsRefused());
    EXPECT_FALSE(Plan("cave", kOwn, kOwn, {false, "g/level"}).IsRefused());
    const std::string wall = FactoryText("screen-split");
    const BlockPlan screens =
        Plan("screen-split", With(wall, "configData/VScreenSize/0/width", 640), wall,
             {true, "VScreenSize"});
    EXPECT_TRUE(screens.IsRefused());
}

TEST(RestorePlan, OfAPlayerHoldsWhatDiffersAndWhatCannotBeDone) {
    const std::string osd = FactoryText("osd");
    const PlayerDocuments wanted{PlayerNamed("A"),
                                 {ReadOf("osd", osd), ReadOf("cave", FactoryText("cave")),
                                  ReadOf("touch", FactoryText("touch")), FailureOf("timeline")}};
    const PlayerDocuments present{
        PlayerNamed("A"),
        {ReadOf("osd", With(With(osd, "data/0/speed", 9), "data/0/bgCorner", 9)),
         ReadOf("cave", FactoryText("cave")), LackOf("touch")}};
    const auto plans = PlanPlayer(wanted, present, {});
    ASSERT_THAT(plans, SizeIs(2));
    EXPECT_EQ(plans[0].kind, &Kind("osd"));
    EXPECT_THAT(plans[1].trouble, HasSubstr("does not have the block"));
    const std::vector<SettingsPart> parts = {*PartOf("osd/data/0/speed/"),
                                             *PartOf("osd/data/0/bgCorner"), *PartOf("timeline")};
    const auto some = PlanPlayer(wanted, present, parts);
    ASSERT_THAT(some, SizeIs(2));
    EXPECT_TRUE(AreSame("osd", some[0].text, osd));
    EXPECT_THAT(some[1].trouble, HasSubstr("does not hold the block"));
    EXPECT_THAT(PartOf("video/x").reason(), HasSubstr("\"video\""));
}

}  // namespace
}  // namespace sontaro::test
