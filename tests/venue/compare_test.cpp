#include "venue/compare.h"

#include <gmock/gmock.h>

#include <set>

#include "osd/osd_document.h"
#include "settings/custom_settings_document.h"
#include "support/temporary_folder.h"
#include "venue/backup_writer.h"
#include "venue/document_leaves.h"
#include "venue/venue_samples.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// What differs, each as "path: first > second"; rows have a star.
std::vector<std::string> Differences(const char* block, const std::string& first,
                                     const std::string& second) {
    std::vector<std::string> told;
    for (const RowDifference& difference : CompareTexts(Kind(block), first, second).differences)
        told.push_back(difference.path + (difference.caption.empty() ? "" : "*") + ": " +
                       difference.first.value_or("-") + " > " + difference.second.value_or("-"));
    return told;
}

bool AreInOtherForm(const char* block, const std::string& first, const std::string& second) {
    const BlockComparison comparison = CompareTexts(Kind(block), first, second);
    return comparison.isOtherForm && comparison.HasSameValues();
}

TEST(Comparison, KnowsEveryValueByThePathThatItsRowHas) {
    for (const SettingsBlockKind& kind : SettingsBlocks()) {
        if (kind.readBlock == kBlockPlayerTimeline) continue;
        const std::unique_ptr<SettingsDocument> whole = kind.makeDocument();
        ASSERT_TRUE(whole->TakeReply(FactoryText(kind.name)));
        const std::string text = whole->Write();  // with every key that there is
        const Json::Value json = *ParseJson(text);
        std::set<std::string> paths;
        for (const DocumentLeaf& leaf : LeavesOf(kind, json)) {
            EXPECT_TRUE(paths.insert(leaf.path).second) << leaf.path;
            if (leaf.IsSelect()) paths.insert(leaf.item);
        }
        const BlockDocument document(kind, text, BlockDocument::Source::kPlayer);
        for (const PathRow& row : document.PathRows()) {
            const std::string& path = row.row.key;
            EXPECT_TRUE(paths.contains(path) || paths.contains(path.substr(0, path.rfind('/'))))
                << kind.name << ' ' << path;
        }
    }
}

TEST(Comparison, TellsRowsOnceAndThenWhatNoRowShows) {
    const std::string osd = FactoryText("osd");
    std::string other = With(osd, "data/0/transparent", 77);
    other = With(other, "data/0/speed", 8);
    other = With(other, "data/0/novel", 1);
    const auto told = Differences("osd", osd, other);
    ASSERT_THAT(told, SizeIs(3));
    EXPECT_THAT(told[0], testing::StartsWith("data/0/transparent*: "));
    EXPECT_THAT(told[1] + told[2], testing::HasSubstr("data/0/novel: - > 1"));
    EXPECT_THAT(told[1] + told[2], testing::HasSubstr("data/0/speed: "));
    // A choice beyond the list is shown as its last one.
    const std::string protocol = FactoryText("control-protocol");
    const std::string path = "Serial/LayOutMov";
    EXPECT_THAT(Differences("control-protocol", With(protocol, path, 98), With(protocol, path, 99)),
                ElementsAre(path + ": 98 > 99"));
}

TEST(Comparison, IsOfMeaningNotOfLayoutOrOrder) {
    for (const SettingsBlockKind& kind : SettingsBlocks()) {
        const std::string text = FactoryText(kind.name);
        EXPECT_THAT(Differences(kind.name, text, WriteJsonLine(*ParseJson(text))), IsEmpty());
    }
    Json::Value touch = *ParseJson(FactoryText("touch"));
    Json::Value& group = touch["CustomSettings"][0];
    group[group.size() - 1].swap(group[group.size() - 2]);
    EXPECT_THAT(Differences("touch", FactoryText("touch"), WriteJson(touch)), IsEmpty());
    Json::Value timeline = *ParseJson(FactoryText("timeline"));
    timeline["cmdInfos"][0].swap(timeline["cmdInfos"][1]);
    EXPECT_THAT(Differences("timeline", FactoryText("timeline"), WriteJson(timeline)), IsEmpty());
    timeline["cmdInfos"][0]["cmdList"][0]["novel"] = 1;
    EXPECT_THAT(Differences("timeline", FactoryText("timeline"), WriteJson(timeline)), SizeIs(1));
    EXPECT_THAT(Differences("osd", "{", "["), SizeIs(1));
    EXPECT_THAT(Differences("osd", R"({"data":[{"left":1}]})", R"({"data":[{"left":1.0}]})"),
                IsEmpty());
}

