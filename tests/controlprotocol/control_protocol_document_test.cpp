#include "controlprotocol/control_protocol_document.h"

#include <gmock/gmock.h>

#include "base/json.h"
#include "controlprotocol/control_protocol_rows.h"

namespace sontaro::test {
namespace {

struct ControlProtocol : testing::Test {
    bool Read(const std::string& text, Source source = Source::kPlayer) {
        return ReadControlProtocol(text, model, source).ok();
    }
    Json::Value Written() const { return *ParseJson(ControlProtocolText(model)); }
    /// The text of a row, and "!" when it is marked.
    std::string Shown(const std::string& key) const {
        const SettingsRow row = *ControlProtocolRow(model, key);
        return row.value + (row.caution.empty() ? "" : "!");
    }
    std::string Enter(const std::string& key, const std::string& text) {
        const EditAnswer answer = EditControlProtocol(model, {key, text});
        constexpr const char* kOutcomes[] = {"=", "!", "ignored"};
        return kOutcomes[static_cast<int>(answer.outcome)] + answer.text;
    }

    ControlProtocolModel model;
};

TEST_F(ControlProtocol, WritesEveryArrayInFull) {
    const Json::Value json = Written();
    EXPECT_EQ(json["Serial"].size(), 85U);
    EXPECT_EQ(json["VideoType"].size() + json["AudioType"].size() + json["LayOut"].size(), 192U);
    EXPECT_EQ(json["Projector"][29]["Cmd"][5]["OFFCmd"], "");
}

TEST_F(ControlProtocol, TakesOfADocumentWhatItHoldsAndFitsSlotBySlot) {
    model.videoTypes[3].name = "stays";
    ControlProtocolModel expected = model;
    expected.songSystem.serverPort = 9000;
    expected.videoTypes[0].name = "a";
    expected.videoTypes[2].sendCommand = "a5 x";
    expected.projectors[0].commands[1].on = "0A";
    for (const char* text :
         {R"({"KtvDev":{"KTVServerPort":9000},"VideoType":[{"TypeName":"a"},{},{"SendCmd":"a5 x"}],
             "Projector":[{"Cmd":[{},{"ONCmd":"0A"}]}]})",
          R"({"KtvDev":{"KTVServerIP":5,"KTVName":"1","KTVServerPort":1.5},"Serial":[],
             "VideoType":{"0":{}},"LayOut":[null,7,{"LayOutName":null}],"AudioType":[[]],
             "Projector":[{"Cmd":{}},{"Cmd":[[],{"ONCmd":1}]}]})"}) {
        EXPECT_TRUE(Read(text));
        EXPECT_EQ(model, expected) << text;
    }
    for (const char* bad : {"", "{", "[]", "7", R"({"KtvDev":{"KTVServerPort":1})"})
        EXPECT_FALSE(Read(bad)) << bad;
    EXPECT_EQ(model, expected);
    std::string types = "{}";
    for (int i = 1; i < 70; ++i) types += R"(,{"TypeName":"类)" + std::to_string(i) + "\"}";
    ASSERT_TRUE(Read(R"({"AudioType":[)" + types + "]}"));
    EXPECT_EQ(model.audioTypes[63].name, "类63");
    ControlProtocolModel again;
    ASSERT_TRUE(ReadControlProtocol(ControlProtocolText(model), again));
    EXPECT_EQ(again, model);
}

TEST_F(ControlProtocol, WritesBackWhatThePlayerAloneKnows) {
    ASSERT_TRUE(Read(R"({"new":{"a":[1]},"Serial":{"Echo":true},"VideoType":[{},{"Icon":"x"}],
        "Projector":[{"Cmd":[{"Delay":5}]}]})"));
    Json::Value expected = Written();
    EXPECT_EQ(expected["new"]["a"][0], 1);
    EXPECT_EQ(expected["Serial"]["Echo"], true);
    EXPECT_EQ(expected["VideoType"][1]["Icon"], "x");
    EXPECT_EQ(expected["Projector"][0]["Cmd"][0]["Delay"], 5);
    ASSERT_TRUE(Read(R"({"new":2,"more":3,"Serial":{"Echo":1,"Play":"A5"},
        "VideoType":[{"Icon":"y"}]})",
                     Source::kFile));
    expected["Serial"]["Play"] = "A5";
    EXPECT_EQ(Written(), expected);
}

TEST_F(ControlProtocol, CallsTheUsbDiskAThousandInJsonAlone) {
    for (const auto& [read, shown, written] :
         {std::tuple(1000, "U Disk", 1000), {2, "U Disk", 1000}, {1, "Player2", 1}}) {
        ASSERT_TRUE(Read(R"({"Serial":{"AudioOutChl":)" + std::to_string(read) + "}}"));
        EXPECT_EQ(Shown("Serial/AudioOutChl"), shown);
        EXPECT_EQ(Written()["Serial"]["AudioOutChl"], written);
    }
}

