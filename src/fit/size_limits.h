// How large may be what is made of a file: a few bytes must not come to fill a disk, or the memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace torvane {

constexpr size_t largestDataSize = std::numeric_limits<int32_t>::max(); // of a data block

// Of a data block made from one of this size. The longest gaps filled with the shortest records stay far below.
constexpr size_t mostMade(size_t sourceSize)
{
    constexpr size_t mostTimes = 50;
    return std::min(largestDataSize, mostTimes * sourceSize);
}

// Of a table with a row for each message of a block of this size, in memory.
constexpr size_t mostTable(size_t sourceSize)
{
    constexpr size_t mostTimes = 64;
    return mostTimes * sourceSize;
}

// Number of files that one is divided into.
constexpr int32_t mostParts = 10'000;

// What a check says of a file beyond these limits; a run answers with fitTooLarge.
inline constexpr const char* tooLargeFault = "what would be made of a source file is far too large for its size";

} // namespace torvane
