#include <gmock/gmock.h>

#include <limits>

#include "base/encoding.h"
#include "base/file.h"
#include "base/file_lock.h"
#include "base/folders.h"
#include "base/json.h"
#include "base/json_file.h"
#include "base/local_text.h"
#include "base/name_list.h"
#include "base/row_text.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

TEST(Utf8, IsTestedByTheWideRuleAndDecodedByTheStrictOne) {
    // clang-format off
    const std::tuple<const char*, bool, const char*> cases[] = {
        {"", true, ""}, {"a\u00E9\u64AD\U0001F3AC", true, "a\u00E9\u64AD\U0001F3AC"}, {"\xF8\x88\x80\x80\x80z", true, "\uFFFDz"},
        {"\xFD\x88\x80\x80\x80\x80z", true, "\uFFFDz"}, {"\xC0\x80\xE0\x9F\xBFz", true, "\uFFFD\uFFFDz"}, {"\xED\xA0\x80z", true, "\uFFFDz"},
        {"\xF4\x90\x80\x80z", true, "\uFFFDz"}, {"\xFE\xFF", false, "\uFFFD\uFFFD"}, {"a\x80z", false, "a\uFFFDz"}, {"a\xE6\x92", false, "a\uFFFD\uFFFD"},
        {"\xE6\x92z", false, "\uFFFD\uFFFDz"}, {"\xFD\x88\x80\x80\x80z", false, "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz"}};
    // clang-format on
    for (const auto& [bytes, wellFormed, decoded] : cases) {
        EXPECT_EQ(IsWellFormedUtf8(bytes), wellFormed) << decoded;
        EXPECT_EQ(DecodeUtf8(bytes), decoded);
    }
    EXPECT_EQ(DecodeByteByByte("A\x7F\x80\xB2\xFF"), "A\x7F\u0080\u00B2\u00FF");
}

TEST(LegacyCodePage, Is936EverywhereWithOneByteForWhatItLacks) {
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {"a\n~", "a\n~"}, {"汉字、", "\xBA\xBA\xD7\xD6\xA1\xA2"}, {"€", "\x80"}, {"·—", "\xA1\xA4\xA1\xAA"},
        {"ṅ한a", "??a"}, {"\U0001F3AC\U00020000", "??"}, {"\uE000\uE864\uF8F5", "???"}, {"\xE6\x92z\xED\xA0\x80", "??z?"}};
    // clang-format on
    for (const auto& [utf8, encoded] : cases) EXPECT_EQ(EncodeLegacy(utf8), encoded) << utf8;
}

TEST(Language, IsChineseForExactlyOneLocaleAndIdentifier) {
    for (const char* locale : {"zh_CN", "zh_CN.UTF-8", "zh_CN@pinyin", "zh_CN.GBK@x"})
        EXPECT_EQ(LanguageOfLocale(locale), Language::kChinese) << locale;
    for (const char* locale : {"", "C", "zh", "zh_TW.UTF-8", "zh_CNX", "ZH_CN", "en_US.zh_CN"})
        EXPECT_EQ(LanguageOfLocale(locale), Language::kEnglish) << locale;
    EXPECT_EQ(LanguageOfIdentifier(0x0804), Language::kChinese);
    EXPECT_EQ(LanguageOfIdentifier(0x0404), Language::kEnglish);
}

TEST(NameList, DropsExtensionsAndWhatHasNoEnd) {
    EXPECT_THAT(ParseNameList("Night.lay?四屏.lay?cut.lay"), ElementsAre("Night", "四屏"));
    EXPECT_THAT(ParseNameList("??.lay?a.lay?频道号码?"), ElementsAre("a"));
    EXPECT_THAT(ParseNameList("x\xE6\x92.lay?"), ElementsAre("x\uFFFD\uFFFD"));
}

TEST(Json, IsReadWithCommentsAndFailsOnWhatIsNoDocument) {
    for (const char* bad : {"", "{", "{'a':1}", "nul", "\xFF\xFE"})
        EXPECT_FALSE(ParseJson(bad)) << bad;
    EXPECT_FALSE(ParseJson(std::string(1'000'000, '[')));
    EXPECT_EQ(TextOf((*ParseJson("// remark\n{\"a\": /* b */ \"a\xE6z\"}"))["a"]), "a\uFFFDz");
}

