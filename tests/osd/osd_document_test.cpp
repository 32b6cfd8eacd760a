#include "osd/osd_document.h"

#include <gmock/gmock.h>

#include "base/json.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

constexpr const char* kReply = R"({"data":[{"osdEnable":true,"bgColor":16711935,"textColor":255,
    "bgCorner":3,"showTime":20000,"speed":7,"transparent":40,"left":0.1,"top":0,"width":0.3,
    "height":1e-7,"texts":["欢迎","b"],"flash":{"x":[1]}},{"speed":9}],"code":0})";

struct Osd : testing::Test {
    Osd() { EXPECT_TRUE(osd.TakeReply(kReply).ok()); }

    SettingsRow Row(const std::string& name) const {
        const std::vector<SettingsRow> rows = osd.Rows().front().rows;
        return *std::ranges::find(rows, name, &SettingsRow::name);
    }
    std::string Enter(const std::string& name, const std::string& text) {
        const EditAnswer answer = osd.Edit({Row(name).key, text});
        constexpr const char* kOutcomes[] = {"=", "!", "ignored"};
        return kOutcomes[static_cast<int>(answer.outcome)] + answer.text;
    }
    Json::Value Element() const { return (*ParseJson(osd.Write()))["data"][0]; }
    std::string Json(const char* key) const { return Compact(AsBytes(WriteJson(Element()[key]))); }
    void TakeElement(const std::string& element) {
        EXPECT_TRUE(osd.TakeReply(R"({"data":[)" + element + "]}").ok()) << element;
    }

    OsdSettings osd;
};

TEST_F(Osd, UneditedIsWrittenBackAsItWasReadInOneElement) {
    const Json::Value before = *ParseJson(kReply);
    Json::Value after = *ParseJson(osd.Write());
    EXPECT_EQ(after["data"].size(), 1U);
    EXPECT_EQ(after["code"], 0);
    EXPECT_EQ(std::exchange(after["data"][0]["top"], 0).asDouble(), 0);
    EXPECT_EQ(after["data"][0], before["data"][0]);
}

TEST_F(Osd, WhatIsMissingOrOfAnotherTypeStays) {
    Json::Value expected = Element();
    TakeElement(R"({"osdEnable":1,"bgColor":-1,"textColor":"0","bgCorner":4294967296,"showTime":1.5,
        "transparent":true,"left":true,"top":"0","width":null,"texts":"","blink":2})");
    expected["bgColor"] = -1;
    expected["bgCorner"] = Json::Int64{4294967296};
    expected["blink"] = 2;
    EXPECT_EQ(Element(), expected);
    EXPECT_EQ(Row("BgColor").value, "");
    TakeElement(R"({"texts":[null,["x"],7,"d"]})");
    EXPECT_EQ(Json("texts"), R"(["\u6b22\u8fce","b","","d"])");
}

TEST_F(Osd, TextsOfNoUseChangeNothing) {
    const std::string before = osd.Write();
    for (const char* bad :
         {"{", "7", "null", "[]", R"({"data":{}})", R"({"data":[[]]})", R"({"data":[null,{}]})"})
        EXPECT_FALSE(osd.TakeReply(bad) || osd.TakeFile(bad)) << bad;
    for (const char* none : {"", "{}", R"({"data":[]})"}) {
        EXPECT_TRUE(osd.TakeReply(none).ok()) << none;
        EXPECT_FALSE(osd.TakeFile(none).reason().empty()) << none;
    }
    EXPECT_TRUE(osd.TakeFile(R"({"code":1,"data":[{"flash":1}]})").ok());
    EXPECT_EQ(osd.Write(), before);
}

TEST_F(Osd, ColoursAreTurnedAround) {
    EXPECT_EQ(Row("BgColor").value, "#FF00FF");
    EXPECT_EQ(Enter("BgColor", "#0a0B0c"), "=#0A0B0C");
    EXPECT_EQ(Json("bgColor"), std::to_string(0x0C0B0A));
    EXPECT_EQ(Enter("TextColor", ""), "=");
    EXPECT_EQ(Json("textColor"), "4294967295");
    for (const char* bad : {"#12345", "#1234567", "#-12345", "#12345G", "1234567", "red"})
        EXPECT_EQ(Enter("BgColor", bad), "ignored") << bad;
    EXPECT_EQ(Row("BgColor").value, "#0A0B0C");
}

TEST_F(Osd, EditsAreTakenUpToTheirLimitsAndOthersRefusedByName) {
    EXPECT_EQ(Enter("Transparent", "0100") + Enter("DisplayTime", "10000"), "=100=10000");
    EXPECT_EQ(Enter("Left(0.0~1.0)", "1.0") + Enter("Top(0.0~1.0)", ".50"), "=1=0.5");
    EXPECT_EQ(Enter("Text2", "再见") + Enter("Enable", "0"), "=再见=0");
    EXPECT_EQ(Json("transparent") + Json("left") + Json("top") + Json("osdEnable"),
              "1001.00.5false");
    EXPECT_EQ(Element()["texts"][1], "再见");
    for (const char* key : {"data/0/texts/2", "data/0/speed", "data/0", "transparent", ""})
        EXPECT_EQ(osd.Edit({key, "1"}), EditAnswer{}) << key;
    const std::string before = osd.Write();
    for (const char* text : {"1.01", "2", "", ".", "0.2.3", "1e0", "-1", "99999999999999999999"})
        EXPECT_EQ(Enter("Left(0.0~1.0)", text), "!left input error!") << text;
    EXPECT_EQ(Enter("DisplayTime", "10001"), "!ShowTime input error!");
    EXPECT_EQ(osd.Write(), before);
}

TEST_F(Osd, LinesAreMeasuredInTheLegacyCodePage) {
    std::string han;
    for (int i = 0; i < 69; ++i) han += "汉";
    const std::string latin(138, 'a');
    for (const std::string& line : {han + "汉", latin + "aa", han + "ab", latin + "a\U0001F3AC",
                                    han + "a\U0001F3AC", latin + "\U0001F3AC\U0001F3AC"}) {
        Enter("Text2", line);
        EXPECT_FALSE(osd.RefusalToSend()) << line;
        for (const char* more : {"汉", "a"}) {
            Enter("Text2", line + more);
            ASSERT_TRUE(osd.RefusalToSend()) << line;
            EXPECT_STREQ(osd.RefusalToSend()->chinese, "显示字符不能超过70个汉字!");
        }
    }
}

}  // namespace
}  // namespace sontaro::test
