#include "controlprotocol/control_protocol_document.h"

#include <gmock/gmock.h>

#include "base/file.h"
#include "base/hex_command.h"
#include "base/json.h"
#include "controlprotocol/control_protocol_rows.h"
#include "support/literals.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using Outcome = EditAnswer::Outcome;

TEST(HexCommand, IsNormalisedAndTurnedIntoBytesAndBack) {
    EXPECT_EQ(NormalizedHexCommand(" a5 0b\t"), "A50B");
    EXPECT_EQ(NormalizedHexCommand("A50b", LetterCase::kLower), "a50b");
    for (const char* wrong : {"a5 0", "0G", "ABC", "0x12", "零零", "-1"})
        EXPECT_FALSE(NormalizedHexCommand(wrong)) << wrong;
    EXPECT_TRUE(IsHexCommand("") && IsHexCommand("0a0B") && !IsHexCommand("a5 0"));
    const Bytes bytes = {0xA5, 0x00, 0x0F, 0xFF};
    EXPECT_EQ(HexCommandOf(bytes), "A5000FFF");
    EXPECT_EQ(BytesOfHexCommand(HexCommandOf(bytes, LetterCase::kLower)), bytes);
    EXPECT_FALSE(BytesOfHexCommand("A50"));
}

struct ControlProtocol : testing::Test {
    bool Read(const std::string& text) { return ReadControlProtocol(text, model).ok(); }
    /// How many sections a text is found to have; none when it is refused.
    int Sections(const std::string& text) {
        const Result<int> sections = ReadControlProtocol(text, model);
        return sections ? *sections : 0;
    }
    Json::Value Written() const { return *ParseJson(ControlProtocolText(model)); }
    SettingsRow Row(std::size_t grid, std::size_t group, std::size_t row) {
        return ControlProtocolRows(model)[grid].at(group).rows.at(row);
    }
    /// Enters a text in the row that a grid shows so named, in its first group that has it.
    std::string Enter(std::size_t grid, const std::string& name, const std::string& text) {
        return EnterIn(ControlProtocolRows(model)[grid], name, text).value_or("no such row");
    }

    ControlProtocolModel model;

   private:
    std::optional<std::string> EnterIn(const SettingsRows& groups, const std::string& name,
                                       const std::string& text) {
        for (const SettingsGroup& group : groups) {
            const auto row = std::ranges::find(group.rows, name, &SettingsRow::name);
            if (row == group.rows.end()) {
                if (auto inner = EnterIn(group.groups, name, text)) return inner;
                continue;
            }
            const EditAnswer answer = EditControlProtocol(model, {row->key, text});
            return (answer.outcome == Outcome::kAccepted ? "=" : "!") + answer.text;
        }
        return std::nullopt;
    }
};

TEST_F(ControlProtocol, BeginsWithTheDefaultsAndWritesEveryArrayInFull) {
    const Json::Value json = Written();
    EXPECT_EQ(Compact(AsBytes(WriteJson(json["KtvDev"]))),
              R"({"KTVName":0,"KTVServerIP":"192.168.84.101","KTVServerPort":8192})");
    const Json::Value& serial = json["Serial"];
    std::string numbers;
    for (const std::string& key : serial.getMemberNames())
        if (serial[key].isInt() && serial[key].asInt() != 0)
            numbers += key + "=" + serial[key].asString() + " ";
    EXPECT_EQ(numbers,
              "BaudRate=1200 DMX512Addr1=1 DMX512Addr2=1 DataBit=8 MovTypeSwitchEnable=1 "
              "PlayMode=1 PowerOnProjectorEnable=1 StopBit=1 ");
    EXPECT_EQ(serial.size(), 85U);
    EXPECT_EQ(json["VideoType"].size() + json["AudioType"].size() + json["LayOut"].size(), 192U);
    EXPECT_EQ(json["Projector"].size(), 30U);
    EXPECT_EQ(json["Projector"][29]["Cmd"].size(), 6U);
    EXPECT_EQ(json["Projector"][29]["Cmd"][5]["OFFCmd"], "");
}

