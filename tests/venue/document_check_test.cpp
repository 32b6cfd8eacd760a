#include "venue/document_check.h"

#include <gmock/gmock.h>

#include "support/literals.h"
#include "timeline/timeline_document.h"
#include "venue/backup_manifest.h"
#include "venue/venue_samples.h"

namespace sontaro::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The kind, and the block if it is known.
std::string What(const std::string& text) {
    const DocumentCheck check = CheckDocument(text);
    return WordFor(check.kind) + (check.block ? std::string(" ") + check.block->name : "");
}

/// The findings as "line:column path what"; remarks in brackets.
std::vector<std::string> Found(const std::string& text, const SettingsBlockKind* block = nullptr) {
    std::vector<std::string> found;
    for (const CheckFinding& finding : CheckDocument(text, block).findings) {
        std::string told = std::to_string(finding.place.line) + ':' +
                           std::to_string(finding.place.column) + ' ' + finding.path + ' ' +
                           finding.what;
        const bool isRemark = finding.weight == CheckFinding::Weight::kRemark;
        found.push_back(isRemark ? '(' + told + ')' : told);
    }
    return found;
}

TEST(DocumentCheck, KnowsEveryDocumentAndFindsNoFaultInThoseOfANewPlayer) {
    for (const SettingsBlockKind& kind : SettingsBlocks()) {
        const std::string text = FactoryText(kind.name);
        const DocumentCheck check = CheckDocument(text);
        const bool isTimeline = kind.readBlock == kBlockPlayerTimeline;
        EXPECT_EQ(What(text), kind.describesItself ? "own-description"
                              : isTimeline         ? "timeline timeline"
                                                   : std::string("settings ") + kind.name);
        EXPECT_TRUE(check.IsSound()) << kind.name << Found(text).front();
        EXPECT_EQ(CheckDocument(text, &kind).block, &kind);
    }
    EXPECT_EQ(What(WriteManifest({})), "manifest");
    EXPECT_EQ(What(R"({"02:00:7F:00:00:02":{"Remarks":"Hall"}})"), "remarks");
    EXPECT_EQ(What(R"({"format":"sontaro-venue","version":1})"), "venue");
    EXPECT_EQ(What(R"({"format":"sontaro-video-set","version":1,"set":{}})"), "video-set");
    EXPECT_EQ(What(R"({"format":"sontaro-screen-split","version":1})"), "video-wall");
    for (const char* unknown :
         {"", "7", "PLAYER1\n", "{}", R"({"a":1})", R"({"format":"other"})"}) {
        EXPECT_EQ(What(unknown), "unknown") << unknown;
        EXPECT_THAT(Found(unknown), IsEmpty()) << unknown;
    }
}

TEST(DocumentCheck, TellsWhereTheTextIsNoJson) {
    EXPECT_THAT(Found("{\n \"大\": 1,,"),
                ElementsAre(testing::StartsWith("2:9  not a valid JSON")));
    const std::string twice = "{\"data\":[{\"speed\":1,\n\"speed\":2}]}";
    EXPECT_EQ(What(twice), "settings osd");
    EXPECT_THAT(Found(twice), Contains(AllOf(testing::StartsWith("2:1 "), HasSubstr("Duplicate"))));
}

TEST(DocumentCheck, TellsWhatIsNotTakenAsItStands) {
    const std::string text =
        "{\"data\":[{\"osdEnable\":\"on\",\n \"transparent\":101, \"speed\":3,\n \"sped\":4,\n "
        "\"texts\":[\"a\"]}]}";
    const auto found = Found(text);
    EXPECT_THAT(found,
                Contains(testing::StartsWith("1:23 data/0/osdEnable the value is not taken")));
    EXPECT_THAT(found, Contains(testing::StartsWith("2:16 data/0/transparent ")));
    EXPECT_THAT(found, Contains(testing::StartsWith("(3:9 data/0/sped nobody here knows")));
    EXPECT_THAT(found, Contains(testing::StartsWith("(0:0 data/*/left the key is missing")));
    EXPECT_THAT(Found(text, &Kind("timeline")), ElementsAre(HasSubstr("no timeline")));
    EXPECT_THAT(Found("[]", &Kind("cave")), ElementsAre(HasSubstr("no document of this block")));
}

