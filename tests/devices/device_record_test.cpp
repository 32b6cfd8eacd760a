#include "devices/device_record.h"

#include <gmock/gmock.h>

#include "support/literals.h"

namespace sontaro::test {
namespace {

const Bytes kReply =
    Hex("5A5A5AA5 81 00 0000 0000 0100 1E000000"
        "C0A8010E 020A7F00FE02 2823 3012 0C00 2900"
        "4B5456 2D30303700 000000 00");

TEST(DiscoveryReply, GivesADeviceRecord) {
    const auto device = ParseDiscoveryReply(kReply);
    ASSERT_TRUE(device);
    DeviceRecord expected;
    expected.ip = "192.168.1.14";
    expected.mac = "02:0A:7F:00:FE:02";
    expected.tcpPort = 9000;
    expected.id = "KTV-007";
    expected.versionText = "Player ver:1.2.3 FPGA ver:12.0 Channel:(1 Input 4 Output)";
    expected.fpgaVersion = 12;
    expected.channelCode = 41;
    expected.versionWord = 0x1230;
    EXPECT_EQ(*device, expected);
}

TEST(DiscoveryReply, CountsFromFortyBytesOnAndNothingBehindItMatters) {
    const ByteView reply = kReply;
    for (std::size_t size = 0; size <= kReply.size(); ++size) {
        const auto device = ParseDiscoveryReply(reply.first(size));
        ASSERT_EQ(device.has_value(), size >= 40) << size;
        EXPECT_EQ(device ? device->id : "",
                  std::string("KTV-007").substr(0, device ? size - 34 : 0));
    }
    Bytes longer = kReply;
    longer.resize(2000, 'x');
    EXPECT_EQ(ParseDiscoveryReply(longer), ParseDiscoveryReply(kReply));
}

struct Flip : NamedCase {
    std::size_t offset;
    std::uint8_t value;
    bool accepted;
};

class FlippedReply : public testing::TestWithParam<Flip> {};

TEST_P(FlippedReply, IsTestedForCommandArgumentAndLengthAlone) {
    Bytes reply = kReply;
    reply[GetParam().offset] = GetParam().value;
    EXPECT_EQ(ParseDiscoveryReply(reply).has_value(), GetParam().accepted);
}

const Flip kFlips[] = {
    {"OtherCommand", 4, 0x83, false},   {"NoReplyBit", 4, 0x01, true},
    {"NotSupportedBit", 4, 0xC1, true}, {"ArgumentSeven", 10, 7, true},
    {"ArgumentZero", 10, 0, false},     {"ArgumentTwo", 10, 2, false},
    {"ArgumentHighByte", 11, 1, false}, {"ShortPayload", 12, 29, false},
    {"LongPayload", 15, 0xFF, true},    {"OtherMagic", 0, 0, true},
};
INSTANTIATE_TEST_SUITE_P(Every, FlippedReply, testing::ValuesIn(kFlips), CaseName());

TEST(DiscoveryReply, IdTakesEveryByteAsACharacterAndASuffixWithQualifierOne) {
    Bytes reply = kReply;
    const Bytes id = Hex("41 00 C4 DC 00000000 00000000");
    std::copy(id.begin(), id.end(), reply.begin() + 34);
    reply[8] = 0xBC;
    reply[9] = 0x0A;
    const std::string text("A\0\u00C4\u00DC", 6);
    EXPECT_EQ(ParseDiscoveryReply(reply)->id, text);
    reply[5] = 2;
    EXPECT_EQ(ParseDiscoveryReply(reply)->id, text);
    reply[5] = 1;
    EXPECT_EQ(ParseDiscoveryReply(reply)->id, text + "0abc");
}

struct Version : NamedCase {
    std::uint16_t word, fpga, channels;
    const char* english;
    const char* chinese;
};

class DeviceVersion : public testing::TestWithParam<Version> {};

TEST_P(DeviceVersion, ReadsInBothLanguages) {
    const Version& version = GetParam();
    EXPECT_EQ(VersionText(version.word, version.fpga, version.channels), version.english);
    const InLanguage chinese(Language::kChinese);
    EXPECT_EQ(VersionText(version.word, version.fpga, version.channels), version.chinese);
}

constexpr char kUnknown[] = "Unknown Player";
constexpr char kUnknownChinese[] = "未知播放器";
const Version kVersions[] = {
    {"Outputs1", 0x1230, 0, 1, "Player ver:1.2.3 Channel:(No Input 1 Output)",
     "播放器版本号:1.2.3 通道:(无输入1输出)"},
    {"Outputs9", 0xF0AF, 300, 9, "Player ver:15.0.10 FPGA ver:300.0 Channel:(No Input 9 Output)",
     "播放器版本号:15.0.10 FPGA版本号:300.0 通道:(无输入9输出)"},
    {"Input1", 0, 0, 11, "Player ver:0.0.0 Channel:(1 Input 1 Output)",
     "播放器版本号:0.0.0 通道:(1输入1输出)"},
    {"Input9", 0x1230, 1, 91, "Player ver:1.2.3 FPGA ver:1.0 Channel:(1 Input 9 Output)",
     "播放器版本号:1.2.3 FPGA版本号:1.0 通道:(1输入9输出)"},
    {"Unknown0", 0x1230, 0, 0, kUnknown, kUnknownChinese},
    {"Unknown10", 0x1230, 5, 10, kUnknown, kUnknownChinese},
    {"Unknown12", 0x1230, 0, 12, kUnknown, kUnknownChinese},
    {"Unknown101", 0x1230, 0, 101, kUnknown, kUnknownChinese},
};
INSTANTIATE_TEST_SUITE_P(Every, DeviceVersion, testing::ValuesIn(kVersions), CaseName());

}  // namespace
}  // namespace sontaro::test
