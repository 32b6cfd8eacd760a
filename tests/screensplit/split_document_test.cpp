#include "screensplit/split_document.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <random>

#include "screensplit/split_memory.h"
#include "screensplit/split_rows.h"
#include "screensplit/split_samples.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr SplitSlot kUnused;
constexpr const char* kNothing = "No data entered";
constexpr const char* kTooMuch = "Input out of range";
constexpr const char* kWrong = "input error!";

/// Three screens of two players, whose order is applied.
struct Wall : testing::Test {
    Wall() {
        document.SetDevices(ThreeScreens());
        Fetch(document, Configuration());
        Apply();
    }
    void Apply() { EXPECT_FALSE(document.ApplyOrder()); }
    void SetSlots(const std::vector<SplitSlot>& slots) {
        for (std::size_t i = 0; i < slots.size(); ++i) document.SetSlot(i, slots[i]);
    }
    void ExpectRefusal(const char* english) {
        const auto refusal = document.ApplyOrder();
        EXPECT_STREQ(refusal ? refusal->english : "", english);
    }
    /// What a row answers: "=" and what it shows, or the refusal.
    std::string Edit(const std::string& key, const std::string& text) {
        const EditAnswer answer = EditSplitRow(document, {key, text});
        return (answer.outcome == EditAnswer::Outcome::kAccepted ? "=" : "") + answer.text;
    }
    void ExpectAnswers(const std::vector<std::array<const char*, 3>>& cases) {
        for (const auto& [row, text, answer] : cases) EXPECT_EQ(Edit(row, text), answer) << row;
    }
    [[nodiscard]] std::string Areas() const { return AreasOf(DataOf(document)); }

    SplitDocument document;
};

TEST_F(Wall, LaysScreensOutEdgeToEdgeInTheOrderOfTheSlots) {
    EXPECT_EQ(Areas(), "0:0,0-1919,1079 1:1920,0-3839,1079 2:3840,0-5759,1079 ");
    EXPECT_EQ(Edit("Split/2/Overlap", "1"), "=1");
    EXPECT_EQ(Areas(), "0:0,0-1919,1079 1:1919,0-3838,1079 2:3839,0-5758,1079 ");
    SetSlots({2, kUnused, 1});
    EXPECT_FALSE(document.IsApplied());
    document.SetAllOverlaps(10);
    EXPECT_EQ(Areas(), "0:0,0-1919,1079 1:1910,0-3829,1079 2:3820,0-5739,1079 ");
    document.Undo();
    EXPECT_EQ(Areas(), "0:0,0-1919,1079 1:1919,0-3838,1079 2:3839,0-5758,1079 ");
    Apply();
    EXPECT_EQ(Areas(), "2:0,0-1919,1079 1:1919,0-3838,1079 (0:0,0-0,0) ");
    document.SetDirection(SplitDirection::kVertical);
    Apply();
    EXPECT_EQ(Edit("Split/2/Overlap", "80"), "=80");
    EXPECT_EQ(Areas(), "2:0,0-1919,1079 1:0,1000-1919,2079 (0:0,0-0,0) ");
    EXPECT_EQ(SplitRows(document)[1].rows[3].name, "1/2");
    EXPECT_EQ(SplitRows(document)[0].rows[3].kind, RowKind::kReadOnly);
}

TEST_F(Wall, RefusesReuseAndDifferentResolutions) {
    SetSlots({2, kUnused, 2});
    ExpectRefusal("The screen cannot be reused");
    SetSlots({kUnused, kUnused, 2});
    Apply();
    document.SetDevices({DeviceAt(21, 2), DeviceAt(22, 1, 1920, 1200)});
    ExpectRefusal("Device resolution must be the same");
    document.SetDevices({DeviceAt(21, 2, 0, 0)});
    ExpectRefusal("Device resolution must be the same");
}

