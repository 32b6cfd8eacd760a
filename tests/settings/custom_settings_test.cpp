#include <gmock/gmock.h>

#include "settings/custom_settings_document.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::HasSubstr;

/// A document with one group of these elements.
std::string Group(const std::string& elements) {
    return R"({"CustomSettings":[[)" + elements + "]]}";
}

std::string Item(const std::string& type, const std::string& select, const std::string& range) {
    return R"({"keyVal":"k","lableName":"L","inputType":")" + type +
           R"(","remarks":"r","select":)" + select + R"(,"valueRange":)" + range + "}";
}

struct CustomSettingItems : testing::Test {
    void Parse(const std::string& text) { ASSERT_TRUE(settings.Parse(text)); }
    /// Every row as "name=value", choices behind it.
    std::string Shown() const {
        std::string shown;
        for (const SettingsGroup& group : settings.BuildGrid())
            for (const SettingsRow& row : group.rows) {
                shown += (shown.empty() ? "" : " ") + row.name + "=" + row.value;
                for (const std::string& choice : row.choices) shown += "|" + choice;
            }
        return shown;
    }
    std::string Written() const { return Compact(AsBytes(settings.Serialise())); }
    /// "select" and "valueRange" of the last item as written, a comma between them.
    std::string Values() const {
        std::string values = Written();
        values = values.substr(values.rfind("\"select\":") + 9);
        values.erase(values.find("\"valueRange\":"), 13);
        return values.substr(0, values.find('}'));
    }
    /// What the row shows after the edit; "ignored" when it was.
    std::string Edit(int group, int item, const std::string& rowName, const std::string& text,
                     int occurrence = 0) {
        const EditAnswer answer =
            settings.UpdateFromGrid(group, item, "", rowName, text, occurrence);
        return answer.outcome == EditAnswer::Outcome::kAccepted ? answer.text : "ignored";
    }

    CCustomSettingAnalysor settings;
};

struct KindCase : NamedCase {
    const char* select;
    const char* range;
    RowKind kind;
    const char* shown;
    std::size_t row;
    const char* typed;
    const char* answer;
    const char* written;
};

struct EveryKind : CustomSettingItems, testing::WithParamInterface<KindCase> {};

TEST_P(EveryKind, IsShownEditedWrittenAndReadAgain) {
    const KindCase& kind = GetParam();
    Parse(Group(Item(kind.name, kind.select, kind.range)));
    EXPECT_EQ(settings.BuildGrid()[0].rows[0].kind, kind.kind);
    EXPECT_EQ(Shown(), kind.shown);
    const std::string row = settings.BuildGrid()[0].rows.at(kind.row).name;
    EXPECT_EQ(Edit(0, 0, row, kind.typed), kind.answer);
    EXPECT_THAT(Written(), HasSubstr(R"("keyVal":"k","lableName":"L","remarks":"r",)"));
    EXPECT_EQ(Values(), kind.written);
    CCustomSettingAnalysor again;
    ASSERT_TRUE(again.Parse(settings.Serialise()));
    EXPECT_EQ(again.BuildGrid(), settings.BuildGrid());
    EXPECT_EQ(again.Serialise(), settings.Serialise());
}