constexpr const char* kOwn = R"({"CustomSettings":[[
  {"keyVal":"g","inputType":"GroupName","select":"Mine","valueRange":[]},
  {"keyVal":"level","lableName":"Level","inputType":"IntRange","select":5,"valueRange":[0,9]},
  {"keyVal":"many","lableName":"Many","inputType":"IntMultiple","select":[1,2],"valueRange":[1,2,3]}]]})";

TEST(Comparison, OfSettingsThatDescribeThemselvesTellsValuesAlone) {
    const std::string group = "CustomSettings/0/";
    EXPECT_THAT(Differences("cave", kOwn, With(kOwn, group + "1/select", 6)),
                ElementsAre("g/level*: 5 > 6"));
    EXPECT_THAT(Differences("cave", kOwn, With(kOwn, group + "2/select/0", 3)), SizeIs(2));
    EXPECT_THAT(Differences("cave", kOwn, With(kOwn, group + "2/select/0", 7)),
                ElementsAre("g/many/1*: 1 > 0"));
    EXPECT_THAT(Differences("cave", kOwn, With(kOwn, "Version", "2")),
                ElementsAre("Version: - > 2"));
    EXPECT_THAT(Differences("cave", kOwn, With(kOwn, group + "0/inputType", "Odd")),
                Not(IsEmpty()));
}

/// Settings as a player describes them, their group without a key; and as the windows write them.
TEST(Comparison, TellsOneChangedRowOnceWhateverFormBothHave) {
    const std::string sent = R"({"CustomSettings":[[
        {"inputType":"GroupName","select":"Serial","valueRange":[""]},
        {"keyVal":"rate","lableName":"Rate","inputType":"Int","select":9600,"valueRange":[]},
        {"keyVal":"gain","inputType":"Double","select":0.1,"valueRange":[0,1]}]]})";
    CustomSettings windows;
    ASSERT_TRUE(windows.TakeReply(sent));
    EXPECT_TRUE(AreInOtherForm("cave", sent, windows.Write()));
    EXPECT_EQ(windows.Edit({"Serial/rate", "19200"}).outcome, EditAnswer::Outcome::kAccepted);
    const auto changes = CompareTexts(Kind("cave"), sent, windows.Write()).differences;
    EXPECT_THAT(changes,
                ElementsAre(RowDifference{"Serial/rate", "Serial / Rate", "9600", "19200"}));
}

TEST(Comparison, TellsOfTheSameValuesInAnotherFormThatTheyAreThat) {
    const std::string osd = R"({"data":[{"osdEnable":true,"left":0.1,"texts":["a"]}]})";
    EXPECT_FALSE(AreInOtherForm("osd", osd, osd + " "));
    OsdSettings windows;
    ASSERT_TRUE(windows.TakeReply(osd));
    EXPECT_TRUE(AreInOtherForm("osd", osd, windows.Write()));
    EXPECT_TRUE(AreInOtherForm("osd", R"({"a":0.1})", R"({"a":0.100000001490116})"));
    EXPECT_TRUE(AreInOtherForm("osd", osd, With(osd, "data/0/novel", Json::nullValue)));
    EXPECT_THAT(Differences("osd", osd, With(windows.Write(), "data/0/speed", 9)), SizeIs(1));
    for (const char* nothing : {"{}", R"({"data":[]})"})
        EXPECT_FALSE(AreInOtherForm("osd", nothing, OsdSettings().Write())) << nothing;
    for (const char* described : {"1/valueRange", "1/lableName", "0/select"})
        EXPECT_TRUE(AreInOtherForm("cave", kOwn,
                                   With(kOwn, "CustomSettings/0/" + std::string(described), "x")))
            << described;
    const Json::Value swapped = *ParseJson("[2,1]");
    EXPECT_TRUE(AreInOtherForm("cave", kOwn, With(kOwn, "CustomSettings/0/2/select", swapped)));
    Json::Value timeline = *ParseJson(FactoryText("timeline"));
    timeline["cmdInfos"][0].swap(timeline["cmdInfos"][1]);
    EXPECT_TRUE(AreInOtherForm("timeline", FactoryText("timeline"), WriteJson(timeline)));
}