TEST_F(Wall, AnOverlapStaysWithItsSeamAndZoomGoesWithItsScreen) {
    Edit("Split/2/Overlap", "100");
    Edit("Zoom/0/Left", "12");
    SetSlots({2, 1, 0});
    Apply();
    EXPECT_EQ(Areas(), "2:0,0-1919,1079 1:1820,0-3739,1079 0:3740,0-5659,1079 ");
    EXPECT_EQ(DataOf(document)["VScreenSize"][2]["leftZoom"].asInt(), 12);
    document.DismissScreen(0);
    EXPECT_EQ(DataOf(document)["VScreenSize"][2]["leftZoom"].asInt(), 0);
    document.PlaceScreen(0, 0);
    EXPECT_EQ(DataOf(document)["VScreenSize"][0]["leftZoom"].asInt(), 12);
}

TEST_F(Wall, OverlapAndZoomHaveTheLimitsOfThePicture) {
    // clang-format off
    ExpectAnswers({{"Split/2/Overlap", "1920", kTooMuch}, {"Split/2/Overlap", "-1", kTooMuch}, {"Split/2/Overlap", "", kNothing},
                   {"Split/2/Overlap", "1.5", kWrong}, {"Split/2/Overlap", "1919", "=1919"}, {"Split/1/Overlap", "5", ""},
                   {"Zoom/1/Right", "959", "=959"}, {"Zoom/1/Right", "960", kTooMuch}, {"Zoom/1/Bottom", "540", kTooMuch}});
    // clang-format on
}

TEST_F(Wall, ADropTakesAlongWhatHasNotBeenApplied) {
    document.SetDirection(SplitDirection::kVertical);
    SetSlots({1, kUnused, 2});
    document.PlaceScreen(2, 0);
    EXPECT_THAT(document.Shown().slots, ElementsAre(2, kUnused, 1));
    EXPECT_EQ(document.Direction(), SplitDirection::kVertical);
    EXPECT_TRUE(document.IsApplied());
    SetSlots({2, 2, 1});
    document.DismissScreen(1);
    EXPECT_THAT(document.Shown().slots, ElementsAre(2, kUnused, kUnused));
}

TEST_F(Wall, CarriesWhatItDoesNotKnowAndTheVersion) {
    const Json::Value root = *ParseJson(document.Write());
    EXPECT_EQ(root["ver"].asInt(), 7);
    EXPECT_EQ(root["other"][0].asDouble(), 1.25);
    EXPECT_EQ(root["configData"]["fixedParam"],
              (*ParseJson(Configuration()))["configData"]["fixedParam"]);
    Fetch(document, "{}");
    EXPECT_TRUE(DataOf(document)["fixedParam"].isArray() && DataOf(document)["varParam"].isArray());
    EXPECT_FALSE(SplitConfiguration::Read("[]") || SplitConfiguration::Read(""));
}

constexpr const char* kKinds = R"([
    {"keyVal":"title","inputType":0,"lableName":"T","remarks":"","valueRange":[],"select":"T"},
    {"keyVal":"int","inputType":1,"lableName":"I","remarks":"r","valueRange":[3],"select":3},
    {"keyVal":"double","inputType":2,"lableName":"D","valueRange":[0.5],"select":0.5},
    {"keyVal":"string","inputType":3,"lableName":"S","valueRange":[],"select":"s"},
    {"keyVal":"ints","inputType":4,"lableName":"IA","valueRange":[-1,2],"select":2},
    {"keyVal":"doubles","inputType":5,"lableName":"DA","valueRange":[0.25,0.12345678],"select":0.25},
    {"keyVal":"strings","inputType":"StringArry","lableName":"SA","valueRange":["a","b"],"select":"a"},
    {"keyVal":"range","inputType":7,"lableName":"IR","valueRange":[10,-5],"select":4},
    {"keyVal":"real","inputType":"DoubleRange","lableName":"DR","valueRange":[0,1],"select":0.1},
    {"keyVal":"im","inputType":9,"lableName":"IM","valueRange":[1,2],"select":[1]},
    {"keyVal":"dm","inputType":10,"lableName":"DM","valueRange":[0.5],"select":[]},
    {"keyVal":"sm","inputType":11,"lableName":"SM","valueRange":["x"],"select":["x"]},
    {"keyVal":"it","inputType":12,"lableName":"IT","valueRange":["1","9"],"select":"5"},
    {"keyVal":"dt","inputType":13,"lableName":"DT","valueRange":["0","9"],"select":"0.1"},
    {"keyVal":"odd","inputType":14,"select":1}, 5])";

