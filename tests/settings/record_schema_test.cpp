#include "settings/record_schema.h"

#include <gmock/gmock.h>

#include "base/json.h"
#include "settings/record_table.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

// A small document: a club of at most two halls with at most three shows each, told by its tables
// and the captions of its grids alone.

struct Show {
    std::string name, command;
    std::int64_t start = 0;
    OtherKeys others = {};
};

struct Hall {
    std::int32_t seats = 0;
    Elements<Show> shows;
    OtherKeys others = {};
};

struct Club {
    bool open = false;
    std::int32_t kind = 0;
    double share = 0;
    std::uint64_t visitors = 0;
    Elements<Hall> halls;
    TextList notes;
    CustomEntries extras;
};

constexpr LocalText kWrong = {"错!", "wrong!"};
constexpr LocalText kNoNumber = {"不是数!", "no number!"};
constexpr LocalText kNoHelp = {nullptr, nullptr};
constexpr LocalText kKinds[] = {{"剧院", "theatre"}, {"酒吧", "bar"}};
constexpr FieldShape kNote = {.rule = FieldRule::kText, .longest = 4, .tooLong = kWrong, .grid = 2};
constexpr FieldShape kSeats = {
    .rule = FieldRule::kNumber, .most = 500, .refusal = kWrong, .noNumber = kNoNumber};
constexpr FieldShape kHalls = {.longest = 2, .grid = 1};
constexpr FieldShape kExtras = {.grid = 2};

constexpr auto kShow = Rows<Show>({
    Heading{"节目%d", "Show%d"},
    {"Name", kAt<&Show::name>, Refusing(kWrong, Text(8)), {"名称", "Name"}, kNoHelp, "new"},
    {"Cmd", kAt<&Show::command>, Refusing(kWrong, Command(LetterCase::kLower)), {"命令", "Cmd"}},
    {"Start", kAt<&Show::start>, NumberAround(10, 20), {"开始", "Start"}, kNoHelp, 15},
});
constexpr auto kHall = Rows<Hall>({
    Heading{"厅%d", "Hall%d"},
    {"Seats", kAt<&Hall::seats>, kSeats, {"座位", "Seats"}},
    {"Shows", kRecordAt<&Hall::shows, kShow>, AtMost(3), {"节目", "Shows"}},
});
constexpr auto kClub = Rows<Club>({
    Heading{"俱乐部", "Club"},
    {"Open", kAt<&Club::open>, {FieldRule::kYesNo}, {"营业", "Open"}, kNoHelp, 1},
    Heading{"经营", "Business"},
    {"Kind", kAt<&Club::kind>, IndexOrNumber(kKinds), {"种类", "Kind"}},
    {"Share", kAt<&Club::share>, Number(0, 1), {"份额", "Share"}},
    {"Visitors", kAt<&Club::visitors>, Number(), {"客人", "Visitors"}},
    {"Halls", kRecordAt<&Club::halls, kHall>, kHalls},
    {"Notes", kAt<&Club::notes>, kNote, {"备注%d", "Note%d"}},
    {"Extras", kAt<&Club::extras>, kExtras},
});
constexpr const auto& kSchema = kSchemaOf<kClub>;
constexpr LocalText kCaptions[] = {{"俱乐部", "Club"}, {"厅", "Halls"}, {"其他", "Other"}};

constexpr const char* kDocument =
    R"({"Open":false,"Kind":1,"Share":0.25,"Visitors":18446744073709551615,
    "Halls":[{"Seats":700,"Roof":1,"Shows":[{"Name":"甲","Cmd":"a5","Start":-9000000000},7,{"x":[2]}]},{},{"Seats":3}],
    "Notes":["hi",5],"Extras":[{"keyVal":"k","lableName":"K","inputType":1,"select":5,"valueRange":[0]},
    {"keyVal":"m","lableName":"M","inputType":"IntMultiple","select":[1],"valueRange":[1,2],"z":0},"odd"]})";

struct SmallDocument : testing::Test {
    SmallDocument() { kSchema.Reset(club); }
    void Read(const std::string& text, Source source = Source::kPlayer) {
        kSchema.Read(std::move(*ParseJson(text)), source, club);
    }
    std::string Written() const { return Compact(AsBytes(WriteJson(kSchema.ToJson(club)))); }
    std::string Enter(const std::string& key, const std::string& text) {
        const EditAnswer answer = kSchema.Edit({key, text}, club);
        constexpr const char* kOutcomes[] = {"=", "!", "ignored"};
        return kOutcomes[static_cast<int>(answer.outcome)] + answer.text +
               (answer.caution.empty() ? "" : "!");
    }

    Club club;
};

