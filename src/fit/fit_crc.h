// The CRC-16 of FIT files: polynomial 0x8005 reflected, start value 0, no final change.
#pragma once

#include <cstdint>
#include <span>

namespace torvane {

// The CRC of these bytes behind those that gave `crc`.
uint16_t extendFitCrc(uint16_t crc, std::span<const uint8_t> bytes);

// CRC of a header, as many bytes of it as its own first byte says but never more than it has, and the data behind it.
uint16_t fitCrc(std::span<const uint8_t> headerBytes, std::span<const uint8_t> data);

} // namespace torvane
