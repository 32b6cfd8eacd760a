#include "cli/cli_values.h"

#include <gmock/gmock.h>

#include "cli/cell_table.h"

namespace sontaro::cli {
namespace {

using namespace std::chrono_literals;

TEST(CliValues, TheFirstEqualsSignEndsTheKeyUnlessItIsEscaped) {
    EXPECT_EQ(*ParseKeyValue("a/b=c=d"), (KeyValue{"a/b", "c=d"}));
    EXPECT_EQ(*ParseKeyValue("a="), (KeyValue{"a", ""}));
    EXPECT_EQ(*ParseKeyValue("a\\=b\\\\=c\\d"), (KeyValue{"a=b\\", "c\\d"}));
    EXPECT_EQ(*ParseKeyValue("C:\\x=1"), (KeyValue{"C:\\x", "1"}));
    for (const char* text : {"", "=", "=a", "a", "a\\=b", "\xFF=1", "a=\xC0\x80"})
        EXPECT_FALSE(ParseKeyValue(text)) << text;
}

TEST(CliValues, WhatWasReadIsWrittenTheSame) {
    for (const KeyValue& edit : {KeyValue{"a=b", "c=d"}, {"\\", "\\"}, {"夜/色", "\n"}})
        EXPECT_EQ(ParseKeyValue(KeyValueText(edit)), edit);
}

TEST(CliValues, NumbersAreWholeTextsWithinBounds) {
    EXPECT_EQ(ParseCount("9", 1, 9), 9);
    for (const char* text : {"", "0", "10", "+1", "-1", "1 ", "0x1", "99999999999"})
        EXPECT_FALSE(ParseCount(text, 1, 9)) << text;
    EXPECT_EQ(ParseSeconds("0.5", 10s), 500ms);
    EXPECT_EQ(ParseSeconds("10", 10s), 10s);
    for (const char* text : {"", "0", "0.001", "10.1", "1e1", "-1", "nan", "inf", ".", "1.2.3"})
        EXPECT_FALSE(ParseSeconds(text, 10s)) << text;
}

TEST(CliValues, ACommandGoesOutOverAPortThatThereIs) {
    const auto serial = ParseCommandToSend("232:3", {"a5 01", "02"});
    ASSERT_TRUE(serial);
    EXPECT_EQ(serial->port, kPortSerial3);
    EXPECT_EQ(serial->command, "A50102");
    const auto udp = ParseCommandToSend("udp:192.168.1.9:6000", {"00"});
    ASSERT_TRUE(udp);
    EXPECT_EQ(udp->port, kPortUdp);
    EXPECT_EQ(udp->ip + ':' + std::to_string(udp->peerPort), "192.168.1.9:6000");
    EXPECT_EQ(ParseCommandToSend("485", {"00"})->port, kPortRs485);
    EXPECT_EQ(ParseCommandToSend("dmx512", {"00"})->port, kPortDmx512);
    for (const char* port : {"", "232", "232:4", "232:-1", "tcp:1.2.3.4", "tcp:1.2.3:5", "udp:a:1",
                             "tcp:1.2.3.4:0", "tcp:1.2.3.4:65536"})
        EXPECT_FALSE(ParseCommandToSend(port, {"00"})) << port;
    for (const char* bytes : {"", "A", "A5 0", "xx"})
        EXPECT_FALSE(ParseCommandToSend("485", {bytes})) << bytes;
}

TEST(CellTable, ColumnsStandBelowOneAnotherInAnyLanguage) {
    CellTable table({"名称", "n"});
    EXPECT_FALSE(table.HasRows());
    table.Add({"a", "1"});
    table.Add({"霓虹之夜", "x\ny"});
    EXPECT_EQ(table.Text(),
              "名称      n\n"
              "a         1\n"
              "霓虹之夜  x\uFFFDy\n");
}

}  // namespace
}  // namespace sontaro::cli