TEST_F(SmallDocument, IsShownOnItsGrids) {
    Read(kDocument);
    std::array<SettingsRows, std::size(kCaptions)> grids;
    kSchema.Show(club, grids);
    std::string shown;
    for (const SettingsGroup& hall : grids[1])
        for (const SettingsRow& row : hall.rows)
            shown += hall.name + row.key + '=' + row.value + ' ';
    EXPECT_EQ(shown, "Hall1Halls/0/Seats=700 Hall2Halls/1/Seats=0 ");
    EXPECT_FALSE(grids[1][0].rows[0].caution.empty());
    EXPECT_EQ(grids[1][0].groups[0].groups[1].rows[0].key, "Halls/0/Shows/1/Name");
    EXPECT_EQ(grids[2][0].rows[4].key, "Extras/m/2");
}

TEST_F(SmallDocument, IsWrittenAsItWasReadWithinItsLimits) {
    Read(kDocument);
    EXPECT_EQ(
        Written(),
        R"({"Extras":[{"inputType":1,"keyVal":"k","lableName":"K","select":5,"valueRange":[0]},)"
        R"({"inputType":"IntMultiple","keyVal":"m","lableName":"M","select":[1],"valueRange":[1,2],"z":0},"odd"],)"
        R"("Halls":[{"Roof":1,"Seats":700,"Shows":[{"Cmd":"a5","Name":"\u7532","Start":-9000000000},)"
        R"({"Cmd":"","Name":"new","Start":15,"x":[2]}]},{"Seats":0,"Shows":[]}],"Kind":1,)"
        R"("Notes":["hi",""],"Open":false,"Share":0.25,"Visitors":18446744073709551615})");
    const std::string before = Written();
    Read(before);
    EXPECT_EQ(Written(), before);
    Read(R"({"Open":1,"Share":"1","Visitors":-1,"Halls":{},"Notes":7,"Extras":{}})");
    EXPECT_EQ(Written(), before);
    kSchema.Reset(club);
    EXPECT_EQ(
        Written(),
        R"({"Extras":[],"Halls":[],"Kind":0,"Notes":[],"Open":true,"Share":0.0,"Visitors":0})");
}

TEST_F(SmallDocument, TakesWhatFitsTheRowOfAKey) {
    Read(kDocument);
    // clang-format off
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"Open", "1", "=1"}, {"Open", "2", "ignored"}, {"Share", " .5 ", "=0.5"}, {"Share", "1.1", "ignored"},
        {"Visitors", "18446744073709551616", "ignored"}, {"Visitors", "9000000000", "=9000000000"},
        {"Halls/0/Seats", "501", "!wrong!"}, {"Halls/0/Seats", " -1", "!wrong!"}, {"Halls/0/Seats", "1.0", "!no number!"},
        {"Halls/0/Seats", "", "!no number!"}, {"Halls/0/Seats", " 500", "=500"}, {"Halls/1/Shows/0/Name", "x", "ignored"},
        {"Kind", "-7", "=-7!"}, {"Kind", "theatre", "=theatre"}, {"Kind", "2147483648", "ignored"}, {"Kind", "pub", "ignored"},
        {"Halls/0/Shows/1/Name", "四个汉字", "=四个汉字"}, {"Halls/0/Shows/1/Name", "四个汉字x", "!wrong!"},
        {"Halls/0/Shows/0/Cmd", "A5 0B", "=a50b"}, {"Halls/0/Shows/0/Start", "21", "=21!"}, {"Halls/0/Shows/0/Start", "20", "=20"},
        {"Notes/1", "五个汉字", "=五个汉字"}, {"Notes/2", "x", "ignored"}, {"Extras/k", "6", "=6"}, {"Extras/k", "x", "ignored"},
        {"Extras/m/2", "1", "=1"}, {"Extras", "1", "ignored"}};
    // clang-format on
    for (const auto& [key, text, answer] : cases) {
        EXPECT_EQ(Enter(key, text), answer) << key << ' ' << text;
        const auto row = kSchema.RowAt(club, key);
        if (*answer != '=') continue;
        EXPECT_EQ(row->value + (row->caution.empty() ? "" : "!"), answer + 1);
    }
    EXPECT_THAT(Written(),
                testing::HasSubstr(R"("inputType":1,"keyVal":"k","lableName":"K","select":6)"));
    EXPECT_THAT(Written(), testing::HasSubstr(R"("select":[1,2],"valueRange":[1,2],"z":0})"));
    EXPECT_STREQ(kSchema.RefusalToSend(club)->english, "wrong!");
    EXPECT_EQ(Enter("Notes/1", "四字"), "=四字");
    EXPECT_FALSE(kSchema.RefusalToSend(club));
}

}  // namespace
}  // namespace sontaro::test