struct KeptFiles : testing::Test {
    TemporaryFolder folder;
    const fs::path file = folder / "settings.json";
};

TEST_F(KeptFiles, AreReplacedWholeAndFoldersMade) {
    ASSERT_TRUE(WriteFileAtomically(folder / "new/file", std::string("a\0b", 3)));
    fs::create_hard_link(folder / "new/file", folder / "held");
    ASSERT_TRUE(WriteFileAtomically(folder / "new/file", "second"));
    EXPECT_EQ(folder.Read("held").size(), 3U);  // as by a reader in the middle of it
    EXPECT_EQ(folder.Read("new/file"), "second");
    EXPECT_EQ(*ReadFile(folder / "new/file", 3), "sec");
    EXPECT_FALSE(ReadFile(folder / "missing") || ReadFile(folder.Path()));
}

TEST_F(KeptFiles, LeaveNothingBehindWhenTheyCannotTakeTheirName) {
    folder.Write("settings.json/inside", "kept");
    EXPECT_FALSE(WriteFileAtomically(file, "second"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 1);
}

TEST_F(KeptFiles, OfJsonThatAreDamagedAreKeptAside) {
    for (const char* damaged : {"{\"a\": 1", "[1, 2]", "7"}) {
        JsonFile json(folder.Write("settings.json", damaged));
        const auto set = [&](const char* key) {
            return json.Update([key](Json::Value& root) { root[key] = 2; });
        };
        EXPECT_TRUE(set("b") && set("c"));
        EXPECT_EQ(folder.Read("settings.json.damaged"), damaged);
        EXPECT_EQ(JsonFile(file).Root()["b"].asInt(), 2);
    }
}

TEST_F(KeptFiles, OfJsonThatAnotherDamagesAreMadeAnewFromWhatWasRead) {
    JsonFile json(folder.Write("settings.json", R"({"a": 1})"));
    folder.Write("settings.json", "{");
    ASSERT_TRUE(json.Update([](Json::Value& root) { root["b"] = 2; }));
    EXPECT_EQ(folder.Read("settings.json.damaged"), "{");
    EXPECT_EQ(JsonFile(file).Root(), *ParseJson(R"({"a": 1, "b": 2})"));
}

TEST_F(KeptFiles, AreLockedByOneHolderAtATimeWhateverTheyHold) {
    const auto take = [&] { return FileLock::Take(file, std::chrono::milliseconds(0)); };
    folder.Write("settings.json", std::to_string(ProcessNumber()));
    auto first = take();
    ASSERT_TRUE(first && *first);
    auto second = take();
    EXPECT_TRUE(second && !*second);
    (*first).reset();
    second = take();
    EXPECT_TRUE(second && *second);
    EXPECT_FALSE(FileLock::Take(file / "inside", std::chrono::milliseconds(0)));
}

TEST_F(KeptFiles, BeneathTheTempFolderAreDeleted) {
    folder.Write("Temp/a/b/频道.bin", "x");
    const auto temp = EnsureTempFolder(folder.Path());
    DeleteContents(*temp);
    EXPECT_TRUE(fs::is_empty(*temp));
    EXPECT_FALSE(EnsureTempFolder(folder.Write("file", "in place of the folder")));
}

// clang-format off
TEST(RowText, NumbersAreReadFromTheStartAndHeldWithinTheirLimits) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    const std::pair<const char*, std::int32_t> integers[] = {
        {"", 0}, {"x1", 0}, {" \t-12x", -12}, {"+7", 7}, {"+-7", 0}, {"- 7", 0}, {"1.9", 1},
        {"2147483648", INT32_MAX}, {"-99999999999999999999", INT32_MIN}, {"-2147483648", INT32_MIN}};
    const std::pair<const char*, double> doubles[] = {
        {"", 0}, {".", 0}, {"-.5x", -0.5}, {" +1e2", 100}, {"1.2.3", 1.2}, {"1.5e999x", kLargest},
        {"-2.5e999", -kLargest}, {"1.5e-999", 0}, {"-inf", -kLargest}, {"nan", 0}, {"+-1", 0}, {"1,5", 1}};
    for (const auto& [text, number] : integers) EXPECT_EQ(LeadingInteger(text), number) << text;
    for (const auto& [text, number] : doubles) EXPECT_EQ(LeadingDouble(text), number) << text;
}
// clang-format on

}  // namespace
}  // namespace sontaro::test