// clang-format off
const KindCase kKindCases[] = {
    {"Int", "5", "[1,2]", RowKind::kWholeNumber, "L=5", 0, "007", "7", "7,[7]"},
    {"Double", "5", "{}", RowKind::kDecimal, "L=5.0000", 0, "1.5", "1.5000", "1.5,[1.5]"},
    {"String", "\"\u7532\"", "7", RowKind::kText, "L=\u7532", 0, "-1e5", "-1e5", R"("-1e5",["-1e5"])"},
    {"IntArry", "9", "[1,2,2,3]", RowKind::kChoice, "L=9|1|2|3", 0, "3", "3", "3,[1,2,2,3]"},
    {"DoubleArry", "2", "[1.00006103515625,2]", RowKind::kChoice, "L=2.0000|1.0001|2.0000", 0, "1.0001", "1.0001", "1.00006103515625,[1.00006103515625,2.0]"},
    {"StringArry", "\"b\"", R"(["a","b","a"])", RowKind::kChoice, "L=b|a|b", 0, "a", "a", R"("a",["a","b","a"])"},
    {"IntRange", "50", "[10,-1]", RowKind::kWholeNumber, "L=50", 0, "99999999999", "2147483647", "2147483647,[-1,10]"},
    {"DoubleRange", "1", R"([2.5,-1,"x"])", RowKind::kDecimal, "L=1.0000", 0, "7.25", "7.2500", "7.25,[-1.0,2.5]"},
    {"IntMultiple", "[3,7,2]", "[1,2,3]", RowKind::kYesNo, "L[1]=0 L[2]=1 L[3]=1", 0, "1", "1", "[1,2,3],[1,2,3]"},
    {"DoubleMultiple", "[0.5]", "[0.5,1]", RowKind::kYesNo, "L[0.5000]=1 L[1.0000]=0", 0, "0", "0", "[],[0.5,1.0]"},
    {"StringMultiple", R"(["b","a"])", R"(["a","b","c"])", RowKind::kYesNo, "L[a]=1 L[b]=1 L[c]=0", 2, "1", "1", R"(["a","b","c"],["a","b","c"])"},
    {"IntStringRange", R"(" -5x")", R"(["9","-3"])", RowKind::kWholeNumber, "L=-5", 0, "12", "12", R"("12",["-3","9"])"},
    {"DoubleStringRange", R"("1e2")", R"(["7","0.5"])", RowKind::kDecimal, "L=100.0000", 0, "3.14159", "3.1416", R"("3.1416",["0.5000","7.0000"])"},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Table, EveryKind, testing::ValuesIn(kKindCases), kCaseName);

// clang-format off
TEST_F(CustomSettingItems, ArePassedOverWhenTheyAreNoneOfTheirKind) {
    std::vector<std::string> elements = {
        "5", "null", "[]", "\"Int\"", R"({"select":5,"valueRange":[]})", R"({"inputType":"Int"})", R"({"inputType":"Int","select":5})",
        R"({"inputType":7,"select":5,"valueRange":[]})", R"({"inputType":"Int","select":5,"valueRange":null})"};
    const std::pair<const char*, const char*> wrong[] = {
        {"int", "5"}, {"", "5"}, {"Int", "\"5\""}, {"Int", "1.5"}, {"Int", "true"}, {"Int", "null"}, {"Int", "2147483648"},
        {"Int", "{}"}, {"Double", "true"}, {"Double", "\"1\""}, {"String", "5"}, {"IntArry", "[1]"}, {"DoubleArry", "\"1\""},
        {"StringArry", "1"}, {"IntRange", "1.5"}, {"DoubleRange", "\"1\""}, {"IntMultiple", "1"}, {"StringMultiple", "{}"},
        {"GroupName", "5"}, {"IntStringRange", "5"}};
    for (const auto& [type, select] : wrong) elements.push_back(Item(type, select, "[1,2]"));
    for (const std::string& element : elements) {
        Parse(Group(element));
        EXPECT_FALSE(settings.HasItems()) << element;
    }
}

TEST_F(CustomSettingItems, AreKeptWhenTheirRangeIsWrong) {
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"IntArry", "1", "5", "1,[]"}, {"IntArry", "1", R"([1,"2",3.5,true,4])", "1,[1,4]"}, {"DoubleArry", "1", "[true,2]", "1.0,[2.0]"},
        {"IntRange", "1", "[1,2,3]", "1,[0,0]"}, {"IntRange", "1", R"([1,"2"])", "1,[0,0]"}, {"IntRange", "1", R"({"a":1})", "1,[0,0]"},
        {"DoubleRange", "1", "[1]", "1.0,[0.0,0.0]"}, {"DoubleRange", "1", R"(["1",2])", "1.0,[0.0,0.0]"},
        {"IntStringRange", "\"1\"", "[1,2]", R"("1",["0","0"])"}, {"IntStringRange", "\"1\"", R"(["1","2","3"])", R"("1",["0","0"])"},
        {"IntMultiple", R"(["x",1,1.5,9])", "7", "[1,9],[]"}, {"StringMultiple", "[]", R"([1,"a",null])", R"([],["a"])"}};
    for (const auto& [type, select, range, written] : cases) {
        Parse(Group(Item(type, select, range)));
        EXPECT_EQ(Values(), written) << type << " " << range;
    }
}
// clang-format on

