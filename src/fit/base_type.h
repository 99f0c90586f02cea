// Values of fields by the base types that their definitions declare, each type with its "invalid" marker. For those
// who must know whether a value is there; the other readers take a marker for a number.
#pragma once

#include "fit/fit_walk.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace torvane {

enum class NumberKind : uint8_t {
    none,          // text, or a width that is no number's
    unsignedWhole, // marker: all bits set
    signedWhole,   // marker: the largest number
    zeroInvalid,   // unsigned; marker: 0
    real,          // marker: not a number
};

// How one field of a definition is read; made once per definition.
struct NumberReader {
    uint32_t offset = 0; // in the payload
    uint8_t width = 0;   // 1, 2, 4 or 8 bytes
    NumberKind kind = NumberKind::none;
    bool bigEndian = false;
};

// Of a field that holds one number. A base type of another width than the field's does not count: the field is then a
// whole number of its own width, with the sign that the profile gives it.
NumberReader numberReader(const FieldDefinition& field, size_t offset, bool bigEndian, bool isSigned);

// The number as stored, a real one rounded; nothing for an "invalid" marker, or beyond the end of the payload.
std::optional<int64_t> readValue(std::span<const uint8_t> payload, const NumberReader& reader);

// Whether a field holds "invalid" markers alone, in all its elements.
bool holdsNothing(std::span<const uint8_t> field, uint8_t baseType, bool bigEndian);

// The reader of a field of a data message by its number, its last one where it is repeated; kind none without.
NumberReader findNumber(const FitMessage& message, uint8_t number, bool isSigned = false);

} // namespace torvane
