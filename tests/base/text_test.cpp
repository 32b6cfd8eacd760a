#include <gmock/gmock.h>

#include <cstdlib>

#include "base/encoding.h"
#include "base/json.h"
#include "base/local_text.h"
#include "base/name_list.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct Utf8Case : NamedCase {
    std::string bytes;
    bool wellFormed;
    std::string decoded;  // with ? for U+FFFD
};

class Utf8 : public testing::TestWithParam<Utf8Case> {};

TEST_P(Utf8, IsTestedByTheWideRuleAndDecodedByTheStrictOne) {
    std::string expected;
    for (const char c : GetParam().decoded)
        expected += c == '?' ? "\xEF\xBF\xBD" : std::string(1, c);
    EXPECT_EQ(IsWellFormedUtf8(GetParam().bytes), GetParam().wellFormed);
    EXPECT_EQ(DecodeUtf8(GetParam().bytes), expected);
}

const Utf8Case kUtf8Cases[] = {
    {"Empty", "", true, ""},
    {"OneToFourBytes", "a\u00E9\u64AD\U0001F3AC", true, "a\u00E9\u64AD\U0001F3AC"},
    {"FiveBytes", "\xF8\x88\x80\x80\x80z", true, "?z"},
    {"SixBytes", "\xFD\x88\x80\x80\x80\x80z", true, "?z"},
    {"Overlong", "\xC0\x80\xE0\x9F\xBFz", true, "??z"},
    {"Surrogate", "\xED\xA0\x80z", true, "?z"},
    {"BeyondUnicode", "\xF4\x90\x80\x80z", true, "?z"},
    {"NoLead", "\xFE\xFF", false, "??"},
    {"LoneContinuation", "a\x80z", false, "a?z"},
    {"CutAtTheEnd", "a\xE6\x92", false, "a??"},
    {"CutInTheMiddle", "\xE6\x92z", false, "??z"},
    {"CutSixBytes", "\xFD\x88\x80\x80\x80z", false, "?????z"},
};
INSTANTIATE_TEST_SUITE_P(Every, Utf8, testing::ValuesIn(kUtf8Cases), CaseName());

TEST(LegacyText, BecomesOneCharacterPerByte) {
    EXPECT_EQ(DecodeByteByByte("A\x7F\x80\xB2\xFF"), "A\x7F\u0080\u00B2\u00FF");
}

TEST(Language, IsChineseForExactlyOneLocaleAndIdentifier) {
    for (const char* locale : {"zh_CN", "zh_CN.UTF-8", "zh_CN@pinyin", "zh_CN.GBK@x"})
        EXPECT_EQ(LanguageOfLocale(locale), Language::kChinese) << locale;
    for (const char* locale : {"", "C", "zh", "zh_TW.UTF-8", "zh_CNX", "ZH_CN", "en_US.zh_CN"})
        EXPECT_EQ(LanguageOfLocale(locale), Language::kEnglish) << locale;
    EXPECT_EQ(LanguageOfIdentifier(0x0804), Language::kChinese);
    for (const int other : {0x0404, 0x0C04, 0x1004, 0x0004, 0x0409})
        EXPECT_EQ(LanguageOfIdentifier(static_cast<std::uint16_t>(other)), Language::kEnglish);
}

TEST(Language, IsTheFirstVariableThatIsNotEmpty) {
    setenv("LC_ALL", "", 1);
    setenv("LC_MESSAGES", "zh_CN.UTF-8", 1);
    setenv("LANG", "en_US.UTF-8", 1);
    EXPECT_EQ(SystemLanguage(), Language::kChinese);
    setenv("LC_ALL", "C", 1);
    EXPECT_EQ(SystemLanguage(), Language::kEnglish);
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) unsetenv(name);
    EXPECT_EQ(SystemLanguage(), Language::kEnglish);
}

TEST(NameList, DropsExtensionsAndWhatHasNoEnd) {
    EXPECT_THAT(ParseNameList("Night.lay?四屏.lay?cut.lay"), ElementsAre("Night", "四屏"));
    EXPECT_THAT(ParseNameList("??.lay?a.lay?频道号码?"), ElementsAre("a"));
    EXPECT_THAT(ParseNameList("x\xE6\x92.lay?"), ElementsAre("x\xEF\xBF\xBD\xEF\xBF\xBD"));
    EXPECT_THAT(ParseNameList(""), ElementsAre());
}

TEST(Json, FailsOnWhatIsNoDocument) {
    for (const std::string& bad :
         {std::string(), std::string("{"), std::string("{'a':1}"), std::string("nul"),
          std::string(1'000'000, '['), std::string("\xFF\xFE")})
        EXPECT_FALSE(ParseJson(bad)) << bad.substr(0, 10);
    EXPECT_TRUE(ParseJson("// remark\n{\"a\": /* b */ 1}"));
}

TEST(Json, TextIsValidUtf8WhateverThePlayerSends) {
    const auto value = ParseJson("\"a\xE6z\"");
    ASSERT_TRUE(value);
    EXPECT_EQ(TextOf(*value), "a\xEF\xBF\xBDz");
}

}  // namespace
}  // namespace sontaro::test
