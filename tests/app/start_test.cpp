#include <gtest/gtest.h>

#include "app/application_title.h"
#include "app/command_line.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

TEST(CustomerTitle, ReplacesTheNameAndKeepsTheVersion) {
    const auto title = [](const char* file) { return CustomisedTitle("Sontaro 0.1.0 beta", file); };
    EXPECT_EQ(title("星光 KTV"), "星光 KTV 0.1.0 beta");
    EXPECT_EQ(title("\xD0\xC7"), "\u00D0\u00C7 0.1.0 beta");
    EXPECT_EQ(title(" Star\r\n"), " Star\r\n 0.1.0 beta");
}

TEST(CustomerTitle, CountsUpToAThousandBytesOfItsFileEvenInMidCharacter) {
    const TemporaryFolder folder;
    EXPECT_EQ(TitleFromTemplates(folder.Path()), ProgramTitle());
    folder.Write("Templates/Co.txt", std::string(998, 'a') + "é" + "tail");
    EXPECT_EQ(TitleFromTemplates(folder.Path()), std::string(998, 'a') + "é " + ProgramVersion());
    folder.Write("Templates/Co.txt", std::string(999, 'a') + "é");
    EXPECT_EQ(TitleFromTemplates(folder.Path()),
              std::string(999, 'a') + "\u00C3 " + ProgramVersion());
}

TEST(CommandLine, RefusesWhatItDoesNotUnderstand) {
    EXPECT_EQ(ParseCommandLine({"--demo=12", "--language", "zh"})->demoPlayers, 12);
    // clang-format off
    const std::vector<std::string> refused[] = {
        {"--demo=0"}, {"--demo=201"}, {"--demo=3x"}, {"--demo="}, {"--demo", "3"}, {"--language"}, {"--language=de"},
        {"--local-address", "127.0.0"}, {"--local-address="}, {"--help=1"}, {"--tour=x"}, {"--demo", "--tour"}, {""}};
    // clang-format on
    for (const auto& arguments : refused) EXPECT_FALSE(ParseCommandLine(arguments)) << arguments[0];
}

}  // namespace
}  // namespace sontaro::test