TEST(Comparison, ListsNoMoreThanPeopleRead) {
    std::string many = R"({"a":[0)";
    for (int i = 0; i < 1500; ++i) many += ",1";
    const auto comparison = CompareTexts(Kind("osd"), many + "]}", R"({"a":[]})");
    EXPECT_THAT(comparison.differences, SizeIs(kMostDifferences));
    EXPECT_EQ(comparison.notListed, 501U);
}

TEST(Comparison, OfPlayersTellsOnWhichSideABlockIs) {
    const PlayerDocuments first{PlayerNamed("A"),
                                {ReadOf("osd", "{}"), ReadOf("cave", "{}"), LackOf("touch")}};
    const PlayerDocuments second{
        PlayerNamed("A"),
        {ReadOf("osd", "{ }"), FailureOf("cave", "cut-off"), ReadOf("timeline", "{}")}};
    const PlayerComparison comparison = ComparePlayers(first, second);
    ASSERT_THAT(comparison.blocks, SizeIs(2));
    EXPECT_EQ(comparison.blocks[0].kind, &Kind("timeline"));
    EXPECT_EQ(comparison.blocks[0].sides, BlockComparison::Sides::kSecondOnly);
    EXPECT_EQ(comparison.blocks[1].sides, BlockComparison::Sides::kFirstOnly);
    EXPECT_EQ(comparison.blocks[1].why, "cut-off");
}

TEST(Comparison, MatchesPlayersByIdAndWhereSeveralHaveItByAddress) {
    const VenuePlayer players[] = {PlayerNamed("A", "1"), PlayerNamed("A", "2"),
                                   PlayerNamed("B", "3")};
    const VenuePlayer others[] = {PlayerNamed("C", "3"), PlayerNamed("A", "2"),
                                  PlayerNamed("A", "4")};
    EXPECT_THAT(MatchPlayers(players, others),
                ElementsAre(MatchedPlayers{0, 2}, MatchedPlayers{1, 1},
                            MatchedPlayers{2, std::nullopt}, MatchedPlayers{std::nullopt, 0}));
}

TEST(Comparison, OfABackupWithPartOfTheVenuePassesOverTheRest) {
    const TemporaryFolder folder;
    auto writer = BackupWriter::Begin({folder.Path()});
    const PlayerDocuments one{PlayerNamed("A"), {ReadOf("osd", "{}")}};
    ASSERT_TRUE((*writer)->Add(one) && (*writer)->Add({PlayerNamed("B"), {}}) &&
                (*writer)->Finish());
    const Backup backup = *Backup::Open(folder.Path());
    const std::vector<PlayerDocuments> venue = {one, {PlayerNamed("C"), {}}};
    const auto part = CompareWithVenue(backup, venue, false);
    ASSERT_TRUE(part);
    ASSERT_THAT(*part, SizeIs(2));
    EXPECT_TRUE((*part)[0].IsSame() && !(*part)[1].first);
    EXPECT_THAT(*CompareWithVenue(backup, venue, true), SizeIs(3));
    const auto same = CompareBackups(backup, backup);
    EXPECT_TRUE(same && std::ranges::all_of(*same, &PlayerComparison::IsSame));
}

}  // namespace
}  // namespace sontaro::test
