// The data block of a rewritten file while it grows, and what all rewriting tools do to the messages they copy.
// A message is copied whole, then fields are patched in place.
#pragma once

#include "fit/fit_walk.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace torvane {

// A block of planned size, zero-filled. Writing beyond its end stores nothing but still counts, so that the planned
// size can be held against the position at the end.
struct FitOutput {
    std::vector<uint8_t>& block;
    size_t position = 0;
};

// The definition message that each local type has at some place of a file; a view, empty where there is none.
using DefinitionsInForce = std::array<std::span<const uint8_t>, localTypeCount>;

// Whether two definition messages are the same, or tell the same.
inline bool sameDefinition(std::span<const uint8_t> a, std::span<const uint8_t> b)
{
    return (a.data() == b.data() && a.size() == b.size()) || std::ranges::equal(a, b);
}

// Takes the next bytes of the output; empty when the block ends before them.
std::span<uint8_t> reserveBytes(FitOutput& output, size_t count);

// Copies bytes, or a whole message, to the output. Returns the copy, empty when the block ends before it.
std::span<uint8_t> copyBytes(FitOutput& output, std::span<const uint8_t> bytes);
inline std::span<uint8_t> copyMessage(FitOutput& output, const FitMessage& message)
{
    return copyBytes(output, message.bytes);
}

// A field within the copy of a data message, by its offset in the payload; empty where the copy does not have it.
inline std::span<uint8_t> fieldOf(std::span<uint8_t> copy, size_t offset, size_t size)
{
    size_t start = 1 + offset; // behind the header byte
    return start + size <= copy.size() ? copy.subspan(start, size) : std::span<uint8_t>();
}

// The mark that a file was rewritten: manufacturer, field 1 of file_id, becomes 255, the published value for
// development. Only its first byte is set, the others become 0. Other messages are left alone.
void markManufacturer(const FitMessage& message, std::span<uint8_t> copy);

// Writes a file that was made here. One whose messages do not end where its data block ends could never be read, and is
// not written. False when that is so, or when writing failed.
bool saveFitFile(const FitImage& image, const std::string& path, Flush flush = Flush::each);

// Puts a FIT sport into field 5 of a session or field 25 of a lap. Other messages are left alone.
void setSport(const FitMessage& message, std::span<uint8_t> copy, uint8_t sport);

} // namespace torvane