/// The wall with an advanced setting of every kind, and one that cannot be read.
struct AdvancedSettings : Wall {
    AdvancedSettings() { Fetch(document, Configuration(kKinds)); }
    [[nodiscard]] Json::Value Entry(Json::ArrayIndex index) const {
        return DataOf(document)["varParam"][index];
    }
};

TEST_F(AdvancedSettings, AreShownByTheirTypesAndGoBackAsTheyCame) {
    std::string shown;
    const SettingsRows advanced = AdvancedRows(document);
    for (const SettingsRow& row : advanced[0].rows) shown += row.name + '=' + row.value + ' ';
    EXPECT_EQ(shown,
              "I=3 D=0.5000 S=s IA=2 DA=0.2500 SA=a IR=4 DR=0.1000 IM[1]=1 IM[2]=0 DM[0.5000]=0 "
              "SM[x]=1 IT=5 DT=0.1000 ");
    EXPECT_EQ(Edit("varParam/range", "-5"), "=-5");
    Json::Value expected = *ParseJson(kKinds);
    expected[7]["select"] = -5;
    expected[7]["valueRange"] = (*ParseJson("[-5,10]"));
    EXPECT_EQ(DataOf(document)["varParam"], expected);
}

TEST_F(AdvancedSettings, RefuseWhatIsEmptyOutOfRangeOrNoNumber) {
    // clang-format off
    ExpectAnswers({{"varParam/int", "", kNothing}, {"varParam/string", "", kNothing},
                   {"varParam/range", "11", kTooMuch}, {"varParam/range", "-6", kTooMuch}, {"varParam/range", "four", kWrong},
                   {"varParam/int", "-1", kWrong}, {"varParam/int", "2147483648", kTooMuch},
                   {"varParam/real", "0.1.2", kWrong}, {"varParam/real", "-0.5", kWrong},
                   {"varParam/it", "10", kTooMuch}, {"varParam/dt", "9.5", kTooMuch},
                   {"varParam/ints", "3", kTooMuch}, {"varParam/ints", "x", kWrong}, {"varParam/ints", "-1", "=-1"},
                   {"varParam/odd", "2", ""}});
    // clang-format on
}

TEST_F(AdvancedSettings, AnEditedDecimalHasSixDigits) {
    EXPECT_EQ(Edit("varParam/real", "0.12345678"), "=0.1235");
    EXPECT_EQ(Entry(8)["select"].asDouble(), 0.123457);
    EXPECT_EQ(Edit("varParam/doubles", "0.1235"), "=0.1235");
    EXPECT_EQ(Entry(5)["select"].asDouble(), 0.12345678);
    EXPECT_EQ(Edit("varParam/dm/0.5000", kRowYes), "=1");
    EXPECT_EQ(Entry(10)["select"], *ParseJson("[0.5]"));
    EXPECT_EQ(Entry(8)["inputType"], "DoubleRange");
}

TEST_F(Wall, IsTakenOverFromTheFetchedArrays) {
    document.SetDirection(SplitDirection::kVertical);
    SetSlots({2, 0, kUnused});
    Apply();
    document.SetOverlap(0, 64);
    document.SetZoom(2, {1, 2, 3, 4});
    const std::string held = document.Write();
    const SplitWall wall = document.Wall();
    SplitDocument another;
    another.SetDevices(ThreeScreens());
    Fetch(another, held);
    EXPECT_FALSE(another.TakeOverWall());
    EXPECT_EQ(another.Wall(), wall);
    EXPECT_EQ(another.Write(), held);
    EXPECT_TRUE(another.IsAsFetched());
    another.SetOverlap(0, 65);
    EXPECT_FALSE(another.IsAsFetched());
    another.PutBackFetched();
    EXPECT_EQ(another.Write(), held);
}