TEST(DocumentCheck, OfSettingsThatDescribeThemselvesTellsWhatIsPassedOverOrBeyond) {
    const std::string text = R"({"CustomSettings":[[
{"keyVal":"g","inputType":"GroupName","lableName":"","remarks":"","select":"G","valueRange":[""]},
{"keyVal":"level","inputType":"IntRange","lableName":"","remarks":"","select":50,"valueRange":[0,9]},
{"keyVal":"turn","inputType":"Angle","lableName":"","remarks":"","select":50,"valueRange":[0,9]}]]})";
    const auto found = Found(text, &Kind("touch"));
    EXPECT_THAT(found, Contains(AllOf(testing::StartsWith("3:79 g/level "), HasSubstr("outside"))));
    EXPECT_THAT(found, Contains(testing::StartsWith("(4:75 g/turn the value is passed over")));
}

std::string Timeline(const std::string& commands) {
    return R"({"cmdInfos":[{"playerID":0,"typeName":"t","videoName":"v","cmdList":[)" + commands +
           "]}]}";
}
std::string Command(int time, const std::string& port, const std::string& rest) {
    return "\n{\"milliseconds\":" + std::to_string(time) + ",\"expendCmdIndex\":" + port + ',' +
           rest + '}';
}

TEST(DocumentCheck, OfATimelineLooksAtItsShow) {
    const std::string peer = R"("ip":"127.0.0.9","port":9,"cmd":"A5")";
    EXPECT_THAT(Found(Timeline(Command(1, "0", peer) + ',' + Command(500, "5", peer))), IsEmpty());
    const auto same = Found(Timeline(Command(1, "0", peer) + ',' + Command(1, "0", peer)));
    ASSERT_THAT(same, ElementsAre(HasSubstr("same moment")));
    EXPECT_THAT(same[0], testing::StartsWith("3:1 cmdInfos/0/cmdList/1 "));
    EXPECT_THAT(Found(Timeline(Command(1, "5", R"("ip":"","port":0,"cmd":"A5")"))),
                ElementsAre(HasSubstr("no IP address or port")));
    EXPECT_THAT(Found(Timeline("\n7," + Command(1, "\"0\"", peer))),
                ElementsAre(testing::StartsWith("2:1 cmdInfos/0/cmdList/0 a JSON object"),
                            testing::StartsWith("3:36 cmdInfos/0/cmdList/1/expendCmdIndex ")));
    EXPECT_THAT(Found(Timeline("\n{}")), testing::Each(testing::StartsWith("(2:1 ")));
}

TEST(DocumentCheck, OfAJournalTellsItsBrokenLinesUnlessTheLastIsCut) {
    const std::string first =
        R"({"event":"run","format":"sontaro-upload-journal","version":1,"time":"","players":[]})";
    EXPECT_EQ(What(first), "journal");
    EXPECT_EQ(What(first + "\n{\"event\":\n"), "journal");
    EXPECT_THAT(Found(first + "\n{\"event\":\n{}\n"), ElementsAre(testing::StartsWith("2:1 ")));
    EXPECT_THAT(Found(first + "\n{}\n{\"event\":"), ElementsAre(testing::StartsWith("(3:1 ")));
}

TEST(DocumentCheck, ListsTheWorstFirstAndNoMoreThanPeopleRead) {
    std::string many = R"({"data":[{"osdEnable":"on","texts":["a"])";
    for (int i = 0; i < 1500; ++i) many += ",\"k" + std::to_string(i) + "\":1";
    const DocumentCheck check = CheckDocument(many + "}]}");
    EXPECT_EQ(check.findings.size(), kMostFindings);
    EXPECT_EQ(check.findings.front().path, "data/0/osdEnable");
    EXPECT_GE(check.notListed, 501U);
}

}  // namespace
}  // namespace sontaro::test
