#include "app/command_line.h"

#include <gtest/gtest.h>

namespace sontaro::test {
namespace {

TEST(CommandLine, TakesItsOptionsInBothForms) {
    const auto line = ParseCommandLine(
        {"--demo=12", "--local-address", "127.0.0.9", "--language=zh", "--tour", "图片"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->demoPlayers, 12);
    EXPECT_EQ(line->localAddress, "127.0.0.9");
    EXPECT_EQ(line->language, Language::kChinese);
    EXPECT_EQ(line->tour, std::filesystem::path(u8"图片"));
    EXPECT_EQ(ParseCommandLine({"--demo", "--language", "en"})->demoPlayers, 3);
    EXPECT_FALSE(ParseCommandLine({})->demoPlayers);
    EXPECT_TRUE(ParseCommandLine({"--help"})->help);
}

TEST(CommandLine, RefusesWhatItDoesNotUnderstand) {
    const std::vector<std::vector<std::string>> refused = {{"--demo=0"},
                                                           {"--demo=201"},
                                                           {"--demo=3x"},
                                                           {"--demo="},
                                                           {"--demo", "3"},
                                                           {"--language"},
                                                           {"--language=de"},
                                                           {"--local-address", "127.0.0"},
                                                           {"--local-address="},
                                                           {"--help=1"},
                                                           {"--tour=x"},
                                                           {"--demo", "--tour"},
                                                           {"demo"},
                                                           {""}};
    for (const auto& arguments : refused) EXPECT_FALSE(ParseCommandLine(arguments)) << arguments[0];
}

}  // namespace
}  // namespace sontaro::test