TEST_F(Wall, ThatIsNoChainCannotBeTakenOverButGoesBackWhole) {
    document.SetDirection(SplitDirection::kVertical);
    Apply();
    Json::Value root = *ParseJson(document.Write());
    Json::Value& third = root["configData"]["channelShowArea"][2];
    third["leftTopX"] = third["leftBottomX"] = 1920;
    Fetch(document, WriteJson(root));
    const std::string before = document.Write();
    EXPECT_TRUE(document.TakeOverWall());
    EXPECT_EQ(document.Write(), before);
    document.PutBackFetched();
    EXPECT_EQ(*ParseJson(document.Write()), root);
    EXPECT_TRUE(document.IsAsFetched() && document.Screens().size() == 3);
    EXPECT_THAT(SplitRows(document), IsEmpty());
    EXPECT_TRUE(document.Undo());
    EXPECT_EQ(document.Write(), before);
}

TEST_F(AdvancedSettings, EditedAreAllThatIsOtherThanInAFetchedWallThatIsNoChain) {
    Json::Value root = *ParseJson(Configuration(kKinds));
    for (const int x : {0, 7}) {
        root["configData"]["VScreenSize"].append(*ParseJson(R"({"screenID":0,"enable":1})"));
        root["configData"]["channelShowArea"].append(*ParseJson(R"({"screenID":0})"))["leftTopX"] =
            x;
    }
    Fetch(document, WriteJson(root));
    document.PutBackFetched();
    EXPECT_EQ(Edit("varParam/im/2", kRowYes), "=1");
    root["configData"]["varParam"][9]["select"].append(2);
    EXPECT_EQ(*ParseJson(document.Write()), root);
    EXPECT_TRUE(document.IsSettled() && !document.IsAsFetched());
}

TEST_F(AdvancedSettings, EditedKeepOfferedValuesAndBoundsThatAreNotUnderstood) {
    constexpr const char* kOdd = R"([
        {"keyVal":"range","inputType":7,"lableName":"A","valueRange":[0,5,9],"select":4},
        {"keyVal":"many","inputType":9,"lableName":"B","valueRange":[1,"x"],"select":[]}])";
    Fetch(document, Configuration(kOdd));
    EXPECT_EQ(Edit("varParam/range", "5"), "=5");
    EXPECT_EQ(Edit("varParam/many/1", kRowYes), "=1");
    Json::Value expected = *ParseJson(kOdd);
    expected[0]["select"] = 5;
    expected[1]["select"].append(1);
    EXPECT_EQ(DataOf(document)["varParam"], expected);
}

TEST_F(Wall, WithZoomThatCannotBeSetIsNotTakenOver) {
    Json::Value root = *ParseJson(document.Write());
    root["configData"]["VScreenSize"][0]["leftZoom"] = 960;
    Fetch(document, WriteJson(root));
    EXPECT_TRUE(document.TakeOverWall());
    EXPECT_EQ(document.Wall().zooms[0].left, 0);
}