TEST_F(ControlProtocol, TakesOfAPartialDocumentWhatItHoldsAndFits) {
    ASSERT_TRUE(Read(R"({"KtvDev":{"KTVServerPort":9000}})"));
    ControlProtocolModel expected;
    expected.songSystem.serverPort = 9000;
    EXPECT_EQ(model, expected);
    ASSERT_TRUE(Read(R"({"KtvDev":{"KTVServerIP":5,"KTVName":"1","KTVServerPort":1.5},
        "Serial":[],"VideoType":{"0":{}},"LayOut":[null,7,{"LayOutName":null}],
        "Projector":[{"Cmd":{}},{"Cmd":[[],{"ONCmd":1}]}],"AudioType":[[]]})"));
    EXPECT_EQ(model, expected);
    const ControlProtocolModel before = model;
    for (const char* text : {"", "{", "[]", "7", R"({"KtvDev":{"KTVServerPort":1})"})
        EXPECT_FALSE(Read(text)) << text;
    EXPECT_EQ(model, before);
}

TEST_F(ControlProtocol, FillsTheSlotsThatAnArrayHasAndNoMore) {
    model.videoTypes[3].name = "stays";
    model.projectors[0].commands[1].off = "0B";
    std::string types;
    for (int i = 0; i < 70; ++i) types += R"({"TypeName":"类)" + std::to_string(i) + "\"},";
    types.pop_back();
    ASSERT_TRUE(Read(R"({"VideoType":[{"TypeName":"a"},{},{"SendCmd":"a5 x"}],"AudioType":[)" +
                     types + R"(],"Projector":[{"Port":7,"Cmd":[{"ONCmd":"0A"}]}]})"));
    EXPECT_EQ(model.videoTypes[0].name + model.videoTypes[2].sendCommand, "aa5 x");
    EXPECT_EQ(model.videoTypes[3].name, "stays");
    EXPECT_EQ(model.audioTypes[63].name, "类63");
    EXPECT_EQ(model.projectors[0].port, 7);
    EXPECT_EQ(model.projectors[0].commands[0].on + model.projectors[0].commands[1].off, "0A0B");
    ControlProtocolModel again;
    ASSERT_TRUE(ReadControlProtocol(ControlProtocolText(model), again));
    EXPECT_EQ(again, model);
}

TEST_F(ControlProtocol, WritesBackWhatThePlayerAloneKnows) {
    ASSERT_TRUE(Read(R"({"new":{"a":[1]},"Serial":{"Echo":true},"VideoType":[{},{"Icon":"x"}],
        "Projector":[{"Cmd":[{"Delay":5}]}]})"));
    const ControlProtocolModel players = model;
    ASSERT_TRUE(ReadControlProtocol(
        R"({"new":2,"more":3,"Serial":{"Echo":1,"Play":"A5"},"VideoType":[{"Icon":"y"}]})", model,
        Source::kFile));
    const Json::Value json = Written();
    EXPECT_EQ(Compact(AsBytes(WriteJson(json["new"]))), R"({"a":[1]})");
    EXPECT_FALSE(json.isMember("more") || json["VideoType"][0].isMember("Icon"));
    EXPECT_EQ(json["Serial"]["Echo"], true);
    EXPECT_EQ(json["Serial"]["Play"], "A5");
    EXPECT_EQ(json["VideoType"][1]["Icon"], "x");
    EXPECT_EQ(json["Projector"][0]["Cmd"][0]["Delay"], 5);
    model.serial.play.clear();
    EXPECT_EQ(model, players);
}

TEST_F(ControlProtocol, CallsTheUsbDiskAThousandInJsonAlone) {
    for (const auto& [read, shown, written] :
         {std::tuple(1000, "U Disk", 1000), std::tuple(2, "U Disk", 1000),
          std::tuple(1, "Player2", 1), std::tuple(0, "Player1", 0)}) {
        ASSERT_TRUE(Read(R"({"Serial":{"AudioOutChl":)" + std::to_string(read) + "}}"));
        EXPECT_EQ(Written()["Serial"]["AudioOutChl"], written);
        EXPECT_EQ(Row(1, 0, 5).value, shown);
    }
}

