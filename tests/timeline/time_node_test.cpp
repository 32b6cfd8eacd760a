#include <gtest/gtest.h>

#include "support/literals.h"
#include "timeline/command_text.h"
#include "timeline/node_checks.h"

namespace sontaro::test {
namespace {

/// An entry without fault, into which tests put one.
struct EnteredNode : testing::Test {
    [[nodiscard]] std::string Refusal() const {
        const auto refusal = RefusalOf(entry);
        return refusal ? Localized(*refusal) : "";
    }
    NodeEntry entry{1, "舞曲", "a.mp4", {0, 59, 59, 999}, kPortTcp, "192.168.1.2", 80, "a5 01 "};
};

TEST_F(EnteredNode, IsTakenWithItsTimeAddressAndCommandInTheirForms) {
    EXPECT_EQ(Refusal(), "");
    EXPECT_EQ(NodeOf(entry),
              (TimeNode{1, "舞曲", "a.mp4", 3'599'999, kPortTcp, "192.168.1.2", 80, "A501"}));
    entry.time = {1, 0, 0, 1};
    EXPECT_EQ(NodeOf(entry).time, 3'600'001);
    entry.time = {kMostHours, 59, 59, 999};
    EXPECT_EQ(ClockTimeOf(NodeOf(entry).time), entry.time);
}

TEST_F(EnteredNode, NeedsAnAddressForAPeerAlone) {
    entry.port = kPortRs485;
    entry.ip = "10.0.";
    EXPECT_EQ(Refusal(), "");
    EXPECT_EQ(NodeOf(entry).ip, "");
    EXPECT_EQ(NodeOf(entry).peerPort, 0);
}

TEST(TimeText, SecondsAreWrittenWithThreeDecimalsAndRead) {
    for (const auto& [time, text] : {std::pair{std::int64_t{3'600'001}, "3600.001"},
                                     {-5, "-0.005"},
                                     {INT64_MAX, "9223372036854775.807"},
                                     {INT64_MIN, "-9223372036854775.808"}}) {
        EXPECT_EQ(SecondsText(time), text);
        EXPECT_EQ(MillisecondsOfSeconds(text), time);
    }
    EXPECT_EQ(MillisecondsOfSeconds(" 12.5 "), 12'500);
    for (const char* wrong : {"", " ", ".5", "-", "--1", "1.2345", "1e3", "1.-5", "1.+5", "0x1",
                              "9223372036854775.808", "1 2"})
        EXPECT_FALSE(MillisecondsOfSeconds(wrong)) << wrong;
}

TEST(TypedCommand, TakesEscapesAndShowsThemAgain) {
    EXPECT_EQ(BytesOfTypedText(R"(%1POWR 1\r\n\t\\\x00\xFf)"),
              Hex("2531504F57522031 0D0A095C 00FF"));
    EXPECT_EQ(TypedTextOf(Hex("41 0D0A095C 00FF 7E7F")), R"(A\r\n\t\\\x00\xFF~\x7F)");
    for (const char* wrong : {"\\", "\\q", "\\x", "\\x4", "\\xG0", "a\\x 1"})
        EXPECT_FALSE(BytesOfTypedText(wrong)) << wrong;
}

TEST(TypedCommand, EndsWithTheChosenChecksum) {
    const Bytes bytes = Hex("01 06 00 01 00 17");
    EXPECT_EQ(WithChecksum(Hex("F0 20"), Checksum::kSum), Hex("F0 20 10"));
    EXPECT_EQ(WithChecksum(bytes, Checksum::kXor).back(), 0x11);
    EXPECT_EQ(WithChecksum(bytes, Checksum::kCrc16Modbus), Hex("01 06 00 01 00 17 98 04"));
}

}  // namespace
}  // namespace sontaro::test
