#include "app/application_title.h"

#include <gtest/gtest.h>

#include "support/literals.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

struct TitleCase : NamedCase {
    std::string file;
    std::string expected;
};

class CustomerTitle : public testing::TestWithParam<TitleCase> {};

TEST_P(CustomerTitle, ReplacesTheNameAndKeepsTheVersion) {
    EXPECT_EQ(CustomisedTitle("Sontaro 0.1.0 beta", GetParam().file), GetParam().expected);
}

const TitleCase kTitles[] = {
    {"Utf8", "星光 KTV", "星光 KTV 0.1.0 beta"},
    {"LegacyBytes", "\xD0\xC7", "\u00D0\u00C7 0.1.0 beta"},
    {"Untrimmed", " Star\r\n", " Star\r\n 0.1.0 beta"},
    {"Empty", "", " 0.1.0 beta"},
};
INSTANTIATE_TEST_SUITE_P(Every, CustomerTitle, testing::ValuesIn(kTitles), CaseName());

TEST(TitleFile, CountsUpToAThousandBytesEvenInMidCharacter) {
    const TemporaryFolder folder;
    EXPECT_EQ(TitleFromTemplates(folder.Path()), ProgramTitle());
    const std::string version = " " + ProgramVersion();
    folder.Write("Templates/Co.txt", std::string(998, 'a') + "é" + "tail");
    EXPECT_EQ(TitleFromTemplates(folder.Path()), std::string(998, 'a') + "é" + version);
    folder.Write("Templates/Co.txt", std::string(999, 'a') + "é");
    EXPECT_EQ(TitleFromTemplates(folder.Path()), std::string(999, 'a') + "\u00C3" + version);
}

}  // namespace
}  // namespace sontaro::test