TEST_F(ControlProtocol, MarksAndKeepsWhatAPlayerHoldsBeyondItsRowsButClampsIndexes) {
    ASSERT_TRUE(Read(R"({"KtvDev":{"KTVServerPort":70000},"Serial":{"DMX512Addr1":0,
        "Physical1Width":-3,"Play":"A5 0","ElectroacousticMode":99999999999,"DataBit":1e3,
        "PlayMode":9,"Language":-99999999999,"AspectRatio":-4,"AudioOutChl":999,"BaudRate":14400},
        "Projector":[{},{"ProtocolType":2}]})"));
    static_cast<void>(ControlProtocolRows(model));
    // clang-format off
    const std::pair<const char*, const char*> rows[] = {
        {"KtvDev/KTVServerPort", "70000!"}, {"Serial/DMX512Addr1", "0!"}, {"Serial/Physical1Width", "-3!"},
        {"Serial/Play", "A5 0!"}, {"Serial/Pause", ""}, {"Serial/ElectroacousticMode", "99999999999!"},
        {"Serial/DataBit", "1000"}, {"Serial/PlayMode", "Single Play"}, {"Serial/BaudRate", "14400"}};
    const std::pair<const char*, std::int64_t> numbers[] = {
        {"ElectroacousticMode", 99999999999}, {"PlayMode", 4}, {"Language", 0}, {"AspectRatio", 0},
        {"AudioOutChl", 1000}, {"BaudRate", 14400}};
    // clang-format on
    for (const auto& [key, shown] : rows) EXPECT_EQ(Shown(key), shown) << key;
    const Json::Value json = Written();
    for (const auto& [key, number] : numbers) EXPECT_EQ(json["Serial"][key].asInt64(), number);
    EXPECT_EQ(json["Projector"][1]["ProtocolType"], 1);
    EXPECT_EQ(ControlProtocolRow(model, "Serial/BaudRate")->choices.back(), "14400");
    EXPECT_EQ(Enter("Serial/ElectroacousticMode", "3"), "=3");
    EXPECT_EQ(Written()["Serial"]["ElectroacousticMode"], 3);
}

TEST_F(ControlProtocol, TakesOverWhatFitsARowAndRefusesTheRest) {
    const ControlProtocolModel before = model;
    // clang-format off
    const std::tuple<const char*, std::vector<const char*>, std::vector<std::pair<const char*, const char*>>> rows[] = {
        {"KtvDev/KTVServerIP", {"10.0.0"}, {{"10.0.0.7", "10.0.0.7"}, {" 10.0.0.8 ", "10.0.0.8"}, {"", ""}}},
        {"KtvDev/KTVServerPort", {"65536"}, {{"0065535", "65535"}, {" 7\t", "7"}}},
        {"KtvDev/KTVName", {"other"}, {{"视翰", "视翰"}}},
        {"Serial/BaudRate", {"x"}, {{"9600", "9600"}, {"14400", "14400"}}},
        {"Serial/Physical2Height", {"100001"}, {{"100000", "100000"}}},
        {"Serial/DMX512Addr2", {"0", "513"}, {{"512", "512"}}},
        {"Serial/ElectroacousticMode", {"99999999999"}, {{"3", "3"}}},
        {"Serial/VolumeAdd", {"a5 0"}, {{" a5 0b ", "A50B"}, {"", ""}}},
        {"VideoType/63/TypeName", {}, {{" any 名 ", " any 名 "}}},
        {"Projector/0/ProtocolType", {"udp"}, {{"TCP", "TCP"}}},
        {"Projector/0/IP", {"player"}, {}},
        {"Projector/29/Cmd/5/OFFCmd", {"f"}, {{"ff", "FF"}}}};
    // clang-format on
    for (const auto& [key, refused, taken] : rows) {
        for (const char* text : refused) EXPECT_EQ(Enter(key, text), "!input error!") << key;
        EXPECT_EQ(model, before) << key;
        for (const auto& [text, value] : taken) {
            EXPECT_EQ(Enter(key, text), std::string("=") + value) << key;
            EXPECT_EQ(Shown(key), value) << key;
        }
        model = before;
    }
    for (const char* key : {"", "Serial", "Serial/Parity", "VideoType/64/TypeName",
                            "VideoType/-1/TypeName", "VideoType/0", "KtvDev/0/KTVServerPort",
                            "VideoType/01/TypeName", "Projector/0/Cmd/6/ONCmd"})
        EXPECT_EQ(Enter(key, "1"), "ignored") << key;
    EXPECT_EQ(model, before);
}

TEST_F(ControlProtocol, IsKnownInAFileByItsSections) {
    for (const char* none : {"{}", R"({"data":[]})"})
        EXPECT_EQ(*ReadControlProtocol(none, model), 0) << none;
    EXPECT_EQ(*ReadControlProtocol(R"({"LayOut":0,"x":1})", model), 1);
}

}  // namespace
}  // namespace sontaro::test
