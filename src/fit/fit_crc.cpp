// Eight bytes at a time by tables that the compiler derives from the published sixteen entries.
#include "fit/fit_crc.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace torvane {

namespace {

constexpr std::array<uint16_t, 16> nibbleTable = {0x0000, 0xCC01, 0xD801, 0x1400, 0xF001, 0x3C00, 0x2800, 0xE401,
                                                  0xA001, 0x6C00, 0x7800, 0xB401, 0x5000, 0x9C01, 0x8801, 0x4400};

constexpr uint16_t crcOfByte(uint16_t crc, uint8_t byte)
{
    uint16_t low = static_cast<uint16_t>(nibbleTable[crc & 15] ^ nibbleTable[byte & 15] ^ (crc >> 4));
    return static_cast<uint16_t>(nibbleTable[low & 15] ^ nibbleTable[byte >> 4] ^ (low >> 4));
}

constexpr size_t stride = 8;
using ByteTable = std::array<uint16_t, 256>;

// tables[n][b]: the CRC of byte b with n zero bytes behind it.
constexpr std::array<ByteTable, stride> makeTables()
{
    std::array<ByteTable, stride> tables = {};
    for (unsigned byte = 0; byte < 256; ++byte) {
        uint16_t crc = crcOfByte(0, static_cast<uint8_t>(byte));
        for (ByteTable& table : tables) {
            table[byte] = crc;
            crc = crcOfByte(crc, 0);
        }
    }
    return tables;
}

constexpr std::array<ByteTable, stride> tables = makeTables();

// The CRC register only reaches into the first two of the eight bytes.
uint16_t crcOfStride(uint16_t crc, const uint8_t* bytes)
{
    uint16_t next = static_cast<uint16_t>(tables[7][bytes[0] ^ (crc & 0xFF)] ^ tables[6][bytes[1] ^ (crc >> 8)]);
    for (size_t i = 2; i < stride; ++i)
        next = static_cast<uint16_t>(next ^ tables[stride - 1 - i][bytes[i]]);
    return next;
}

} // namespace

uint16_t extendFitCrc(uint16_t crc, std::span<const uint8_t> bytes)
{
    size_t position = 0;
    for (; position + stride <= bytes.size(); position += stride)
        crc = crcOfStride(crc, bytes.data() + position);
    for (; position < bytes.size(); ++position)
        crc = static_cast<uint16_t>(tables[0][bytes[position] ^ (crc & 0xFF)] ^ (crc >> 8));
    return crc;
}

uint16_t fitCrc(std::span<const uint8_t> headerBytes, std::span<const uint8_t> data)
{
    size_t headerSize = headerBytes.empty() ? 0 : std::min<size_t>(headerBytes[0], headerBytes.size());
    return extendFitCrc(extendFitCrc(0, headerBytes.first(headerSize)), data);
}

} // namespace torvane