TEST_F(ControlProtocol, ClampsIndexesWhenItIsShownAndKeepsUnlistedNumbers) {
    ASSERT_TRUE(Read(R"({"Serial":{"PlayMode":9,"Language":-4,"AudioOutChl":999,"BaudRate":14400},
        "Projector":[{},{"ProtocolType":2}]})"));
    EXPECT_EQ(Row(1, 0, 3).value, "Single Play");
    EXPECT_EQ(Row(1, 0, 0).value, "14400");
    EXPECT_EQ(Row(1, 0, 0).choices.back(), "14400");
    for (const char* rate : {"1200", "14400"})
        EXPECT_EQ(Enter(1, "BaudRate", rate), std::string("=") + rate);
    const Json::Value json = Written();
    EXPECT_EQ(json["Serial"]["PlayMode"].asInt() * 10 + json["Serial"]["Language"].asInt(), 40);
    EXPECT_EQ(json["Serial"]["AudioOutChl"], 1000);
    EXPECT_EQ(json["Projector"][1]["ProtocolType"], 1);
    EXPECT_EQ(json["Serial"]["BaudRate"], 14400);
}

TEST_F(ControlProtocol, MarksAndKeepsWhatAPlayerHoldsBeyondItsRows) {
    ASSERT_TRUE(Read(R"({"KtvDev":{"KTVServerPort":70000},"Serial":{"DMX512Addr1":0,
        "Physical1Width":-3,"Play":"A5 0","ElectroacousticMode":99999999999,
        "PlayMode":-99999999999,"DataBit":1e3}})"));
    const auto shown = [this](const std::string& key) {
        const SettingsRow row = *ControlProtocolRow(model, key);
        return row.value + (row.caution.empty() ? "" : "!");
    };
    EXPECT_EQ(shown("KtvDev/KTVServerPort") + shown("Serial/DMX512Addr1") +
                  shown("Serial/Physical1Width") + shown("Serial/Play") + shown("Serial/Pause"),
              "70000!0!-3!A5 0!");
    EXPECT_EQ(shown("Serial/ElectroacousticMode") + shown("Serial/DataBit"), "99999999999!1000");
    static_cast<void>(ControlProtocolRows(model));
    const Json::Value json = Written()["Serial"];
    EXPECT_EQ(json["ElectroacousticMode"].asInt64(), 99999999999);
    EXPECT_EQ(json["PlayMode"].asInt() + json["DMX512Addr1"].asInt(), 0);
    EXPECT_EQ(Enter(1, "电音模式", "3"), "=3");
    EXPECT_EQ(Written()["Serial"]["ElectroacousticMode"], 3);
}

TEST_F(ControlProtocol, TakesOverWhatFitsARowAndRefusesTheRest) {
    // clang-format off
    const std::tuple<std::size_t, const char*, const char*, const char*> cases[] = {
        {0, "ServerIP", "10.0.0.7", "=10.0.0.7"}, {0, "ServerIP", "", "="}, {0, "ServerIP", "10.0.0", "!input error!"},
        {0, "Server Port", "65536", "!input error!"}, {0, "Server Port", "0065535", "=65535"},
        {0, "Server Port", " 7\t", "=7"}, {0, "ServerIP", " 10.0.0.8 ", "=10.0.0.8"}, {1, "BaudRate", "x", "!input error!"},
        {0, "KTV Name", "视翰", "=视翰"}, {0, "KTV Name", "other", "!input error!"}, {1, "BaudRate", "9600", "=9600"},
        {1, "Screen2PhysicalHeight(cm)", "100001", "!input error!"}, {1, "Screen2PhysicalHeight(cm)", "100000", "=100000"},
        {1, "第二幕DMX512地址", "0", "!input error!"}, {1, "第二幕DMX512地址", "513", "!input error!"},
        {1, "第二幕DMX512地址", "512", "=512"}, {1, "电音模式", "99999999999", "!input error!"},
        {1, "Volume Up", " a5 0b ", "=A50B"}, {1, "Volume Up", "a5 0", "!input error!"}, {1, "Volume Up", "", "="},
        {2, "Type Name", " any 名 ", "= any 名 "}, {4, "ProtocolType", "TCP", "=TCP"},
        {4, "Projector OFF Cmd6", "ff", "=FF"}, {4, "IP Addr", "player", "!input error!"}};
    // clang-format on
    for (const auto& [grid, name, text, answer] : cases)
        EXPECT_EQ(Enter(grid, name, text), answer) << name;
    EXPECT_EQ(model.songSystem.vendor, 2);
    EXPECT_EQ(model.serial.height2, 100000);
    EXPECT_EQ(model.projectors[0].commands[5].off, "FF");
    const ControlProtocolModel before = model;
    for (const char* key : {"", "Serial", "Serial/Parity", "VideoType/64/TypeName",
                            "VideoType/-1/TypeName", "VideoType/0", "KtvDev/0/KTVServerPort",
                            "VideoType/01/TypeName", "Projector/0/Cmd/6/ONCmd"})
        EXPECT_EQ(EditControlProtocol(model, {key, "1"}).outcome, Outcome::kIgnored) << key;
    EXPECT_EQ(model, before);
}