TEST_F(AdvancedSettings, ARandomWalkIsUndoneToItsStartAndDoneAgain) {
    std::mt19937 random(14);
    const auto below = [&](int count) {
        return static_cast<int>(std::uniform_int_distribution(0, count - 1)(random));
    };
    const std::string before = document.Write();
    std::vector<std::string> after = {before};
    for (int i = 0; i < 300; ++i) {
        const auto screen = static_cast<std::size_t>(below(3));
        switch (below(8)) {
            case 0: document.SetSlot(screen, static_cast<std::size_t>(below(3))); break;
            case 1: static_cast<void>(document.ApplyOrder()); break;
            case 2: document.PlaceScreen(screen, static_cast<std::size_t>(below(4))); break;
            case 3: document.DismissScreen(screen); break;
            case 4: document.SetAllOverlaps(below(3000)); break;
            case 5: Edit(fmt::format("Zoom/{}/Top", screen), std::to_string(below(500))); break;
            case 6: Edit("varParam/int", std::to_string(below(100))); break;
            default: document.SetDirection(static_cast<SplitDirection>(below(2))); break;
        }
        after.push_back(document.Write());
    }
    while (document.Undo()) {
    }
    EXPECT_EQ(document.Write(), before);
    EXPECT_TRUE(document.IsApplied());
    while (document.Redo()) {
    }
    EXPECT_EQ(document.Write(), after.back());
}

TEST_F(AdvancedSettings, WallAndValuesAreKeptInAFileOfTheSameScreens) {
    const TemporaryFolder folder;
    RecordingPrompts prompts;
    SetSlots({2, kUnused, 0});
    Apply();
    Edit("Split/2/Overlap", "33");
    Edit("varParam/real", "0.123457");
    Edit("varParam/string", "Side wall");
    const std::string held = document.Write();
    SaveWallFile(document, folder / "wall.JSON", prompts);
    SplitDocument moved;  // the same players at other addresses, found in another order
    moved.SetDevices({DeviceAt(22, 1), DeviceAt(21, 2)});
    Fetch(moved, Configuration(kKinds));
    EXPECT_TRUE(OpenWallFile(moved, folder / "wall.JSON", prompts));
    EXPECT_EQ(AreasOf(DataOf(moved)), "0:0,0-1919,1079 1:1887,0-3806,1079 (2:0,0-0,0) ");
    EXPECT_EQ(DataOf(moved)["varParam"], DataOf(document)["varParam"]);
    const std::string text = folder.Read("wall.JSON");
    EXPECT_THAT(text, testing::HasSubstr("\"format\" : \"sontaro-screen-split\""));
    moved.SetDevices({DeviceAt(23, 1), DeviceAt(21, 2)});
    EXPECT_FALSE(OpenWallFile(moved, folder / "wall.JSON", prompts));
    EXPECT_FALSE(OpenWallFile(document, folder.Write("other.JSON", "{}"), prompts));
    EXPECT_FALSE(OpenWallFile(
        document, folder.Write("new.JSON", R"({"format":"sontaro-screen-split","version":2})"),
        prompts));
    EXPECT_EQ(document.Write(), held);
    EXPECT_EQ(prompts.boxes.size(), 4U);
    EXPECT_EQ(prompts.boxes.back(),
              Warning("\"new.JSON\" cannot be read, nothing has been changed: "
                      "it comes from a later version."));
}

TEST_F(AdvancedSettings, AHostileFileIsRefusedOrKeepsTheLimits) {
    const TemporaryFolder folder;
    RecordingPrompts prompts;
    SaveWallFile(document, folder / "wall.JSON", prompts);
    const std::string held = document.Write();
    const auto opens = [&](const std::function<void(Json::Value&)>& change) {
        Json::Value root = *ParseJson(folder.Read("wall.JSON"));
        change(root);
        return OpenWallFile(document, folder.Write("other.JSON", WriteJson(root)), prompts);
    };
    const std::function<void(Json::Value&)> changes[] = {
        [](Json::Value& root) { root["wall"]["slots"][1] = 0; },
        [](Json::Value& root) { root["wall"]["slots"][1] = 3; },
        [](Json::Value& root) { root["wall"]["slots"][1] = 1e308; },
        [](Json::Value& root) { root["wall"]["slots"].append(0); },
        [](Json::Value& root) { root["wall"]["screens"][1] = root["wall"]["screens"][0]; },
        [](Json::Value& root) { root["wall"]["screens"][1][2] = 1e308; },
        [](Json::Value& root) { root["wall"]["overlaps"][0][0] = Json::Int64{1} << 40; },
        [](Json::Value& root) { root["wall"]["overlaps"][0] = "1"; },
        [](Json::Value& root) { root["wall"] = Json::Value(Json::arrayValue); }};
    for (const auto& change : changes) EXPECT_FALSE(opens(change));
    EXPECT_FALSE(
        OpenWallFile(document, folder.Write("deep.JSON", std::string(9999, '[')), prompts));
    EXPECT_EQ(document.Write(), held);
    EXPECT_TRUE(opens([](Json::Value& root) {
        root["wall"]["screens"][1][2] = root["wall"]["overlaps"][0][0] = INT32_MAX;
        for (const Json::ArrayIndex i : {1U, 4U, 5U, 6U, 7U, 8U, 12U})
            root["advanced"][i]["select"] = 1e308;
        root["advanced"][9]["select"] = (*ParseJson("[7]"));
        root["advanced"][13]["select"] = "100";
    }));
    EXPECT_EQ(DataOf(document)["varParam"], (*ParseJson(held))["configData"]["varParam"]);
    EXPECT_EQ(DataOf(document)["channelShowArea"][1]["leftTopX"].asInt(), 1);
    document.Undo();
    EXPECT_EQ(document.Write(), held);
}

