// CRC-16/MODBUS.
#pragma once

#include <cstdint>

#include "base/bytes.h"

namespace sontaro {

/// The CRC-16/MODBUS of `bytes`: reflected polynomial 0xA001, initial value 0xFFFF.
[[nodiscard]] std::uint16_t Crc16Modbus(ByteView bytes);

}  // namespace sontaro
