#include "link/crc16.h"

#include <array>

namespace sontaro {

namespace {

constexpr std::array<std::uint16_t, 256> kTable = [] {
    std::array<std::uint16_t, 256> table{};
    for (unsigned index = 0; index < table.size(); ++index) {
        unsigned value = index;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1) != 0 ? value >> 1 ^ 0xA001 : value >> 1;
        table[index] = static_cast<std::uint16_t>(value);
    }
    return table;
}();

}  // namespace

std::uint16_t Crc16Modbus(ByteView bytes) {
    unsigned crc = 0xFFFF;
    for (std::uint8_t byte : bytes) crc = crc >> 8 ^ kTable[(crc ^ byte) & 0xFF];
    return static_cast<std::uint16_t>(crc);
}

}  // namespace sontaro