TEST_F(CustomSettingItems, IgnoreEditsThatDoNotFit) {
    Parse(Group(Item("Int", "-5", "[]") + "," + Item("Double", "0", "[]") + "," +
                Item("IntArry", "1", "[-1,1]") + "," + Item("StringMultiple", "[]", "[\"a\"]")));
    const std::string before = Written();
    for (const char* text : {"", "-1", "1.5", " 1", "1e5", "\uFF11"})
        for (const auto& [item, row] : {std::pair(0, "L"), {2, "L"}, {3, "L[a]"}})
            EXPECT_EQ(Edit(0, item, row, text), "ignored") << text;
    for (const char* text : {"", "-1", "1,5", "1e5"}) EXPECT_EQ(Edit(0, 1, "L", text), "ignored");
    // clang-format off
    for (const auto& [group, item, row, occurrence] :
         {std::tuple(-1, 0, "L", 0), {1, 0, "L", 0}, {0, -1, "L", 0}, {0, 4, "L", 0}, {0, 0, "L", 1},
          {0, 0, "M", 0}, {0, 3, "L[b]", 0}, {0, 3, "L[a]", 1}, {0, 3, "L[a]", -1}})
        EXPECT_EQ(Edit(group, item, row, "1", occurrence), "ignored") << group << item << row;
    // clang-format on
    EXPECT_EQ(Written(), before);
}

TEST_F(CustomSettingItems, AreMarkedOutsideTheirRangeAndTickEachOfferedValueByItsPosition) {
    Parse(Group(Item("IntRange", "50", "[10,-1]")));
    EXPECT_EQ(settings.BuildGrid()[0].rows[0].caution, "The value is outside the range -1 to 10.");
    EXPECT_EQ(settings.UpdateFromGrid(0, 0, "", "L", "10").caution, "");
    Parse(Group(Item("IntMultiple", "[9,1]", "[1,2,1]")));
    EXPECT_EQ(Shown(), "L[1]=1 L[2]=0 L[1]=1");
    EXPECT_EQ(Edit(0, 0, "L[1]", kRowNo) + Edit(0, 0, "L[2]", kRowYes), "01");
    EXPECT_EQ(Values(), "[2,1],[1,2,1]");
}

TEST_F(CustomSettingItems, HaveTitlesThatAreNoItems) {
    const std::string one = Item("Int", "1", "[]");
    Parse(R"({"CustomSettings":[[)" + one + "," + Item("GroupName", "\"last\"", "[]") +
          "], 7, []]}");
    ASSERT_THAT(settings.BuildGrid(), testing::SizeIs(3));
    EXPECT_EQ(settings.BuildGrid()[0].name, "last");
    EXPECT_EQ(settings.UpdateFromGrid(0, 0, "last", "L", "3").text, "3");
    EXPECT_EQ(settings.UpdateFromGrid(0, 0, "another", "L", "4"), EditAnswer{});
    EXPECT_EQ(Shown(), "L=3");
    const std::string title = R"([{"inputType":"GroupName","keyVal":)";
    const std::string empty =
        title + R"("","lableName":"","remarks":"","select":"","valueRange":[""]}])";
    EXPECT_THAT(Written(), testing::StartsWith(R"({"CustomSettings":[)" + title + R"("k",)"));
    EXPECT_THAT(Written(), testing::EndsWith("," + empty + "," + empty + "]}"));
}