TEST_F(AdvancedSettings, AHugeListOfThemGoesBackUnshown) {
    Json::Value kinds = *ParseJson(kKinds);
    for (int i = 0; i < 100000; ++i) kinds[9]["valueRange"].append(i);
    Fetch(document, Configuration(WriteJson(kinds)));
    const SettingsRows rows = AdvancedRows(document);
    EXPECT_EQ(rows[0].rows.size(), 13U);
    EXPECT_EQ(rows[0].rows.back().value, "1 more, not shown, unchanged");
    EXPECT_EQ(Edit("varParam/im/7", kRowYes), "");
    EXPECT_EQ(DataOf(document)["varParam"], kinds);
}

TEST_F(AdvancedSettings, ThousandsOfThemAreTakenInAMoment) {
    CustomEntries entries[2];
    for (const int backwards : {0, 1}) {
        Json::Value json(Json::arrayValue);
        for (int i = 0; i < 4000; ++i) {
            Json::Value& entry = json.append(Entry(1));
            entry["keyVal"] = std::to_string(backwards == 1 ? 3999 - i : i);
            entry["select"] = backwards;
        }
        entries[backwards].Read(json);
    }
    const auto begin = std::chrono::steady_clock::now();
    entries[0].TakeValues(entries[1]);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
    EXPECT_EQ(entries[0].ToJson()[3999]["select"], 1);
}

TEST_F(Wall, TheLastOneOfASetOfPlayersIsRememberedWhateverTheirAddresses) {
    const TemporaryFolder folder;
    JsonFile preferences(folder / "preferences.json");
    document.DismissScreen(0);
    RememberWall(*WallToJson(document), preferences);
    document.SetOverlap(0, 40);
    RememberWall(*WallToJson(document), preferences);
    EXPECT_EQ(preferences.Root()["screenSplitWalls"].size(), 1U);
    std::vector<SplitDevice> devices = {DeviceAt(22, 1), DeviceAt(21, 2)};
    devices[0].record.ip = "10.0.0.5";
    SplitDocument moved;
    moved.SetDevices(devices);
    const auto wall = RememberedWall(moved, JsonFile(folder / "preferences.json"));
    ASSERT_TRUE(wall);
    EXPECT_THAT(wall->arrangement.slots, ElementsAre(kUnused, 2, 0));
    EXPECT_EQ(wall->seams[0].x, 40);
    devices[0].record.id = devices[1].record.id;
    moved.SetDevices(devices);
    EXPECT_FALSE(RememberedWall(moved, preferences));
    moved.SetDevices({DeviceAt(21, 2)});
    EXPECT_TRUE(moved.UseWall(*wall)) << "a wall of three for two screens";
}

}  // namespace
}  // namespace sontaro::test
