#include "cli/invocation.h"

#include <gmock/gmock.h>

#include "cli/command_texts.h"
#include "cli/display_width.h"
#include "cli/nearest_word.h"

namespace sontaro::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> words;
    for (std::size_t begin = 0; begin < line.size();) {
        const std::size_t end = std::min(line.find(' ', begin), line.size());
        words.push_back(line.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

/// Why a call is not taken.
std::string Complaint(const std::string& line) {
    const auto call = Invocation::Parse(Split(line));
    return call ? "taken" : call.reason();
}

struct Arguments : testing::Test {
    Arguments() { SetLanguage(Language::kEnglish); }
};

TEST_F(Arguments, AnOptionTakesOneValueWhereverItStands) {
    const auto call = Invocation::Parse(Split("-p one set osd a=1 --player two b=2 -p=three"));
    ASSERT_TRUE(call) << call.reason();
    EXPECT_EQ(call->Command()->id, CommandId::kSet);
    EXPECT_THAT(call->Arguments(), ElementsAre("osd", "a=1", "b=2"));
    EXPECT_THAT(call->Values(OptionId::kPlayer), ElementsAre("one", "two", "=three"));
}

TEST_F(Arguments, TextsArriveAsTheyWereGiven) {
    const std::vector<std::string> odd = {"[a,b].mp4", "{}", "%%", "/x", "一.mp4", "\"q\"", "find"};
    std::vector<std::string> arguments = {"upload", "--category", "[1]", "--"};
    arguments.insert(arguments.end(), odd.begin(), odd.end());
    arguments.emplace_back("--json");
    const auto call = Invocation::Parse(arguments);
    ASSERT_TRUE(call) << call.reason();
    EXPECT_EQ(call->Value(OptionId::kCategory), "[1]");
    EXPECT_FALSE(call->Has(OptionId::kJson));
    EXPECT_THAT(call->Arguments(), testing::SizeIs(odd.size() + 1));
    for (std::size_t i = 0; i < odd.size(); ++i) EXPECT_EQ(call->Argument(i), odd[i]);
}

TEST_F(Arguments, WrongUseIsNamedWithWhatWasProbablyMeant) {
    const std::pair<const char*, const char*> complaints[] = {
        {"bakcup x", "there is no command bakcup. Did you mean backup?"},
        {"frobnicate", "there is no command frobnicate."},
        {"find --timout 3", "there is no option --timout. Did you mean --timeout?"},
        {"get timline -p x", "there is no block timline. Did you mean timeline?"},
        {"control pasue -p x", "control has no action pasue. Did you mean pause?"},
        {"find -p", "--player needs a value."},
        {"find -p --json", "--player needs a value."},
        {"find --json=yes", "--json takes no value."},
        {"get osd -o a -o b", "--output is given twice."},
        {"upload a --parallel 3", "--parallel does not go with upload."},
        {"check a -p x", "--player does not go with check."},
        {"send A5", "--port is missing."},
        {"get", "BLOCK is missing."},
        {"compare a b c", "there is no use for c."},
    };
    for (const auto& [line, complaint] : complaints) EXPECT_EQ(Complaint(line), complaint) << line;
}

TEST_F(Arguments, ASlipIsOneChangeInAFew) {
    const std::vector<std::string> words = {"find", "restore", "set", "send"};
    EXPECT_EQ(NearestWord("fidn", words), "find");
    EXPECT_EQ(NearestWord("restor", words), "restore");
    EXPECT_EQ(NearestWord("stop", words), "");
    EXPECT_EQ(NearestWord("", words), "");
    EXPECT_EQ(NearestWord(std::string(1000, 'f'), words), "");
}

TEST_F(Arguments, EveryCommandIsInEveryText) {
    const std::string page = ManualPage("1", "2026-11-22");
    for (const CommandRow& command : Commands()) {
        EXPECT_THAT(ProgramHelp(), HasSubstr(std::string("\n  ") + command.name + ' '));
        EXPECT_THAT(CommandList(), HasSubstr(std::string("| `") + command.name));
        EXPECT_THAT(BashCompletion(), HasSubstr(std::string("        ") + command.name + ")\n"));
        EXPECT_THAT(page, HasSubstr(std::string(".SS ") + command.name));
        for (const ExampleRow& example : command.examples)
            EXPECT_EQ(Complaint(example.line), "taken") << example.line;
    }
}

TEST_F(Arguments, HelpFitsATerminalInBothLanguages) {
    for (const Language language : {Language::kEnglish, Language::kChinese}) {
        SetLanguage(language);
        std::string texts = ProgramHelp();
        for (const CommandRow& command : Commands()) texts += CommandHelp(command);
        for (std::size_t begin = 0; begin < texts.size();) {
            const std::size_t end = texts.find('\n', begin);
            const std::string line = texts.substr(begin, end - begin);
            if (line.find("sontaro-cli") == std::string::npos) {
                EXPECT_LE(DisplayWidth(line), 80U) << line;
            }
            begin = end + 1;
        }
    }
}

TEST(DisplayWidth, ChineseTakesTwoColumnsAndMarksNone) {
    EXPECT_EQ(DisplayWidth("abc"), 3U);
    EXPECT_EQ(DisplayWidth("霓虹"), 4U);
    EXPECT_EQ(DisplayWidth("e\xCC\x81"), 1U);
    EXPECT_EQ(DisplayWidth("\xF0\xA0\x80\x80"), 2U);
    EXPECT_EQ(DisplayWidth("\xFF"), 1U);
    EXPECT_EQ(FilledUp("夜", 4), "夜  ");
}

TEST(DisplayWidth, LinesBreakAtBlanksAndAroundChineseButNotBeforeItsMarks) {
    EXPECT_THAT(Wrapped("one two three", 8), ElementsAre("one two", "three"));
    EXPECT_THAT(Wrapped("播放，器", 5), ElementsAre("播", "放，", "器"));
    EXPECT_THAT(Wrapped("unbreakable", 4), ElementsAre("unbreakable"));
}

TEST(DisplayWidth, NothingThatIsToldGivesTheTerminalOrders) {
    EXPECT_EQ(Harmless("a\x1B[2Jb\r\n\xC2\x9B"), "a\uFFFD[2Jb\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Harmless("夜\xFFx"), "夜\uFFFDx");
}

}  // namespace
}  // namespace sontaro::cli
