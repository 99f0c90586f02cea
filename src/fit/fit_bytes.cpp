#include "fit/fit_bytes.h"

namespace torvane {

uint32_t copyUint32Bytes(std::span<const uint8_t> bytes, size_t offset, bool bigEndian)
{
    if (!bigEndian)
        return readUint32(bytes, offset, false);
    uint32_t value = 0;
    for (size_t i = 0; i < 4 && i < offset; ++i)
        value |= static_cast<uint32_t>(readUint8(bytes, offset - 1 - i)) << 8 * i;
    return value;
}

int64_t truncateToInteger(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    return value > -limit && value < limit ? static_cast<int64_t>(value) : 0;
}

void writeField(std::span<uint8_t> field, uint64_t value, bool bigEndian)
{
    for (size_t i = 0; i < field.size(); ++i) {
        size_t place = bigEndian ? field.size() - 1 - i : i;
        field[place] = i < sizeof value ? static_cast<uint8_t>(value >> 8 * i) : 0;
    }
}

} // namespace torvane
