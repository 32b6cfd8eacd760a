#include "link/packet.h"

#include <gmock/gmock.h>

#include "link/crc16.h"
#include "support/literals.h"

namespace sontaro::test {
namespace {

TEST(PacketHeader, HasItsBytesInBothDirections) {
    const PacketHeader header{0xA55A5A5A, 0x93, 0x02, 0x0304, 0x0506, 0x0708, 0xF90A0B0C};
    const Bytes bytes = Hex("5A5A5AA5 93 02 0403 0605 0807 0C0B0AF9");
    EXPECT_THAT(EncodeHeader(header), testing::ElementsAreArray(bytes));
    EXPECT_EQ(DecodeHeader(bytes), header);
}

TEST(DevicePacket, IsBuiltFromItsTwoWords) {
    EXPECT_EQ(DevicePacket::Request(3, 0x00010013, "{}").Serialize(),
              Hex("5A5A5AA5 03 00 0000 1300 0100 02000000 7B7D"));
    EXPECT_EQ(DevicePacket::Request(310, 0).Serialize(),
              Hex("5A5A5AA5 36 01 0000 0000 0000 00000000"));
}

TEST(Crc16, AgreesWithPublishedValues) {
    EXPECT_EQ(Crc16Modbus({}), 0xFFFF);
    EXPECT_EQ(Crc16Modbus(AsBytes("123456789")), 0x4B37);
    EXPECT_EQ(Crc16Modbus(Hex("01 04 02 FF FF")), 0x80B8);
    EXPECT_EQ(Crc16Modbus(Pattern(1000)), 0x188E);
}

}  // namespace
}  // namespace sontaro::test
