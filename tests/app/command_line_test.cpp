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

class BadCommandLine : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(BadCommandLine, IsRefused) { EXPECT_FALSE(ParseCommandLine(GetParam())); }

using Arguments = std::vector<std::string>;
INSTANTIATE_TEST_SUITE_P(
    Every, BadCommandLine,
    testing::Values(Arguments{"--demo=0"}, Arguments{"--demo=201"}, Arguments{"--demo=3x"},
                    Arguments{"--demo="}, Arguments{"--demo", "3"}, Arguments{"--language"},
                    Arguments{"--language=de"}, Arguments{"--local-address", "127.0.0"},
                    Arguments{"--local-address="}, Arguments{"--help=1"}, Arguments{"--tour=x"},
                    Arguments{"--demo", "--tour"}, Arguments{"demo"}, Arguments{""}));

}  // namespace
}  // namespace sontaro::test
