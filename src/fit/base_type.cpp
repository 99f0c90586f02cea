#include "fit/base_type.h"

#include <bit>
#include <cmath>

namespace torvane {

namespace {

struct BaseType {
    uint8_t width;
    NumberKind kind;
};

using enum NumberKind;

// By the low five bits of a base type byte; bit 7 says only that the byte order matters.
constexpr BaseType baseTypes[] = {
    {1, unsignedWhole}, // enumeration
    {1, signedWhole},   {1, unsignedWhole}, {2, signedWhole}, {2, unsignedWhole},
    {4, signedWhole},   {4, unsignedWhole}, {1, none}, // text
    {4, real},          {8, real},          {1, zeroInvalid}, {2, zeroInvalid},
    {4, zeroInvalid},   {1, unsignedWhole}, // bytes
    {8, signedWhole},   {8, unsignedWhole}, {8, zeroInvalid},
};

constexpr BaseType baseTypeOf(uint8_t byte)
{
    size_t index = byte & 0x1F;
    return index < std::size(baseTypes) ? baseTypes[index] : BaseType{0, none};
}

constexpr bool isWholeWidth(size_t size)
{
    return size == 1 || size == 2 || size == 4 || size == 8;
}

uint64_t readBits(const uint8_t* bytes, size_t width, bool bigEndian)
{
    uint64_t bits = 0;
    if (bigEndian)
        for (size_t i = 0; i < width; ++i)
            bits = bits << 8 | bytes[i];
    else
        for (size_t i = width; i-- > 0;)
            bits = bits << 8 | bytes[i];
    return bits;
}

std::optional<int64_t> realValue(uint64_t bits, uint8_t width)
{
    double value = width == 4 ? std::bit_cast<float>(static_cast<uint32_t>(bits)) : std::bit_cast<double>(bits);
    constexpr double limit = 4.0e18; // within 63 bits
    if (!(std::fabs(value) < limit))
        return std::nullopt;
    return std::llround(value);
}

int64_t signExtended(uint64_t bits, int width)
{
    int shift = 64 - 8 * width;
    return static_cast<int64_t>(bits << shift) >> shift;
}

} // namespace

NumberReader numberReader(const FieldDefinition& field, size_t offset, bool bigEndian, bool isSigned)
{
    BaseType type = baseTypeOf(field.baseType);
    NumberReader reader = {static_cast<uint32_t>(offset), field.size, type.kind, bigEndian};
    if (type.kind == none || type.width != field.size)
        reader.kind = isSigned ? signedWhole : unsignedWhole;
    if (!isWholeWidth(field.size))
        reader.kind = none;
    return reader;
}

std::optional<int64_t> readValue(std::span<const uint8_t> payload, const NumberReader& reader)
{
    if (reader.kind == none || payload.size() < size_t{reader.offset} + reader.width)
        return std::nullopt;
    uint64_t bits = readBits(payload.data() + reader.offset, reader.width, reader.bigEndian);
    uint64_t ones = ~uint64_t{0} >> (64 - 8 * reader.width);
    uint64_t marker = reader.kind == zeroInvalid ? 0 : reader.kind == signedWhole ? ones >> 1 : ones;
    if (reader.kind == real)
        return realValue(bits, reader.width);
    if (bits == marker)
        return std::nullopt;
    return reader.kind == signedWhole ? signExtended(bits, reader.width) : static_cast<int64_t>(bits);
}

bool holdsNothing(std::span<const uint8_t> field, uint8_t baseType, bool bigEndian)
{
    BaseType type = baseTypeOf(baseType);
    if (type.width == 0 || field.size() % type.width != 0)
        return false;
    if (type.kind == none)
        type.kind = zeroInvalid;
    for (size_t offset = 0; offset < field.size(); offset += type.width)
        if (readValue(field, {static_cast<uint32_t>(offset), type.width, type.kind, bigEndian}))
            return false;
    return true;
}

NumberReader findNumber(const FitMessage& message, uint8_t number, bool isSigned)
{
    NumberReader reader;
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        if (field.number == number)
            reader = numberReader(field, offset, message.definition->bigEndian(), isSigned);
    });
    return reader;
}

} // namespace torvane