TEST_F(ControlProtocol, ShowsItsRowsInOrderAndInTheLanguageThatTheyHave) {
    const auto grids = ControlProtocolRows(model);
    std::string headings;
    for (const std::size_t grid : {1U, 2U})
        for (const SettingsGroup& group : grids[grid]) headings += group.name + '|';
    EXPECT_EQ(headings,
              "Serial Configuration|Serial Control|音频控制|电音控制|Video Type|音频类别配置|");
    EXPECT_EQ(grids[2][0].groups[63].name + grids[2][1].groups[9].name, "Video Type64音频类别10");
    EXPECT_EQ(grids[3].size() * 100 + grids[4].size(), 6430U);
    EXPECT_EQ(grids[4][29].rows[14].name, "Projector ON Cmd6");
    EXPECT_EQ(grids[4][29].rows[14].key, "Projector/29/Cmd/5/ONCmd");
    EXPECT_EQ(grids[1][1].rows[18].name + grids[1][1].rows[19].name, "Power OffAuto");
    EXPECT_EQ(grids[1][1].rows[16].help + grids[1][1].rows[0].help, "Play StopVideo Play");
    EXPECT_EQ(grids[1][0].rows[9].help, "PhysicalHeight(0~100000)");
    const InLanguage chinese(Language::kChinese);
    const auto translated = ControlProtocolRows(model);
    EXPECT_EQ(translated[1][1].rows[0].name + translated[1][1].rows[0].help, "视频播放播放");
    EXPECT_EQ(translated[4][0].name, "投影控制1");
}

TEST_F(ControlProtocol, FindsTheRowThatALearnedCommandGoesTo) {
    const SettingsRows grid = ControlProtocolRows(model)[kCategoryGrid];
    EXPECT_EQ(VideoCategoryIn(grid[0].groups[6]), 6);
    EXPECT_FALSE(VideoCategoryIn(grid[0]) || VideoCategoryIn(grid[1].groups[6]));
    EXPECT_EQ(EditControlProtocol(model, SwitchCommandEdit(6, "A5")).text, "A5");
    EXPECT_EQ(model.videoTypes[6].sendCommand, "A5");
}

TEST_F(ControlProtocol, IsKnownInAFileByItsSections) {
    for (const char* text : {"", "[]", "{}", R"({"data":[]})"})
        EXPECT_FALSE(Sections(text)) << text;
    EXPECT_EQ(Sections(R"({"LayOut":0,"x":1})"), 1);
    const TemporaryFolder folder;
    const auto path = ControlProtocolPath(folder.Path());
    ASSERT_TRUE(WriteControlProtocol(model, path));
    EXPECT_EQ(path.filename(), "ControlProtocol.Json");
    EXPECT_EQ(*ReadFile(path), ControlProtocolText(model));
    EXPECT_FALSE(WriteControlProtocol(model, folder.Path() / "ControlProtocol.Json" / "x"));
}

}  // namespace
}  // namespace sontaro::test
