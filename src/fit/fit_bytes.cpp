#include "fit/fit_bytes.h"

namespace torvane {

uint32_t copyBigEndianBytes(std::span<const uint8_t> bytes, size_t offset)
{
    uint32_t value = 0;
    for (size_t i = 0; i < 4 && i < offset; ++i)
        value |= static_cast<uint32_t>(readUint8(bytes, offset - 1 - i)) << 8 * i;
    return value;
}

void writeAnyField(std::span<uint8_t> field, uint64_t value, bool bigEndian)
{
    for (size_t i = 0; i < field.size(); ++i) {
        size_t place = bigEndian ? field.size() - 1 - i : i;
        field[place] = i < sizeof value ? static_cast<uint8_t>(value >> 8 * i) : 0;
    }
}

} // namespace torvane
