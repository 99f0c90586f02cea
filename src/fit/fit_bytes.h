// Numbers in and out of FIT bytes. All reads of a payload pass the bounded functions here, so what lies outside is
// decided in one place: it reads as 0. No base type is looked at and no "invalid" marker is recognised.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace torvane {

// Reads of a payload at an offset. Bytes beyond its end read as 0.
inline uint8_t readUint8(std::span<const uint8_t> bytes, size_t offset)
{
    return offset < bytes.size() ? bytes[offset] : 0;
}

// Whether bytes lie within the payload as they do in any sound file: then they are one load.
inline bool holds(std::span<const uint8_t> bytes, size_t offset, size_t count)
{
    return offset <= bytes.size() && bytes.size() - offset >= count;
}

inline uint16_t readUint16(std::span<const uint8_t> bytes, size_t offset, bool bigEndian)
{
    if (holds(bytes, offset, 2)) {
        const uint8_t* at = bytes.data() + offset;
        return static_cast<uint16_t>(bigEndian ? at[0] << 8 | at[1] : at[1] << 8 | at[0]);
    }
    unsigned first = readUint8(bytes, offset);
    unsigned second = readUint8(bytes, offset + 1);
    return static_cast<uint16_t>(bigEndian ? first << 8 | second : second << 8 | first);
}

inline uint32_t readUint32(std::span<const uint8_t> bytes, size_t offset, bool bigEndian)
{
    if (holds(bytes, offset, 4)) {
        const uint8_t* at = bytes.data() + offset;
        uint32_t little = uint32_t{at[3]} << 24 | uint32_t{at[2]} << 16 | uint32_t{at[1]} << 8 | at[0];
        return bigEndian ? __builtin_bswap32(little) : little;
    }
    uint32_t first = readUint16(bytes, offset, bigEndian);
    uint32_t second = readUint16(bytes, offset + 2, bigEndian);
    return bigEndian ? first << 16 | second : second << 16 | first;
}

// A number of 1, 2 or 4 bytes.
inline uint32_t readNumber(std::span<const uint8_t> bytes, size_t offset, size_t width, bool bigEndian)
{
    if (width == 4)
        return readUint32(bytes, offset, bigEndian);
    return width == 2 ? readUint16(bytes, offset, bigEndian) : readUint8(bytes, offset);
}

// As readUint32 for a little-endian definition. For a big-endian one it takes the four bytes in front of the offset,
// nearest first: the positions of analysed big-endian files have always been gathered so. Bytes in front of the
// payload read as 0.
uint32_t copyBigEndianBytes(std::span<const uint8_t> bytes, size_t offset);
inline uint32_t copyUint32Bytes(std::span<const uint8_t> bytes, size_t offset, bool bigEndian)
{
    return bigEndian ? copyBigEndianBytes(bytes, offset) : readUint32(bytes, offset, false);
}

// A double on its way into an integer field: truncated toward zero; one that is infinite, no number or beyond 64 bits
// becomes 0. The field then keeps the low bits.
inline int64_t truncateToInteger(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    return value > -limit && value < limit ? static_cast<int64_t>(value) : 0;
}

// Stores the low bytes of a value over the whole width of a field; a field wider than the value is filled with zeros.
// An empty field takes nothing.
void writeAnyField(std::span<uint8_t> field, uint64_t value, bool bigEndian);
inline void writeField(std::span<uint8_t> field, uint64_t value, bool bigEndian)
{
    if (bigEndian || field.size() > 4 || field.size() == 3)
        return writeAnyField(field, value, bigEndian);
    if (field.size() == 4) {
        field[3] = static_cast<uint8_t>(value >> 24);
        field[2] = static_cast<uint8_t>(value >> 16);
    }
    if (field.size() >= 2)
        field[1] = static_cast<uint8_t>(value >> 8);
    if (!field.empty())
        field[0] = static_cast<uint8_t>(value);
}

inline void writeUint32Field(std::span<uint8_t> field, uint32_t value, bool bigEndian)
{
    writeField(field, value, bigEndian);
}

inline void writeUint16Field(std::span<uint8_t> field, uint16_t value, bool bigEndian)
{
    writeField(field, value, bigEndian);
}

// The low 32 bits of the truncated double.
inline void writeUint32FromDouble(std::span<uint8_t> field, double value, bool bigEndian)
{
    writeField(field, static_cast<uint32_t>(truncateToInteger(value)), bigEndian);
}

inline void writeUint16FromDouble(std::span<uint8_t> field, double value, bool bigEndian)
{
    writeField(field, static_cast<uint16_t>(truncateToInteger(value)), bigEndian);
}

} // namespace torvane