TEST_F(CustomSettingItems, AreNoneInJsonOfAnotherShapeAndInWhatIsNoJson) {
    for (const char* text : {"[]", "7", "null", "\"x\"", "{}", R"({"CustomSettings":{"a":[]}})",
                             R"({"CustomSettings":7})", R"({"CustomSettings":[]})"}) {
        Parse(R"({"Version":1,"CustomSettings":[[]]})");
        Parse(text);
        EXPECT_EQ(Written(), R"({"CustomSettings":[]})") << text;
    }
    for (const char* text : {"", "{", "nul", R"({"CustomSettings":[[}]})"}) {
        Parse(Group(Item("Int", "1", "[]")));
        EXPECT_FALSE(settings.Parse(text) || settings.HasItems()) << text;
    }
    for (const char* version : {R"("1.2")", "7", "1.5", "null", R"({"a":[1]})"}) {
        Parse(R"({"Version":)" + std::string(version) + "}");
        EXPECT_EQ(Written(), R"({"CustomSettings":[],"Version":)" + std::string(version) + "}");
    }
}

std::string Named(const std::string& key, const std::string& type, const std::string& select) {
    std::string item = Item(type, select, "[1,2,1]");
    return item.replace(item.find("\"k\""), 3, '"' + key + '"');
}

std::string KeysOf(const SettingsDocument& document) {
    std::string keys;
    for (const SettingsGroup& group : document.Rows()) {
        keys += group.key + ": ";
        for (const SettingsRow& row : group.rows) keys += row.key + ' ';
    }
    return keys;
}

TEST(CustomSettings, HaveKeysThatNoOtherRowHas) {
    CustomSettings settings;
    const std::string items = Named("a", "Int", "1") + "," + Named("", "Int", "1") + "," +
                              Named("a", "Int", "1") + "," + Named("a#1/~", "Int", "1") + "," +
                              Named("", "IntMultiple", "[]");
    ASSERT_TRUE(settings.TakeReply(R"({"CustomSettings":[[)" + Named("g", "GroupName", "\"x\"") +
                                   "," + items + "],[" + Named("", "GroupName", "\"g\"") + "," +
                                   Named("a", "Int", "1") + "],[]]}"));
    EXPECT_EQ(KeysOf(settings),
              "g: g/a g/#0 g/a#1 g/a~21~1~0 g/#1/1 g/#1/2 g/#1/1#1 g#1: g#1/a #0: ");
    for (const SettingsGroup& group : settings.Rows())
        for (const SettingsRow& row : group.rows)
            EXPECT_EQ(settings.Edit({row.key, "1"}).text, "1") << row.key;
    for (const char* key : {"", "g", "g/", "g/a#2", "g/a/1", "g/#1", "g/#1/1#2", "h/a"})
        EXPECT_EQ(settings.Edit({key, "1"}), EditAnswer{}) << key;
}

TEST(CustomSettings, AreEditedWhereTheyHaveMovedTo) {
    CustomSettings settings;
    const std::string title = Named("g", "GroupName", "\"x\"") + ",";
    const std::string a = Named("a", "Int", "1"), b = Named("b", "Int", "1");
    ASSERT_TRUE(settings.TakeReply(Group(title + a + "," + b)));
    const std::string key = settings.Rows()[0].rows[1].key;
    ASSERT_TRUE(settings.TakeReply(R"({"CustomSettings":[[],[)" + title + b + "," + a + "]]}"));
    EXPECT_EQ(settings.Edit({key, "7"}).text, "7");
    EXPECT_EQ(settings.Rows()[1].rows[0].value + settings.Rows()[1].rows[1].value, "71");
}

TEST(CustomSettings, AreOfUseOnlyWithAnItem) {
    CustomSettings settings;
    const std::string useful = Group(Item("Int", "1", "[]"));
    for (const std::string& useless : {std::string("{"), Group(Item("GroupName", "\"x\"", "[]"))}) {
        ASSERT_TRUE(settings.TakeReply(useful).ok());
        EXPECT_FALSE(settings.TakeFile(useless).ok() || settings.TakeReply(useless).ok());
        EXPECT_THAT(settings.Rows(), testing::SizeIs(1));
    }
}

}  // namespace
}  // namespace sontaro::test
